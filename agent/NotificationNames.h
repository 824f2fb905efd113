#pragma once

#include <QString>

/// Names of the broadcast notifications between the pane and the agent.
namespace NotificationNames {

// The agent posts these notifications to the pane.
inline const QString StreamingStarted = QStringLiteral("KS7StreamingStarted");
inline const QString CameraListChanged = QStringLiteral("KS7CameraListChanged");
inline const QString StoppedDiscovering = QStringLiteral("KS7StoppedDiscovering");
inline const QString StartedDiscovering = QStringLiteral("KS7StartedDiscovering");
inline const QString PassKeySet = QStringLiteral("KS7PassKeySet");
inline const QString StreamingInitiated = QStringLiteral("KS7StreamingInitiated");
inline const QString PairingInitiated = QStringLiteral("KS7PairingInitiated");
inline const QString StreamingEnded = QStringLiteral("KS7StreamingEnded");
inline const QString USBDeviceConnected = QStringLiteral("KS7USBDeviceConnected");
inline const QString USBDeviceDisconnected = QStringLiteral("KS7USBDeviceDisconnected");
inline const QString AgentStarted = QStringLiteral("KS7AgentStarted");
inline const QString PreferredCameraChanged = QStringLiteral("KS7PreferredCameraChanged");
inline const QString FirmwareUpdateEnded = QStringLiteral("KS7FirmwareUpdateEnded");
inline const QString FirmwareUpdateProgress = QStringLiteral("KS7FirmwareUpdateProgress");
inline const QString OnOffChanged = QStringLiteral("KS7OnOffChanged");
inline const QString NoBluetooth = QStringLiteral("KS7NoBluetooth");
inline const QString FoundBluetooth = QStringLiteral("KS7FoundBluetooth");
/// Both the pane and the agent post this notification, so the pane also receives its own posts.
inline const QString ChangedOptimizedPreference = QStringLiteral("KS7ChangedOptimizedPreference");

// The pane posts these notifications to the agent.
inline const QString SystemPrefsShowing = QStringLiteral("KS7SystemPrefsShowing");
inline const QString StartDiscovering = QStringLiteral("KS7StartDiscovering");
inline const QString ToggleStatusMenu = QStringLiteral("KS7ToggleStatusMenu");
inline const QString ToggleEnabled = QStringLiteral("KS7ToggleEnabled");
inline const QString ToggleDebugLog = QStringLiteral("KS7ToggleDebugLog");

// This notification stays inside the pane's process.
inline const QString GoingToSleep = QStringLiteral("GoingToSleep");

} // namespace NotificationNames

namespace UserInfoKeys {

inline const QString Value = QStringLiteral("Value");
inline const QString Total = QStringLiteral("Total");
inline const QString Result = QStringLiteral("Result");
inline const QString PassKey = QStringLiteral("PassKey");

} // namespace UserInfoKeys
