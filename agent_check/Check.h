#pragma once

#include "agent_check/Bench.h"

#include <QDBusConnection>

namespace agent_check {

/// One run of the program over the agent.
class Check {
public:
    Check(const Options &options, const QDBusConnection &bus)
        : mBench(options, bus)
    {
    }

    /// Finds or starts the agent, checks it and ends what it has started. Returns the exit code.
    int run();

private:
    /// Returns the reason why nothing can be checked, or an empty text.
    QString findAgent();
    QString launch();
    QString lookForCamera();
    [[nodiscard]] bool isWanted(const Demand &demand) const;
    Outcome lookAt(const Demand &demand);

    Bench mBench;
};

/// Prints the reason on the standard error output. Returns the exit code.
int refuse(const QString &reason);

} // namespace agent_check
