#include "platform/bus/DistributedNotificationCenter.h"

#include "platform/bus/BusConnection.h"

#include <QDBusArgument>
#include <QDBusMessage>

namespace platform {
namespace {

/// Any process may send a notification, so an argument of a wrong type counts as empty user info.
QVariantMap userInfoOf(const QDBusMessage &signal)
{
    if (signal.signature() != bus::UserInfoSignature)
        return {};
    return qdbus_cast<QVariantMap>(signal.arguments().constFirst());
}

} // namespace

DistributedNotificationCenter::DistributedNotificationCenter(std::shared_ptr<BusConnection> bus,
                                                             const bus::NamePrefix &prefix)
    : mBus(std::move(bus))
    , mPath(prefix.objectPath(bus::NotificationCenterName))
    , mInterface(prefix.busName(bus::NotificationCenterName))
{
    QObject::connect(mBus.get(), &BusConnection::opened, this, &DistributedNotificationCenter::subscribeAll);
}

DistributedNotificationCenter::~DistributedNotificationCenter()
{
    // Unsubscribe first. QtDBus's thread may close the connection at any time and must not call a
    // half-destroyed receiver.
    for (const auto &name : std::as_const(mSubscribed))
        unsubscribe(name);
}

void DistributedNotificationCenter::addObserver(const void *observer, const QString &name,
                                                NotificationHandler handler)
{
    mObservers.addObserver(observer, name, std::move(handler));
    if (mSubscribed.contains(name))
        return;
    mBus->connection();
    mSubscribed.append(name);
    subscribe(name);
}

void DistributedNotificationCenter::removeObserver(const void *observer, const QString &name)
{
    mObservers.removeObserver(observer, name);
    if (mObservers.hasObservers(name) || !mSubscribed.removeOne(name))
        return;
    unsubscribe(name);
}

void DistributedNotificationCenter::postNotificationName(const QString &name, const void *,
                                                         const QVariantMap &userInfo)
{
    auto signal = QDBusMessage::createSignal(mPath, mInterface, name);
    signal << userInfo;
    mBus->reopenIfLost();
    mBus->connection().send(signal);
}

void DistributedNotificationCenter::receive(const QDBusMessage &signal)
{
    Q_EMIT mBus->aboutToDeliver();
    mObservers.postNotificationName(signal.member(), nullptr, userInfoOf(signal));
}

void DistributedNotificationCenter::subscribe(const QString &name)
{
    mBus->connection().connect({}, mPath, mInterface, name, this, SLOT(receive(QDBusMessage)));
}

void DistributedNotificationCenter::unsubscribe(const QString &name)
{
    mBus->connection().disconnect({}, mPath, mInterface, name, this, SLOT(receive(QDBusMessage)));
}

void DistributedNotificationCenter::subscribeAll()
{
    for (const auto &name : std::as_const(mSubscribed))
        subscribe(name);
}

} // namespace platform
