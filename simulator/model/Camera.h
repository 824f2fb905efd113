#pragma once

#include "agent/AgentContract.h"

#include <QString>

namespace simulator {

/// A camera that the agent knows.
struct Camera {
    QString address;
    QString name;
    QString cameraID;
    int status = kKS7CamNotFound;
    /// Whether the agent can reach it by radio.
    bool reachable = false;
};

/// The camera ID for an address: its last four digits in upper case.
inline QString cameraIDFor(const QString &address)
{
    return QString(address).remove(QLatin1Char('-')).right(4).toUpper();
}

/// The name of a camera that has none of the user's.
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
