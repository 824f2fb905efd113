#pragma once

#include "platform/desktop/AgentLauncher.h"
#include "tests/fakes/Journal.h"

/// Counts launches and starts nothing.
class FakeAgentLauncher final : public platform::AgentLauncher {
public:
    explicit FakeAgentLauncher(Journal journal)
        : mJournal(std::move(journal))
    {
    }
    bool launch() override
    {
        note(mJournal, QStringLiteral("launch"));
        ++launches;
        return true;
    }
    int launches = 0;

private:
    Journal mJournal;
};
