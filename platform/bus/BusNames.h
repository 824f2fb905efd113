#pragma once

#include <QString>

/// Bus names, paths and interfaces of desktop services that several files use. A name that only one file uses
/// stands there. The agent's names are formed by NamePrefix.
namespace platform::bus {

/// The vendor's prefix of bus names, such as "org.example.".
struct NamePrefix {
    QString text;

    /// Turns a registered name, the agent's name for a remote object, into a bus name.
    [[nodiscard]] QString busName(const QString &registeredName) const { return text + registeredName; }
    /// Path of the root object that belongs to a registered name.
    [[nodiscard]] QString objectPath(const QString &registeredName) const
    {
        return QLatin1Char('/') + QString(text).replace(QLatin1Char('.'), QLatin1Char('/')) + registeredName;
    }
};

/// The registered name of the notification center between processes. It sends each notification as a signal:
/// the member is the notification's name, the only argument its user info.
inline const QString NotificationCenterName = QStringLiteral("DistributedNotificationCenter");
inline const QString UserInfoSignature = QStringLiteral("a{sv}");

// libdbus itself emits the signal Disconnected when a connection is lost; the bus never sends it.
inline const QString LocalPath = QStringLiteral("/org/freedesktop/DBus/Local");
inline const QString LocalInterface = QStringLiteral("org.freedesktop.DBus.Local");
inline const QString LocalDisconnected = QStringLiteral("Disconnected");

inline const QString Daemon = QStringLiteral("org.freedesktop.DBus");
/// The bus daemon's error for a name without an owner. The enumeration QDBusError::ErrorType lacks it.
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
