#include "simulator/model/UsbCable.h"

#include "agent/NotificationNames.h"
#include "simulator/model/BusNotifier.h"

namespace simulator {

UsbCable::UsbCable(const Behaviour &behaviour, BusNotifier &notifier)
    : mBehaviour(behaviour)
    , mNotifier(notifier)
    , mPassKey(behaviour, notifier)
    , mFirmware(behaviour, notifier)
{
    connect(&mFirmware, &FirmwareWriter::succeeded, this, &UsbCable::updated);
}

void UsbCable::plug(const QString &address, bool needsFirmware)
{
    unplug();
    if (address.isEmpty())
        return;
    mAddress = address;
    mNeedsFirmware = needsFirmware;
    Q_EMIT plugged(address);
    mNotifier.post(NotificationNames::USBDeviceConnected);
}

void UsbCable::unplug()
{
    if (mAddress.isEmpty())
        return;
    const QString address = std::exchange(mAddress, QString());
    mNotifier.post(NotificationNames::USBDeviceDisconnected);
    mFirmware.interrupt();
    Q_EMIT unplugged(address);
}

bool UsbCable::holds(const QString &address) const
{
    return !mAddress.isEmpty() && address == mAddress;
}

int UsbCable::startUpdate()
{
    if (mAddress.isEmpty())
        return ErrorCode::NoCameraAtCable;
    return mNeedsFirmware ? mFirmware.start() : ErrorCode::NoUpdateNeeded;
}

int UsbCable::setPassKey(const QString &passKey)
{
    return mAddress.isEmpty() ? ErrorCode::NoCameraAtCable : mPassKey.start(passKey);
}

void UsbCable::updated()
{
    mNeedsFirmware = false;
    if (!mBehaviour.demoFailures)
        return;
    // In the demo every second update fails. Offer a second update after the camera has restarted, to show
    // this failure.
    QTimer::singleShot(mBehaviour.timing.restarting, this, [this, address = mAddress] {
        if (holds(address))
            plug(address, true);
    });
}

} // namespace simulator
