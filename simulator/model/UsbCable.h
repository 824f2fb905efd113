#pragma once

#include "simulator/model/FirmwareWriter.h"
#include "simulator/model/PasskeyChange.h"

namespace simulator {

/// The USB cable: the camera that is plugged in, its firmware update and its change of passkey.
class UsbCable final : public QObject {
    Q_OBJECT
public:
    UsbCable(const Behaviour &behaviour, BusNotifier &notifier);

    /// Plugs a camera in. Unplugs another camera first.
    void plug(const QString &address, bool needsFirmware);
    /// Unplugs the camera. Does nothing if no camera is plugged in.
    void unplug();
    [[nodiscard]] bool holds(const QString &address) const;
    [[nodiscard]] bool needsFirmware() const { return !mAddress.isEmpty() && mNeedsFirmware; }

    /// startUpdate() and setPassKey() return 0 on success, otherwise an error code.
    int startUpdate();
    int setPassKey(const QString &passKey);

Q_SIGNALS:
    void plugged(const QString &address);
    void unplugged(const QString &address);

private:
    void updated();

    const Behaviour &mBehaviour;
    BusNotifier &mNotifier;
    PasskeyChange mPassKey;
    FirmwareWriter mFirmware;
    QString mAddress;
    bool mNeedsFirmware = false;
};

} // namespace simulator
