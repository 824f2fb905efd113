#pragma once

#include <QString>
#include <QStringList>

#include <chrono>

namespace agent_check {

/// The parsed command line.
struct Options {
    /// The program to start and to end. If it is empty, the running agent is checked.
    QString launch;
    /// The address of the camera that the checks may change. If it is empty, they change no camera.
    QString camera;
    /// The passkey to set on the camera at the cable. If it is empty, none is set.
    QString passKey;
    /// The groups to check. If it is empty, all are checked.
    QStringList groups;
    bool json = false;
    /// Factor of all time limits.
    int slowness = 1;

    [[nodiscard]] std::chrono::milliseconds limit(std::chrono::milliseconds usual) const
    {
        return usual * slowness;
    }

    /// Exits the process after --help, --version or a wrong option.
    static Options parse(const QStringList &arguments);
    /// Whether --json is given. Ignores all other options and never exits.
    static bool wantsJson(const QStringList &arguments);
};

} // namespace agent_check
