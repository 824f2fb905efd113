#include "platform/DBusConnection.h"

#include "platform/BusNames.h"
#include "platform/NotificationCenter.h"
#include "platform/RunLoop.h"
#include "platform/SessionBus.h"

#include <QDBusError>

#include <utility>

namespace platform {

// Root proxy --------------------------------------------------------------------------------------------

DBusRootProxy::DBusRootProxy(std::weak_ptr<DBusConnection> connection, QString owner, QString path,
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
    auto connection = std::make_shared<DBusConnection>(shared_from_this(), name);
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

DBusConnection::DBusConnection(std::shared_ptr<DBusConnectionRegistry> registry,
                               const QString &registeredName)
    : mRegistry(std::move(registry))
    , mBusName(bus::busName(registeredName))
    , mPath(bus::objectPath(registeredName))
    , mBus(mRegistry->mBus->connection())
{
}

DBusConnection::~DBusConnection()
{
    unwatchOwner();
}

bool DBusConnection::open()
{
    // Watched first, asked second: a change between the two is not missed.
    watchOwner();
    mOwner = mRegistry->mBus->ownerOf(mBusName);
    mValid = !mOwner.isEmpty();
    if (mValid)
        QObject::connect(mRegistry->mBus.get(), &SessionBus::lost, this, &DBusConnection::invalidate);
    return mValid;
}

std::shared_ptr<RootProxy> DBusConnection::rootProxy()
{
    if (!mValid)
        return nullptr;
    return std::make_shared<DBusRootProxy>(weak_from_this(), mOwner, mPath, mBus);
}

void DBusConnection::invalidate()
{
    if (endValidity())
        reportDeath();
}

void DBusConnection::callTimedOut()
{
    mRegistry->callTimedOut();
}

void DBusConnection::dieOnNextTurn()
{
    if (!endValidity())
        return;
    mRegistry->mRunLoop->performOnMainThread([weak = weak_from_this()] {
        if (const auto self = weak.lock())
            self->reportDeath();
    });
}

void DBusConnection::nameOwnerChanged(const QString &, const QString &oldOwner, const QString &)
{
    // Words about earlier owners may still be on their way when a connection is opened.
    if (oldOwner == mOwner)
        invalidate();
}

void DBusConnection::watchOwner()
{
    mWatching = mBus.connect(bus::Daemon, bus::DaemonPath, bus::Daemon, QStringLiteral("NameOwnerChanged"),
                             {mBusName}, QString(), this, SLOT(nameOwnerChanged(QString, QString, QString)));
}

void DBusConnection::unwatchOwner()
{
    if (std::exchange(mWatching, false))
        mBus.disconnect(bus::Daemon, bus::DaemonPath, bus::Daemon, QStringLiteral("NameOwnerChanged"),
                        {mBusName}, QString(), this, SLOT(nameOwnerChanged(QString, QString, QString)));
}

bool DBusConnection::endValidity()
{
    if (!std::exchange(mValid, false))
        return false;
    unwatchOwner();
    return true;
}

void DBusConnection::reportDeath()
{
    // Whoever hears of the death lets go of the connection, in the middle of its report.
    const auto self = shared_from_this();
    mRegistry->mLocalCenter->postNotificationName(NSConnectionDidDieNotification,
                                                  static_cast<Connection *>(this));
}

} // namespace platform
