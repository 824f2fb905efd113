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

/// The target of calls to a remote root object, and the effect of a failed call on the connection. Does not
/// own the connection; without it the root is invalid.
class DBusRootProxy final : public RootProxy {
public:
    DBusRootProxy(std::weak_ptr<RemoteConnection> connection, QString owner, QString path,
                  QDBusConnection bus);

    /// False when calls are not sent any more: each returns nil, 0 or false at once.
    [[nodiscard]] bool isValid() const;
    [[nodiscard]] QString owner() const { return mOwner; }
    [[nodiscard]] QString path() const { return mPath; }
    [[nodiscard]] QDBusConnection bus() const { return mBus; }
    /// Handles the error reply of a call. The root becomes invalid if the call timed out or the error means
    /// that the peer or the bus is gone.
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
    /// One peer serves all names, so end all connections together. Otherwise the next call on another one
    /// would block the window again.
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

    /// Binds to the present owner of the name; false when there is none.
    bool open();
    std::shared_ptr<RootProxy> rootProxy() override;
    void invalidate() override;
    [[nodiscard]] bool isValid() const override { return mState == State::Open; }

    /// Ends all connections when the error says that the call has timed out, or that the peer or the bus is
    /// gone.
    void callFailed(const QDBusMessage &error);
    void endOnNextTurn();

private Q_SLOTS:
    void nameOwnerChanged(const QString &name, const QString &oldOwner, const QString &newOwner);

private:
    /// Dying: calls are refused, but the death is not reported yet.
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
