#pragma once

#include "platform/power/PowerManagement.h"

#include <QDBusUnixFileDescriptor>
#include <QObject>
#include <QString>

#include <cstdint>
#include <memory>

class QDBusPendingCallWatcher;
class QDBusServiceWatcher;

namespace platform {

class BusConnection;

/// What logind shows a person about the delay of a sleep.
struct SleepDelay {
    QString who;
    QString why;
};

/// Sleep and wake as logind announces them. A delay inhibitor makes the machine wait until the will-sleep
/// message has been answered; it is taken again after waking. Each will-sleep message follows a can-sleep
/// query, whose answer releases nothing. Without a system bus or logind no message comes; both
/// are taken up when they appear. `bus` is opened in the background.
class LogindPower final : public QObject, public PowerManagement {
    Q_OBJECT
public:
    LogindPower(std::shared_ptr<BusConnection> bus, SleepDelay delay);
    ~LogindPower() override;

    std::uint32_t registerForSystemPower(void *refcon, Callback callback) override;
    /// Releases the inhibitor when `messageArgument` is that of the last will-sleep message.
    void allowPowerChange(std::uint32_t rootPort, void *messageArgument) override;
    [[nodiscard]] bool holdsInhibitor() const { return mInhibitor.isValid(); }

private Q_SLOTS:
    void prepareForSleep(bool start);

private:
    void subscribe();
    void sendSleep();
    void takeInhibitor();
    void inhibited(QDBusPendingCallWatcher *answer);
    void logindCame();
    void logindWent();
    void send(PowerMessage message, void *argument);

    std::shared_ptr<BusConnection> mBus;
    SleepDelay mDelay;
    std::unique_ptr<QDBusServiceWatcher> mWatcher;
    QDBusUnixFileDescriptor mInhibitor;
    /// The one pending Inhibit call; a reply to an earlier call is from a logind that has gone.
    QDBusPendingCallWatcher *mQuestion = nullptr;
    /// Token whose address is the argument of the last will-sleep message.
    std::unique_ptr<char> mToken;
    /// Token whose address is the argument of every can-sleep query.
    char mQuery = 0;
    /// The last sleep was allowed and the machine has not woken yet.
    bool mMaySleep = false;
    void *mRefcon = nullptr;
    Callback mCallback = nullptr;
};

} // namespace platform
