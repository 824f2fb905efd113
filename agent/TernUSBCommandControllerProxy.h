#pragma once

#include <QString>

/// The USB side of the agent, for the camera at the cable. The base class is the nil proxy.
class TernUSBCommandControllerProxy {
public:
    virtual ~TernUSBCommandControllerProxy() = default;

    /// Starts writing firmware; 0 when it has started, otherwise an error code.
    virtual int startUpdate() { return 0; }
    virtual bool connectedCamNeedsFirmwareUpdate() { return false; }
    /// Sets the passkey of the camera at the cable; 0 on success, otherwise an error code.
    virtual int setPassKey([[maybe_unused]] const QString &passKey) { return 0; }
    virtual bool connectedCamHasBTAddress([[maybe_unused]] const QString &address) { return false; }
};
