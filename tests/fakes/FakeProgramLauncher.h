#pragma once

#include "platform/desktop/ProgramLauncher.h"
#include "tests/fakes/Journal.h"

/// Counts launches and starts nothing.
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
    /// What was to be launched last.
    QString program;

private:
    Journal mJournal;
};
