#pragma once

#include "platform/bus/Connection.h"

#include <QDBusConnection>
#include <QObject>

#include <memory>
#include <vector>

namespace platform {

class RemoteConnection;
class NotificationCenter;
class RunLoop;
class SessionBus;

/// Where the calls to a remote root object go, and what their failing means for the link. Outlives its
/// connection without keeping it; a root whose connection is gone is not valid.
class DBusRootProxy final : public RootProxy {
public:
    DBusRootProxy(std::weak_ptr<RemoteConnection> connection, QString owner, QString path, QDBusConnection bus);

    /// False when calls must not be made any more: they are answered with nil at once.
    [[nodiscard]] bool isValid() const;
    [[nodiscard]] QString owner() const { return mOwner; }
    [[nodiscard]] QString path() const { return mPath; }
    [[nodiscard]] QDBusConnection bus() const { return mBus; }
    /// Judges the error of a call: a peer that let it time out is as good as dead.
    void callFailed(const QDBusError &error) const;

private:
    std::weak_ptr<RemoteConnection> mConnection;
    QString mOwner;
    QString mPath;
    QDBusConnection mBus;
};

/// Opens connections over the pane's own bus connection and keeps track of those that live.
class DBusConnectionRegistry final : public ConnectionRegistry,
                                     public std::enable_shared_from_this<DBusConnectionRegistry> {
public:
    DBusConnectionRegistry(std::shared_ptr<SessionBus> bus, std::shared_ptr<RunLoop> runLoop,
                           std::shared_ptr<NotificationCenter> localCenter);
    ~DBusConnectionRegistry() override;

    std::shared_ptr<Connection> connectionWithRegisteredName(const QString &name) override;

private:
    friend class RemoteConnection;
    /// One peer serves all names: who lets one call time out would let the next one on another connection
    /// do so too, and freeze the window again. So every open connection is invalid from now on.
    void callTimedOut();

    std::shared_ptr<SessionBus> mBus;
    std::shared_ptr<RunLoop> mRunLoop;
    std::shared_ptr<NotificationCenter> mLocalCenter;
    std::vector<std::weak_ptr<RemoteConnection>> mOpen;
};

/// A link to the unique owner of a bus name.
class RemoteConnection final : public QObject,
                             public Connection,
                             public std::enable_shared_from_this<RemoteConnection> {
    Q_OBJECT
public:
    RemoteConnection(std::shared_ptr<DBusConnectionRegistry> registry, const QString &registeredName);
    ~RemoteConnection() override;

    /// Binds the connection to who owns the name now; false when nobody does.
    bool open();
    std::shared_ptr<RootProxy> rootProxy() override;
    void invalidate() override;
    [[nodiscard]] bool isValid() const override { return mValid; }

    void callTimedOut();
    void dieOnNextTurn();

private Q_SLOTS:
    void nameOwnerChanged(const QString &name, const QString &oldOwner, const QString &newOwner);

private:
    void watchOwner();
    void unwatchOwner();
    bool endValidity();
    void reportDeath();

    std::shared_ptr<DBusConnectionRegistry> mRegistry;
    QString mBusName;
    QString mPath;
    QString mOwner;
    QDBusConnection mBus;
    bool mWatching = false;
    bool mValid = false;
};

} // namespace platform
