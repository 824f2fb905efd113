#pragma once

#include "platform/bus/BusNames.h"
#include "platform/bus/NotificationCenter.h"

#include <QObject>
#include <QStringList>

#include <memory>

class QDBusMessage;

namespace platform {

class BusConnection;

/// Sends notifications between processes as broadcast signals on the session bus. Only observed names are
/// subscribed, so that other notifications do not wake the pane. A post does not wait for a reply, and its
/// object is not sent. The poster's own observers are called later, from the event loop. Without an open bus,
/// a post tries once to open it and is lost if that fails.
class DistributedNotificationCenter final : public QObject, public NotificationCenter {
    Q_OBJECT
public:
    /// `prefix` determines the object path and the interface of the center's signals.
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
