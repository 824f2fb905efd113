#pragma once

#include <QString>

#include <memory>

namespace platform {

/// Starts other programs.
class ProgramLauncher {
public:
    virtual ~ProgramLauncher() = default;

    /// Starts the program at a path once, detached and without a shell. False when there is nothing to start.
    virtual bool launch(const QString &program) = 0;
};

std::shared_ptr<ProgramLauncher> makeProgramLauncher();

} // namespace platform
