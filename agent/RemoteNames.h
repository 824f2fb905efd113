#pragma once

#include "platform/bus/BusNames.h"

#include <QString>

/// The registered names of the agent's two root objects, their places on the session bus, and those of the
/// broadcasts between pane and agent.
namespace RemoteNames {

inline const platform::bus::NamePrefix Prefix{QStringLiteral("com.orvex.")};

inline const QString AgentServer = QStringLiteral("KS7AgentServer");
inline const QString AgentServerUSB = QStringLiteral("KS7AgentServerUSB");

/// The bus name of a registered name.
inline QString busName(const QString &registeredName)
{
    return Prefix.busName(registeredName);
}

/// The path of a registered name's root object.
inline QString objectPath(const QString &registeredName)
{
    return Prefix.objectPath(registeredName);
}

inline const QString NotificationPath = objectPath(platform::bus::NotificationCenterName);
inline const QString NotificationInterface = busName(platform::bus::NotificationCenterName);

} // namespace RemoteNames

/// The keys of a camera's record.
namespace RecordKeys {

inline const QString Status = QStringLiteral("Status");
inline const QString CameraIDString = QStringLiteral("CameraIDString");
inline const QString FriendlyName = QStringLiteral("FriendlyName");

} // namespace RecordKeys
