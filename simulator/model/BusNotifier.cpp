#include "simulator/model/BusNotifier.h"

#include "platform/bus/BusNames.h"

#include <QDBusMessage>

namespace simulator {

void BusNotifier::post(const QString &name, const QVariantMap &userInfo)
{
    auto signal = QDBusMessage::createSignal(platform::bus::NotificationPath,
                                             platform::bus::NotificationInterface, name);
    signal << userInfo;
    mBus.send(signal);
}

} // namespace simulator
