#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QVariantMap>
#include <QVector>

namespace agent_check {

/// A recorded event: a notification, or a change of the owner of one of the agent's bus names.
struct RecordedEvent {
    /// The name of the notification. For a change of owner, the bus name.
    QString name;
    QString sender;
    QString signature;
    QVariantMap userInfo;
    bool isOwnerChange = false;
    /// For a change of owner, the new owner; empty if the bus name was released.
    QString newOwner;
};

/// Records notifications and changes of the bus names' owners, in the order in which the bus delivers them.
class NotificationRecorder final : public QObject {
    Q_OBJECT
public:
    explicit NotificationRecorder(const QDBusConnection &bus);

    /// Starts recording. Returns false if the bus refuses the subscription.
    bool start();
    [[nodiscard]] const QVector<RecordedEvent> &events() const { return mEvents; }
    /// Counts the notifications with this name from this sender, beginning with the event of index `from`.
    [[nodiscard]] int count(const QString &name, const QString &sender, int from = 0) const;
    /// Returns the newest notification with this name from this sender; null without one.
    [[nodiscard]] const RecordedEvent *last(const QString &name, const QString &sender, int from = 0) const;
    /// Returns the index that the next event will have.
    [[nodiscard]] int nextIndex() const { return int(mEvents.size()); }

private Q_SLOTS:
    void notified(const QDBusMessage &message);
    void ownerChanged(const QString &name, const QString &oldOwner, const QString &newOwner);

private:
    QDBusConnection mBus;
    QVector<RecordedEvent> mEvents;
};

} // namespace agent_check
