#pragma once

#include <QString>

/// What the pane's two exchanges with the agent are called on the session bus, and the services that several
/// places ask for. Each name is spelled here only.
namespace platform::bus {

inline const QString NamePrefix = QStringLiteral("com.orvex.");
inline const QString PathPrefix = QStringLiteral("/com/orvex/");

/// The bus name under which a registered name is to be found.
inline QString busName(const QString &registeredName)
{
    return NamePrefix + registeredName;
}

/// The path of a registered name's root object.
inline QString objectPath(const QString &registeredName)
{
    return PathPrefix + registeredName;
}

/// The broadcasts of the distributed notification centre: the member is the notification's name, the one
/// argument its user info.
inline const QString NotificationCenterName = QStringLiteral("DistributedNotificationCenter");
inline const QString NotificationPath = objectPath(NotificationCenterName);
inline const QString NotificationInterface = busName(NotificationCenterName);
inline const QString UserInfoSignature = QStringLiteral("a{sv}");

// How the library tells that a connection is gone; no message of the bus.
inline const QString LocalPath = QStringLiteral("/org/freedesktop/DBus/Local");
inline const QString LocalInterface = QStringLiteral("org.freedesktop.DBus.Local");
inline const QString LocalDisconnected = QStringLiteral("Disconnected");

// Services of the desktop that more than one place asks for.
inline const QString Daemon = QStringLiteral("org.freedesktop.DBus");
/// The daemon's error for a name without an owner; QDBusError has no type for it.
inline const QString NameHasNoOwner = QStringLiteral("org.freedesktop.DBus.Error.NameHasNoOwner");
inline const QString DaemonPath = QStringLiteral("/org/freedesktop/DBus");
inline const QString Properties = QStringLiteral("org.freedesktop.DBus.Properties");
inline const QString BlueZ = QStringLiteral("org.bluez");
inline const QString Logind = QStringLiteral("org.freedesktop.login1");
inline const QString LogindPath = QStringLiteral("/org/freedesktop/login1");
inline const QString LogindManager = QStringLiteral("org.freedesktop.login1.Manager");
inline const QString LogindSession = QStringLiteral("org.freedesktop.login1.Session");
inline const QString LogindUser = QStringLiteral("org.freedesktop.login1.User");
inline const QString PrepareForSleep = QStringLiteral("PrepareForSleep");
inline const QString PackageKit = QStringLiteral("org.freedesktop.PackageKit");
inline const QString PackageKitPath = QStringLiteral("/org/freedesktop/PackageKit");
inline const QString PackageKitTransaction = QStringLiteral("org.freedesktop.PackageKit.Transaction");

} // namespace platform::bus
