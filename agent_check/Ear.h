#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QVariantMap>
#include <QVector>

namespace agent_check {

/// A notification, or a change of the owner of one of the agent's names.
struct Heard {
    /// The notification's name; the bus name for a change of owner.
    QString name;
    QString sender;
    QString signature;
    QVariantMap userInfo;
    bool isOwnerChange = false;
    /// Only for a change of owner; empty when the name was released.
    QString newOwner;
};

/// Records what is posted and who owns the agent's names, in the order of the bus.
class Ear final : public QObject {
    Q_OBJECT
public:
    explicit Ear(const QDBusConnection &bus);

    /// False when the bus refuses.
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
