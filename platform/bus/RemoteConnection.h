#pragma once

#include "platform/bus/BusNames.h"
#include "platform/bus/Connection.h"

#include <QDBusConnection>
#include <QObject>

#include <map>
#include <memory>
#include <vector>

class QDBusMessage;

namespace platform {

class BusConnection;
class NotificationCenter;
class RemoteConnection;
class RunLoop;

/// Addresses calls to a remote root object and reports failed calls to its connection. It does not own the
/// connection, and is invalid without one.
class DBusRootProxy final : public RootProxy {
public:
    DBusRootProxy(std::weak_ptr<RemoteConnection> connection, QString owner, QString path,
                  QDBusConnection bus);

    /// Whether calls are still sent. Otherwise each call returns nil, 0 or false at once.
    [[nodiscard]] bool isValid() const;
    [[nodiscard]] QString owner() const { return mOwner; }
    [[nodiscard]] QString path() const { return mPath; }
    [[nodiscard]] QDBusConnection bus() const { return mBus; }
    /// Handles the error reply to a call. The object becomes invalid if the call timed out, or if the peer or
    /// the bus is gone.
    void callFailed(const QDBusMessage &error) const;

private:
    std::weak_ptr<RemoteConnection> mConnection;
    QString mOwner;
    QString mPath;
    QDBusConnection mBus;
};

/// Opens connections over the pane's own bus connection and keeps track of the open ones. `prefix` turns
/// registered names into bus names and paths.
class DBusConnectionRegistry final : public QObject,
                                     public ConnectionRegistry,
                                     public std::enable_shared_from_this<DBusConnectionRegistry> {
    Q_OBJECT
public:
    DBusConnectionRegistry(std::shared_ptr<BusConnection> bus, std::shared_ptr<RunLoop> runLoop,
                           std::shared_ptr<NotificationCenter> localCenter, bus::NamePrefix prefix);
    ~DBusConnectionRegistry() override;

    std::shared_ptr<Connection> connectionWithRegisteredName(const QString &name) override;
    void whenFoundAgain(const QString &name, std::function<void()> handler) override;

private:
    friend class RemoteConnection;
    /// Ends all connections after one has failed. One process serves all of them, so a call through another
    /// connection would block the main thread for one more timeout.
    void endAllOnNextTurn();
    void lookForOwners();

    std::shared_ptr<BusConnection> mBus;
    std::shared_ptr<RunLoop> mRunLoop;
    std::shared_ptr<NotificationCenter> mLocalCenter;
    bus::NamePrefix mPrefix;
    std::vector<std::weak_ptr<RemoteConnection>> mOpen;
    std::map<QString, std::function<void()>> mFoundAgain;
};

/// A connection to the unique owner of a bus name.
class RemoteConnection final : public QObject,
                               public Connection,
                               public std::enable_shared_from_this<RemoteConnection> {
    Q_OBJECT
public:
    RemoteConnection(std::shared_ptr<DBusConnectionRegistry> registry, const QString &registeredName);
    ~RemoteConnection() override;

    /// Asks for the owner of the bus name and binds to it; returns false if there is none.
    bool open();
    std::shared_ptr<RootProxy> rootProxy() override;
    void invalidate() override;
    [[nodiscard]] bool isValid() const override { return mState == State::Open; }

    /// Handles the error reply to a call. Ends all connections if the call timed out, or if the peer or the
    /// bus is gone.
    void callFailed(const QDBusMessage &error);
    void endOnNextTurn();

private Q_SLOTS:
    void nameOwnerChanged(const QString &name, const QString &oldOwner, const QString &newOwner);

private:
    /// In the state Dying, calls are refused, but the death has not been reported to observers yet.
    enum class State { Open, Dying, Dead };

    void watchOwner();
    void unwatchOwner();
    [[nodiscard]] bool isPeerThere() const;
    void endIfDying();
    void end();

    std::shared_ptr<DBusConnectionRegistry> mRegistry;
    QString mBusName;
    QString mPath;
    QString mOwner;
    QDBusConnection mBus;
    State mState = State::Dead;
};

} // namespace platform
