#pragma once

#include "platform/power/PowerManagement.h"

#include <QDBusConnection>
#include <QDBusUnixFileDescriptor>
#include <QObject>

#include <cstdint>
#include <memory>

class QDBusPendingCallWatcher;
class QDBusServiceWatcher;

namespace platform {

/// Sleep and wake as logind announces them. A delay inhibitor makes the machine wait until the will-sleep
/// message has been answered; it is taken again after waking. Without logind no message comes.
class LogindPower final : public QObject, public PowerManagement {
    Q_OBJECT
public:
    LogindPower();
    ~LogindPower() override;

    std::uint32_t registerForSystemPower(void *refcon, Callback callback) override;
    /// Lets go of the inhibitor when `messageArgument` is that of the last will-sleep message.
    void allowPowerChange(std::uint32_t rootPort, void *messageArgument) override;
    [[nodiscard]] bool holdsInhibitor() const { return mInhibitor.isValid(); }

private Q_SLOTS:
    void prepareForSleep(bool start);

private:
    void takeInhibitor();
    void inhibited(QDBusPendingCallWatcher *answer);
    void logindCame();
    void logindWent();
    void send(PowerMessage message, void *argument);

    QDBusConnection mBus;
    std::unique_ptr<QDBusServiceWatcher> mWatcher;
    QDBusUnixFileDescriptor mInhibitor;
    /// The one question on its way: an answer to an earlier one is of a logind that is gone.
    QDBusPendingCallWatcher *mQuestion = nullptr;
    /// Its address is the argument of the last will-sleep message.
    std::unique_ptr<char> mToken;
    bool mMaySleep = false;
    void *mRefcon = nullptr;
    Callback mCallback = nullptr;
};

} // namespace platform
