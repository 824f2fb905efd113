#include "agent_check/Ear.h"

#include "agent/RemoteNames.h"
#include "platform/bus/BusNames.h"

#include <QDBusArgument>

namespace agent_check {

Ear::Ear(const QDBusConnection &bus)
    : mBus(bus)
{
}

bool Ear::listen()
{
    // Subscribe without a member name, to record unknown notifications as well.
    bool listens = mBus.connect(QString(), RemoteNames::NotificationPath, RemoteNames::NotificationInterface,
                                QString(), this, SLOT(notified(QDBusMessage)));
    for (const QString &name : {RemoteNames::AgentServer, RemoteNames::AgentServerUSB})
        listens = mBus.connect(platform::bus::Daemon, platform::bus::DaemonPath, platform::bus::Daemon,
                               QStringLiteral("NameOwnerChanged"), {RemoteNames::busName(name)}, QString(),
                               this, SLOT(ownerChanged(QString, QString, QString)))
            && listens;
    return listens;
}

int Ear::count(const QString &name, const QString &sender, int from) const
{
    int found = 0;
    for (int index = from; index < mHeard.size(); ++index) {
        if (mHeard.at(index).name == name && mHeard.at(index).sender == sender)
            ++found;
    }
    return found;
}

const Heard *Ear::last(const QString &name, const QString &sender, int from) const
{
    for (int index = now() - 1; index >= from; --index) {
        if (mHeard.at(index).name == name && mHeard.at(index).sender == sender)
            return &mHeard.at(index);
    }
    return nullptr;
}

void Ear::notified(const QDBusMessage &message)
{
    // Check the signature first, because qdbus_cast() aborts the process on a container of another type.
    const bool isWellFormed = message.signature() == platform::bus::UserInfoSignature;
    mHeard.append({message.member(), message.service(), message.signature(),
                   isWellFormed ? qdbus_cast<QVariantMap>(message.arguments().value(0)) : QVariantMap(),
                   false, QString()});
}

void Ear::ownerChanged(const QString &name, const QString &oldOwner, const QString &newOwner)
{
    mHeard.append({name, oldOwner, QString(), {}, true, newOwner});
}

} // namespace agent_check
