#pragma once

#include "simulator/model/FirmwareWriter.h"
#include "simulator/model/PasskeyChange.h"

namespace simulator {

/// The USB cable: the camera that is plugged in, and the operations that need one.
class UsbCable final : public QObject {
    Q_OBJECT
public:
    UsbCable(const Behaviour &behaviour, BusNotifier &notifier);

    /// Unplugs the present camera first.
    void plug(const QString &address, bool needsFirmware);
    /// Does nothing without a plugged-in camera.
    void unplug();
    [[nodiscard]] bool holds(const QString &address) const;
    [[nodiscard]] bool needsFirmware() const { return !mAddress.isEmpty() && mNeedsFirmware; }

    /// 0 or an error code.
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
