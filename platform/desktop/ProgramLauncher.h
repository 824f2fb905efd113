#pragma once

#include <QString>

#include <memory>

namespace platform {

/// Starts programs that are independent of the host.
class ProgramLauncher {
public:
    virtual ~ProgramLauncher() = default;

    /// Starts the program at this path, detached and without a shell. Returns false if it cannot be started.
    virtual bool launch(const QString &program) = 0;
};

std::shared_ptr<ProgramLauncher> makeProgramLauncher();

} // namespace platform
