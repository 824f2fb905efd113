#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QVariantMap>
#include <QVector>

namespace agent_check {

/// A notification, or a change of the owner of one of the agent's names.
struct Heard {
    /// The notification's name, or the bus name whose owner changed.
    QString name;
    QString sender;
    QString signature;
    QVariantMap userInfo;
    bool isOwnerChange = false;
    /// The new owner in a change of owner; empty if the name was released.
    QString newOwner;
};

/// Records posts and changes of the names' owners, in the order of the bus.
class Ear final : public QObject {
    Q_OBJECT
public:
    explicit Ear(const QDBusConnection &bus);

    /// Returns false if the bus refuses the subscription.
    bool listen();
    [[nodiscard]] const QVector<Heard> &heard() const { return mHeard; }
    /// The number of notifications of this name from this sender, from the event with this index on.
    [[nodiscard]] int count(const QString &name, const QString &sender, int from = 0) const;
    /// The newest notification of this name from this sender; nullptr for none.
    [[nodiscard]] const Heard *last(const QString &name, const QString &sender, int from = 0) const;
    /// The index of the next event.
    [[nodiscard]] int now() const { return int(mHeard.size()); }

private Q_SLOTS:
    void notified(const QDBusMessage &message);
    void ownerChanged(const QString &name, const QString &oldOwner, const QString &newOwner);

private:
    QDBusConnection mBus;
    QVector<Heard> mHeard;
};

} // namespace agent_check
