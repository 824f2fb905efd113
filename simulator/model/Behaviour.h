#pragma once

#include <QString>

namespace simulator {

/// What the agent does of itself. A script switches off what it wants to do step by step.
struct Behaviour {
    /// The preferred camera pairs, starts and streams; Bluetooth's loss is seen in the list.
    bool connect = true;
    /// A search is announced, takes its time and finds a camera.
    bool discover = true;
    /// A passkey that was accepted is reported as set.
    bool passKey = true;
    /// An update that has started makes progress and ends.
    bool firmware = true;
    /// Passkeys "0000" and "9999" and every second firmware update fail; a camera restarts after an update.
    bool mishaps = true;

    /// The switch of that name; null when there is none.
    bool *find(const QString &name)
    {
        if (name == QStringLiteral("connect"))
            return &connect;
        if (name == QStringLiteral("discover"))
            return &discover;
        if (name == QStringLiteral("passKey"))
            return &passKey;
        if (name == QStringLiteral("firmware"))
            return &firmware;
        return name == QStringLiteral("mishaps") ? &mishaps : nullptr;
    }
};

} // namespace simulator
