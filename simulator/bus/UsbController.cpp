#include "simulator/bus/UsbController.h"

#include "simulator/model/UsbCable.h"

namespace simulator {

int UsbController::startUpdate()
{
    return mCable.startUpdate();
}

bool UsbController::connectedCamNeedsFirmwareUpdate()
{
    return mCable.needsFirmware();
}

int UsbController::setPassKey(const QString &passKey)
{
    return mCable.setPassKey(passKey);
}

bool UsbController::connectedCamHasBTAddress(const QString &address)
{
    return mCable.holds(address);
}

} // namespace simulator
