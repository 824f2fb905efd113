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

/// The texts that logind shows to a person: who delays the sleep, and why.
struct SleepDelay {
    QString who;
    QString why;
};

/// Reports sleep and wake as logind announces them. A delay inhibitor makes the machine wait until the
/// will-sleep message has been answered. After waking, a new inhibitor is taken. A can-sleep query comes
/// before each will-sleep message; the answer to the query has no effect. `bus` is opened in the background.
/// Without the bus or logind, no message comes until both appear.
class LogindPower final : public QObject, public PowerManagement {
    Q_OBJECT
public:
    LogindPower(std::shared_ptr<BusConnection> bus, SleepDelay delay);
    ~LogindPower() override;

    std::uint32_t registerForSystemPower(void *refcon, Callback callback) override;
    /// Releases the inhibitor if `messageArgument` is the argument of the last will-sleep message.
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
    /// The pending Inhibit call. Replies to other calls come from a logind that has ended, and are ignored.
    QDBusPendingCallWatcher *mQuestion = nullptr;
    /// The address of this token is the argument of the last will-sleep message.
    std::unique_ptr<char> mToken;
    /// The address of this token is the argument of every can-sleep query.
    char mQuery = 0;
    /// True from the moment when a sleep is allowed until the machine wakes or logind ends.
    bool mMaySleep = false;
    void *mRefcon = nullptr;
    Callback mCallback = nullptr;
};

} // namespace platform
