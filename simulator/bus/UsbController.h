#pragma once

#include "agent/TernUSBCommandControllerProxy.h"

namespace simulator {

class UsbCable;

/// Implements the agent's interface for the camera on the USB cable.
class UsbController final : public TernUSBCommandControllerProxy {
public:
    explicit UsbController(UsbCable &cable)
        : mCable(cable)
    {
    }

    int startUpdate() override;
    bool connectedCamNeedsFirmwareUpdate() override;
    int setPassKey(const QString &passKey) override;
    bool connectedCamHasBTAddress(const QString &address) override;

private:
    UsbCable &mCable;
};

} // namespace simulator
