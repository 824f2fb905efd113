#include "simulator/model/BusNotifier.h"

#include "agent/RemoteNames.h"

#include <QDBusMessage>

namespace simulator {

void BusNotifier::post(const QString &name, const QVariantMap &userInfo)
{
    if (mMute)
        return;
    auto signal =
        QDBusMessage::createSignal(RemoteNames::NotificationPath, RemoteNames::NotificationInterface, name);
    signal << userInfo;
    mBus.send(signal);
}

} // namespace simulator
