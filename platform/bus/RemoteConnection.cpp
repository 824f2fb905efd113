#include "platform/bus/RemoteConnection.h"

#include "platform/bus/BusNames.h"
#include "platform/bus/NotificationCenter.h"
#include "platform/desktop/RunLoop.h"
#include "platform/bus/SessionBus.h"

#include <QDBusError>

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

void DBusRootProxy::callFailed(const QDBusError &error) const
{
    const bool timedOut = error.type() == QDBusError::NoReply || error.type() == QDBusError::Timeout
        || error.type() == QDBusError::TimedOut;
    const auto connection = mConnection.lock();
    if (timedOut && connection)
        connection->callTimedOut();
}

// Registry ----------------------------------------------------------------------------------------------

DBusConnectionRegistry::DBusConnectionRegistry(std::shared_ptr<SessionBus> bus,
                                               std::shared_ptr<RunLoop> runLoop,
                                               std::shared_ptr<NotificationCenter> localCenter)
    : mBus(std::move(bus))
    , mRunLoop(std::move(runLoop))
    , mLocalCenter(std::move(localCenter))
{
}

DBusConnectionRegistry::~DBusConnectionRegistry() = default;

std::shared_ptr<Connection> DBusConnectionRegistry::connectionWithRegisteredName(const QString &name)
{
    mBus->reopenIfLost();
    auto connection = std::make_shared<RemoteConnection>(shared_from_this(), name);
    if (!connection->open())
        return nullptr;
    std::erase_if(mOpen, [](const auto &open) { return open.expired(); });
    mOpen.push_back(connection);
    return connection;
}

void DBusConnectionRegistry::callTimedOut()
{
    const auto open = std::exchange(mOpen, {});
    for (const auto &weak : open) {
        if (const auto connection = weak.lock())
            connection->dieOnNextTurn();
    }
}

// Connection --------------------------------------------------------------------------------------------

RemoteConnection::RemoteConnection(std::shared_ptr<DBusConnectionRegistry> registry,
                               const QString &registeredName)
    : mRegistry(std::move(registry))
    , mBusName(bus::busName(registeredName))
    , mPath(bus::objectPath(registeredName))
    , mBus(mRegistry->mBus->connection())
{
}

RemoteConnection::~RemoteConnection()
{
    unwatchOwner();
}

bool RemoteConnection::open()
{
    // Watched first, asked second: a change between the two is not missed.
    watchOwner();
    mOwner = mRegistry->mBus->ownerOf(mBusName);
    mValid = !mOwner.isEmpty();
    if (mValid)
        QObject::connect(mRegistry->mBus.get(), &SessionBus::lost, this, &RemoteConnection::invalidate);
    return mValid;
}

std::shared_ptr<RootProxy> RemoteConnection::rootProxy()
{
    if (!mValid)
        return nullptr;
    return std::make_shared<DBusRootProxy>(weak_from_this(), mOwner, mPath, mBus);
}

void RemoteConnection::invalidate()
{
    if (endValidity())
        reportDeath();
}

void RemoteConnection::callTimedOut()
{
    mRegistry->callTimedOut();
}

void RemoteConnection::dieOnNextTurn()
{
    if (!endValidity())
        return;
    mRegistry->mRunLoop->performOnMainThread([weak = weak_from_this()] {
        if (const auto self = weak.lock())
            self->reportDeath();
    });
}

void RemoteConnection::nameOwnerChanged(const QString &, const QString &oldOwner, const QString &)
{
    // Words about earlier owners may still be on their way when a connection is opened.
    if (oldOwner == mOwner)
        invalidate();
}

void RemoteConnection::watchOwner()
{
    mWatching = mBus.connect(bus::Daemon, bus::DaemonPath, bus::Daemon, QStringLiteral("NameOwnerChanged"),
                             {mBusName}, QString(), this, SLOT(nameOwnerChanged(QString, QString, QString)));
}

void RemoteConnection::unwatchOwner()
{
    if (std::exchange(mWatching, false))
        mBus.disconnect(bus::Daemon, bus::DaemonPath, bus::Daemon, QStringLiteral("NameOwnerChanged"),
                        {mBusName}, QString(), this, SLOT(nameOwnerChanged(QString, QString, QString)));
}

bool RemoteConnection::endValidity()
{
    if (!std::exchange(mValid, false))
        return false;
    unwatchOwner();
    return true;
}

void RemoteConnection::reportDeath()
{
    // Whoever hears of the death lets go of the connection, in the middle of its report.
    const auto self = shared_from_this();
    mRegistry->mLocalCenter->postNotificationName(NSConnectionDidDieNotification,
                                                  static_cast<Connection *>(this));
}

} // namespace platform
