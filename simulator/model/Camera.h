#pragma once

#include "cameras/KS7Cam.h"

#include <QString>

namespace simulator {

/// A camera that the agent knows.
struct Camera {
    QString address;
    QString name;
    QString cameraID;
    int status = kKS7CamNotFound;
    /// Whether it answers when the agent calls it.
    bool reachable = false;
};

/// The camera ID that belongs to an address: its last four digits, upper-cased.
inline QString cameraIDFor(const QString &address)
{
    return QString(address).remove(QLatin1Char('-')).right(4).toUpper();
}

/// The name that a camera bears until somebody gives it one.
inline QString factoryNameFor(const QString &address)
{
    return QStringLiteral("Orvex KS-7 %1").arg(cameraIDFor(address));
}

/// Pairing, starting or streaming.
inline bool isBusy(int status)
{
    return status >= kKS7CamPairing && status <= kKS7CamStreaming;
}

} // namespace simulator
