#pragma once

#include <QString>

/// Bus names, paths and interfaces of the agent and of desktop services. Each is spelled only here.
namespace platform::bus {

/// The vendor's part of the names, such as "org.example.".
struct NamePrefix {
    QString text;

    /// The bus name of a registered name.
    [[nodiscard]] QString busName(const QString &registeredName) const { return text + registeredName; }
    /// The path of a registered name's root object.
    [[nodiscard]] QString objectPath(const QString &registeredName) const
    {
        return QLatin1Char('/') + QString(text).replace(QLatin1Char('.'), QLatin1Char('/')) + registeredName;
    }
};

/// The registered name of the distributed notification centre. In its broadcasts the member is the
/// notification's name, the one argument its user info.
inline const QString NotificationCenterName = QStringLiteral("DistributedNotificationCenter");
inline const QString UserInfoSignature = QStringLiteral("a{sv}");

// libdbus emits this signal locally when a connection is lost; the bus never sends it.
inline const QString LocalPath = QStringLiteral("/org/freedesktop/DBus/Local");
inline const QString LocalInterface = QStringLiteral("org.freedesktop.DBus.Local");
inline const QString LocalDisconnected = QStringLiteral("Disconnected");

// Desktop services that several files use.
inline const QString Daemon = QStringLiteral("org.freedesktop.DBus");
/// The bus daemon's error for a name without an owner. QDBusError has no enumerator for it.
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
