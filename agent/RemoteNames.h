#pragma once

#include "platform/bus/BusNames.h"

#include <QString>

/// The registered names of the agent's two root objects, and the keys of a camera's record.
/// platform::bus::busName() and objectPath() give a registered name's place on the bus.
namespace RemoteNames {

inline const QString AgentServer = QStringLiteral("KS7AgentServer");
inline const QString AgentServerUSB = QStringLiteral("KS7AgentServerUSB");

} // namespace RemoteNames

namespace RecordKeys {

inline const QString Status = QStringLiteral("Status");
inline const QString CameraIDString = QStringLiteral("CameraIDString");
inline const QString FriendlyName = QStringLiteral("FriendlyName");

} // namespace RecordKeys
