#pragma once

#include <QString>
#include <QStringList>

#include <chrono>

namespace agent_check {

/// The parsed command line.
struct Options {
    /// The program to start and to end; empty for the agent that runs already.
    QString launch;
    /// The address of the camera that may be changed; empty when nothing may be.
    QString camera;
    /// The passkey that the camera at the cable may get; empty for none.
    QString passKey;
    /// The groups to check; empty for all.
    QStringList groups;
    bool json = false;
    /// Every limit is so many times as long.
    int slowness = 1;

    [[nodiscard]] std::chrono::milliseconds limit(std::chrono::milliseconds usual) const
    {
        return usual * slowness;
    }

    /// Exits the process after --help, --version or a wrong option.
    static Options parse(const QStringList &arguments);
    /// Whether the output is for machines, and so in English. Looks at nothing else and never exits.
    static bool wantsJson(const QStringList &arguments);
};

} // namespace agent_check
