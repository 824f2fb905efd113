#pragma once

#include "platform/bus/BusNames.h"
#include "platform/bus/NotificationCenter.h"

#include <QObject>
#include <QStringList>

#include <memory>

class QDBusMessage;

namespace platform {

class BusConnection;

/// The centre across processes: broadcast signals on the session bus. It subscribes to the observed names
/// only, so that other notifications do not wake the pane. Posts do not wait for a reply; the poster's own
/// observers receive them through the run loop. The object of a post is not sent. A post over a bus that was
/// lost, or was never there, tries once to reach the bus; without one nobody receives the post.
class DistributedNotificationCenter final : public QObject, public NotificationCenter {
    Q_OBJECT
public:
    /// `prefix` places the centre on the bus.
    DistributedNotificationCenter(std::shared_ptr<BusConnection> bus, const bus::NamePrefix &prefix);
    ~DistributedNotificationCenter() override;

    void addObserver(const void *observer, const QString &name, NotificationHandler handler) override;
    void removeObserver(const void *observer, const QString &name) override;
    void postNotificationName(const QString &name, const void *object = nullptr,
                              const QVariantMap &userInfo = {}) override;

private Q_SLOTS:
    void receive(const QDBusMessage &signal);

private:
    void subscribe(const QString &name);
    void unsubscribe(const QString &name);
    void subscribeAll();

    std::shared_ptr<BusConnection> mBus;
    QString mPath;
    QString mInterface;
    LocalNotificationCenter mObservers;
    QStringList mSubscribed;
};

} // namespace platform
