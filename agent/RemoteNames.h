#pragma once

#include "platform/bus/BusNames.h"

#include <QString>

/// The names under which the agent registers its two root objects, and the keys of a camera's record.
/// platform::bus::busName() and objectPath() say where a registered name is on the bus.
namespace RemoteNames {

inline const QString AgentServer = QStringLiteral("KS7AgentServer");
inline const QString AgentServerUSB = QStringLiteral("KS7AgentServerUSB");

} // namespace RemoteNames

namespace RecordKeys {

inline const QString Status = QStringLiteral("Status");
inline const QString CameraIDString = QStringLiteral("CameraIDString");
inline const QString FriendlyName = QStringLiteral("FriendlyName");

} // namespace RecordKeys
