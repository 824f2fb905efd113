#pragma once

#include "simulator/model/FirmwareWriter.h"
#include "simulator/model/PasskeyChange.h"

namespace simulator {

/// The USB cable: which camera is plugged in, and the work that needs it.
class UsbCable final : public QObject {
    Q_OBJECT
public:
    UsbCable(const Behaviour &behaviour, const WantedErrors &errors, Notifier &notifier,
             const Timing &timing);

    /// Unplugs what was plugged in before.
    void plug(const QString &address, bool needsFirmware);
    /// Nothing when nothing is plugged in.
    void unplug();
    [[nodiscard]] bool holds(const QString &address) const;
    [[nodiscard]] bool needsFirmware() const { return !mAddress.isEmpty() && mNeedsFirmware; }

    /// 0, or the code of the refusal.
    int startUpdate();
    int setPassKey(const QString &passKey);

Q_SIGNALS:
    void plugged(const QString &address);
    void unplugged(const QString &address);

private:
    void updated();

    const Behaviour &mBehaviour;
    Notifier &mNotifier;
    Timing mTiming;
    PasskeyChange mPassKey;
    FirmwareWriter mFirmware;
    QString mAddress;
    bool mNeedsFirmware = false;
};

} // namespace simulator
