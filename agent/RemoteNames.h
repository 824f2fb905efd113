#pragma once

#include "platform/bus/BusNames.h"

#include <QString>

/// Bus names and object paths of the agent's two root objects and of the notification broadcasts.
namespace RemoteNames {

inline const platform::bus::NamePrefix Prefix{QStringLiteral("com.orvex.")};

inline const QString AgentServer = QStringLiteral("KS7AgentServer");
inline const QString AgentServerUSB = QStringLiteral("KS7AgentServerUSB");

/// Returns the bus name for a registered name: "com.orvex.KS7AgentServer" for "KS7AgentServer".
inline QString busName(const QString &registeredName)
{
    return Prefix.busName(registeredName);
}

/// Returns the path of a root object from its registered name: "/com/orvex/KS7AgentServer" for
/// "KS7AgentServer".
inline QString objectPath(const QString &registeredName)
{
    return Prefix.objectPath(registeredName);
}

inline const QString NotificationPath = objectPath(platform::bus::NotificationCenterName);
inline const QString NotificationInterface = busName(platform::bus::NotificationCenterName);

} // namespace RemoteNames

/// The dictionary keys of a camera's record on the bus.
namespace RecordKeys {

inline const QString Status = QStringLiteral("Status");
inline const QString CameraIDString = QStringLiteral("CameraIDString");
inline const QString FriendlyName = QStringLiteral("FriendlyName");

} // namespace RecordKeys
