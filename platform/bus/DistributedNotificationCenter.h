#pragma once

#include "platform/bus/BusNames.h"
#include "platform/bus/NotificationCenter.h"

#include <QObject>
#include <QStringList>

#include <memory>

class QDBusMessage;

namespace platform {

class BusConnection;

/// Notifications between processes, as broadcast signals on the session bus. It subscribes to observed names
/// only, so other notifications do not wake the pane. Posts do not wait for a reply. The poster's own
/// observers are called through the run loop. A post's object is not sent. A post without an open bus tries
/// to open it once; if that fails, the post is lost.
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
