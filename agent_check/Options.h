#pragma once

#include <QString>
#include <QStringList>

#include <chrono>

namespace agent_check {

/// The options of the command line.
struct Options {
    /// The agent's program, which the check starts and ends. If it is empty, the running agent is checked.
    QString launch;
    /// The address of the camera that the checks may change. If it is empty, they change no camera.
    QString camera;
    /// The passkey to set on the camera that is on the USB cable. If it is empty, no passkey is set.
    QString passKey;
    /// The names of the groups to check. If the list is empty, all groups are checked.
    QStringList groups;
    bool json = false;
    /// The factor by which --slow multiplies all time limits.
    int slowness = 1;

    [[nodiscard]] std::chrono::milliseconds limit(std::chrono::milliseconds usual) const
    {
        return usual * slowness;
    }

    /// Parses the command line. Exits the process after --help, --version or a wrong option.
    static Options parse(const QStringList &arguments);
    /// Returns whether the arguments contain --json. Ignores all other options and never exits the process.
    static bool wantsJson(const QStringList &arguments);
};

} // namespace agent_check
