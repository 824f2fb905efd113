#pragma once

#include "platform/desktop/ProgramLauncher.h"
#include "tests/fakes/Journal.h"

/// Counts the launches, but starts no program.
class FakeProgramLauncher final : public platform::ProgramLauncher {
public:
    explicit FakeProgramLauncher(Journal journal)
        : mJournal(std::move(journal))
    {
    }
    bool launch(const QString &wanted) override
    {
        program = wanted;
        note(mJournal, QStringLiteral("launch"));
        ++launches;
        return true;
    }
    int launches = 0;
    /// The path of the program in the last launch.
    QString program;

private:
    Journal mJournal;
};
