#pragma once

#include "agent_check/CheckContext.h"

#include <QDBusConnection>

namespace agent_check {

/// A run of the program: finds the agent and checks it against all wanted demands.
class Check {
public:
    Check(const Options &options, const QDBusConnection &bus)
        : mContext(options, bus)
    {
    }

    /// Finds or starts the agent and checks it. Afterwards ends the agent if this function has started it.
    /// Returns the exit code.
    int run();

private:
    /// Finds or starts the agent. Returns the reason why nothing can be checked, or an empty text.
    QString findAgent();
    QString launch();
    QString lookForCamera();
    [[nodiscard]] bool isWanted(const Demand &demand) const;
    Outcome lookAt(const Demand &demand);

    CheckContext mContext;
};

/// Prints the reason on standard error. Returns the exit code of a check that could not run.
int refuse(const QString &reason);

} // namespace agent_check
