#pragma once

#include "agent/AgentContract.h"

#include <QString>

namespace simulator {

/// A camera that the stand-in agent knows.
struct Camera {
    QString address;
    QString name;
    QString cameraID;
    int status = kKS7CamNotFound;
    /// Whether the camera is within reach of the radio. Otherwise it cannot be started.
    bool reachable = false;
};

/// Returns the camera ID for an address: the last four digits in upper case.
inline QString cameraIDFor(const QString &address)
{
    return QString(address).remove(QLatin1Char('-')).right(4).toUpper();
}

/// Returns the name of a camera to which the user has given no name.
inline QString factoryNameFor(const QString &address)
{
    return QStringLiteral("Orvex KS-7 %1").arg(cameraIDFor(address));
}

/// Returns whether a camera with this status is pairing, starting or streaming.
inline bool isBusy(int status)
{
    return status >= kKS7CamPairing && status <= kKS7CamStreaming;
}

} // namespace simulator
