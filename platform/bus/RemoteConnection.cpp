#include "platform/bus/RemoteConnection.h"

#include "platform/base/RunLoop.h"
#include "platform/bus/BusCall.h"
#include "platform/bus/BusConnection.h"
#include "platform/bus/NotificationCenter.h"

#include <utility>

namespace platform {

// Root proxy --------------------------------------------------------------------------------------------

DBusRootProxy::DBusRootProxy(std::weak_ptr<RemoteConnection> connection, QString owner, QString path,
                             QDBusConnection bus)
    : mConnection(std::move(connection))
    , mOwner(std::move(owner))
    , mPath(std::move(path))
    , mBus(std::move(bus))
{
}

bool DBusRootProxy::isValid() const
{
    const auto connection = mConnection.lock();
    return connection && connection->isValid();
}

void DBusRootProxy::callFailed(const QDBusMessage &error) const
{
    const auto connection = mConnection.lock();
    if (connection)
        connection->callFailed(error);
}

// Registry ----------------------------------------------------------------------------------------------

DBusConnectionRegistry::DBusConnectionRegistry(std::shared_ptr<BusConnection> bus,
                                               std::shared_ptr<RunLoop> runLoop,
                                               std::shared_ptr<NotificationCenter> localCenter,
                                               bus::NamePrefix prefix)
    : mBus(std::move(bus))
    , mRunLoop(std::move(runLoop))
    , mLocalCenter(std::move(localCenter))
    , mPrefix(std::move(prefix))
{
    connect(mBus.get(), &BusConnection::foundAgain, this, &DBusConnectionRegistry::lookForOwners);
}

DBusConnectionRegistry::~DBusConnectionRegistry() = default;

std::shared_ptr<Connection> DBusConnectionRegistry::connectionWithRegisteredName(const QString &name)
{
    // After a loss of the bus, older connections report their deaths on the next turn of the event loop. The
    // caller is still connecting and may not observe deaths yet.
    if (mBus->isLostUnreported())
        endAllOnNextTurn();
    mBus->reopenIfLost();
    auto connection = std::make_shared<RemoteConnection>(shared_from_this(), name);
    if (!connection->open())
        return nullptr;
    std::erase_if(mOpen, [](const auto &open) { return open.expired(); });
    mOpen.push_back(connection);
    return connection;
}

void DBusConnectionRegistry::whenFoundAgain(const QString &name, std::function<void()> handler)
{
    mFoundAgain[name] = std::move(handler);
}

void DBusConnectionRegistry::endAllOnNextTurn()
{
    const auto open = std::exchange(mOpen, {});
    for (const auto &weak : open) {
        if (const auto connection = weak.lock())
            connection->endOnNextTurn();
    }
}

void DBusConnectionRegistry::lookForOwners()
{
    // Queue the handlers, which may open connections. The bus may be found again inside a call of
    // connectionWithRegisteredName(), which must return first.
    mRunLoop->performOnMainThread([weak = weak_from_this()] {
        const auto self = weak.lock();
        if (!self)
            return;
        const auto handlers = self->mFoundAgain;
        for (const auto &[name, handler] : handlers) {
            if (!self->mBus->ownerOf(self->mPrefix.busName(name)).isEmpty())
                handler();
        }
    });
}

// Connection --------------------------------------------------------------------------------------------

RemoteConnection::RemoteConnection(std::shared_ptr<DBusConnectionRegistry> registry,
                                   const QString &registeredName)
    : mRegistry(std::move(registry))
    , mBusName(mRegistry->mPrefix.busName(registeredName))
    , mPath(mRegistry->mPrefix.objectPath(registeredName))
    , mBus(mRegistry->mBus->connection())
{
}

RemoteConnection::~RemoteConnection()
{
    unwatchOwner();
}

bool RemoteConnection::open()
{
    // Subscribe to NameOwnerChanged before calling GetNameOwner, so that no change is missed in between.
    watchOwner();
    mOwner = mRegistry->mBus->ownerOf(mBusName);
    if (mOwner.isEmpty())
        return false;
    mState = State::Open;
    const BusConnection *bus = mRegistry->mBus.get();
    connect(bus, &BusConnection::lost, this, &RemoteConnection::invalidate);
    connect(bus, &BusConnection::aboutToDeliver, this, &RemoteConnection::endIfDying);
    return true;
}

std::shared_ptr<RootProxy> RemoteConnection::rootProxy()
{
    if (!isValid())
        return nullptr;
    return std::make_shared<DBusRootProxy>(weak_from_this(), mOwner, mPath, mBus);
}

void RemoteConnection::invalidate()
{
    if (isValid())
        end();
}

void RemoteConnection::callFailed(const QDBusMessage &error)
{
    if (timedOut(error) || (saysPeerIsGone(error) && !isPeerThere()))
        mRegistry->endAllOnNextTurn();
}

bool RemoteConnection::isPeerThere() const
{
    return mBus.isConnected() && !mRegistry->mBus->ownerOf(mOwner).isEmpty();
}

void RemoteConnection::endOnNextTurn()
{
    if (!isValid())
        return;
    mState = State::Dying;
    mRegistry->mRunLoop->performOnMainThread([weak = weak_from_this()] {
        if (const auto self = weak.lock())
            self->endIfDying();
    });
}

void RemoteConnection::nameOwnerChanged(const QString &, const QString &oldOwner, const QString &)
{
    // Ignore signals about earlier owners, which may arrive after the connection was opened.
    if (oldOwner == mOwner)
        end();
}

void RemoteConnection::watchOwner()
{
    mBus.connect(bus::Daemon, bus::DaemonPath, bus::Daemon, QStringLiteral("NameOwnerChanged"), {mBusName},
                 QString(), this, SLOT(nameOwnerChanged(QString, QString, QString)));
}

void RemoteConnection::unwatchOwner()
{
    mBus.disconnect(bus::Daemon, bus::DaemonPath, bus::Daemon, QStringLiteral("NameOwnerChanged"), {mBusName},
                    QString(), this, SLOT(nameOwnerChanged(QString, QString, QString)));
}

void RemoteConnection::endIfDying()
{
    if (mState == State::Dying)
        end();
}

void RemoteConnection::end()
{
    if (std::exchange(mState, State::Dead) == State::Dead)
        return;
    unwatchOwner();
    // Keep a reference during the notification, because an observer may drop the last other reference.
    const auto self = shared_from_this();
    mRegistry->mLocalCenter->postNotificationName(NSConnectionDidDieNotification,
                                                  static_cast<Connection *>(this));
}

} // namespace platform
