#include "agent_check/NotificationRecorder.h"

#include "agent/RemoteNames.h"
#include "platform/bus/BusNames.h"

#include <QDBusArgument>

namespace agent_check {

NotificationRecorder::NotificationRecorder(const QDBusConnection &bus)
    : mBus(bus)
{
}

bool NotificationRecorder::start()
{
    // Subscribe without a member name, to record unknown notifications as well.
    bool isSubscribed =
        mBus.connect(QString(), RemoteNames::NotificationPath, RemoteNames::NotificationInterface, QString(),
                     this, SLOT(notified(QDBusMessage)));
    for (const QString &name : {RemoteNames::AgentServer, RemoteNames::AgentServerUSB})
        isSubscribed = mBus.connect(platform::bus::Daemon, platform::bus::DaemonPath, platform::bus::Daemon,
                                    QStringLiteral("NameOwnerChanged"), {RemoteNames::busName(name)},
                                    QString(), this, SLOT(ownerChanged(QString, QString, QString)))
            && isSubscribed;
    return isSubscribed;
}

int NotificationRecorder::count(const QString &name, const QString &sender, int from) const
{
    int found = 0;
    for (int index = from; index < mEvents.size(); ++index) {
        if (mEvents.at(index).name == name && mEvents.at(index).sender == sender)
            ++found;
    }
    return found;
}

const RecordedEvent *NotificationRecorder::last(const QString &name, const QString &sender, int from) const
{
    for (int index = nextIndex() - 1; index >= from; --index) {
        if (mEvents.at(index).name == name && mEvents.at(index).sender == sender)
            return &mEvents.at(index);
    }
    return nullptr;
}

void NotificationRecorder::notified(const QDBusMessage &message)
{
    // Check the signature first, because qdbus_cast() aborts the process on a container of another type.
    const bool isWellFormed = message.signature() == platform::bus::UserInfoSignature;
    mEvents.append({message.member(), message.service(), message.signature(),
                    isWellFormed ? qdbus_cast<QVariantMap>(message.arguments().value(0)) : QVariantMap(),
                    false, QString()});
}

void NotificationRecorder::ownerChanged(const QString &name, const QString &oldOwner, const QString &newOwner)
{
    mEvents.append({name, oldOwner, QString(), {}, true, newOwner});
}

} // namespace agent_check
