#include "platform/power/LogindPower.h"

#include "platform/bus/BusConnection.h"
#include "platform/bus/BusNames.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>

namespace platform {
namespace {

/// The handle that registerForSystemPower() returns. Callers pass it back, but logind needs none.
constexpr std::uint32_t RootPort = 1;

QDBusMessage inhibitQuestion(const SleepDelay &delay)
{
    auto question = QDBusMessage::createMethodCall(bus::Logind, bus::LogindPath, bus::LogindManager,
                                                   QStringLiteral("Inhibit"));
    question.setAutoStartService(false);
    question << QStringLiteral("sleep") << delay.who << delay.why << QStringLiteral("delay");
    return question;
}

} // namespace

LogindPower::LogindPower(std::shared_ptr<BusConnection> bus, SleepDelay delay)
    : mBus(std::move(bus))
    , mDelay(std::move(delay))
{
}

LogindPower::~LogindPower()
{
    if (mBus->isOpen())
        mBus->connection().disconnect(bus::Logind, bus::LogindPath, bus::LogindManager, bus::PrepareForSleep,
                                      this, SLOT(prepareForSleep(bool)));
}

std::uint32_t LogindPower::registerForSystemPower(void *refcon, Callback callback)
{
    mRefcon = refcon;
    mCallback = callback;
    connect(mBus.get(), &BusConnection::opened, this, &LogindPower::subscribe);
    connect(mBus.get(), &BusConnection::lost, this, &LogindPower::logindWent);
    if (mBus->isOpen())
        subscribe();
    else
        mBus->openInBackground();
    return RootPort;
}

void LogindPower::subscribe()
{
    QDBusConnection connection = mBus->connection();
    connection.connect(bus::Logind, bus::LogindPath, bus::LogindManager, bus::PrepareForSleep, this,
                       SLOT(prepareForSleep(bool)));
    mWatcher = std::make_unique<QDBusServiceWatcher>(bus::Logind, connection);
    connect(mWatcher.get(), &QDBusServiceWatcher::serviceRegistered, this, &LogindPower::logindCame);
    connect(mWatcher.get(), &QDBusServiceWatcher::serviceUnregistered, this, &LogindPower::logindWent);
    takeInhibitor();
}

void LogindPower::allowPowerChange(std::uint32_t, void *messageArgument)
{
    // Only the answer to the last will-sleep message releases the inhibitor. Answers to can-sleep queries and
    // to earlier will-sleep messages do nothing.
    if (!mToken || messageArgument != mToken.get())
        return;
    mMaySleep = true;
    mInhibitor = {};
}

void LogindPower::prepareForSleep(bool start)
{
    mMaySleep = false;
    if (start)
        return sendSleep();
    takeInhibitor();
    send(kIOMessageSystemHasPoweredOn, nullptr);
}

void LogindPower::sendSleep()
{
    // logind never asks whether the machine may sleep, so send the can-sleep query directly before the
    // will-sleep message. The query has an argument of its own, so that an answer to it does not release the
    // inhibitor.
    send(kIOMessageCanSystemSleep, &mQuery);
    // The token's address is the argument of the will-sleep message. Free the old token only after the new
    // one is allocated, because two equal addresses would make an answer to the old message valid.
    auto token = std::make_unique<char>();
    mToken.swap(token);
    send(kIOMessageSystemWillSleep, mToken.get());
}

void LogindPower::takeInhibitor()
{
    // Without an open connection, send no call: QtDBus would never finish it.
    if (mInhibitor.isValid() || mQuestion || !mBus->isOpen())
        return;
    mQuestion = new QDBusPendingCallWatcher(mBus->connection().asyncCall(inhibitQuestion(mDelay)), this);
    connect(mQuestion, &QDBusPendingCallWatcher::finished, this, &LogindPower::inhibited);
}

void LogindPower::inhibited(QDBusPendingCallWatcher *answer)
{
    answer->deleteLater();
    if (answer != mQuestion)
        return;
    mQuestion = nullptr;
    const QDBusPendingReply<QDBusUnixFileDescriptor> reply = *answer;
    // Drop an inhibitor that arrives after the sleep has been allowed, because it would only delay the sleep.
    if (!reply.isError() && !mMaySleep)
        mInhibitor = reply.value();
}

void LogindPower::logindCame()
{
    takeInhibitor();
}

void LogindPower::logindWent()
{
    mInhibitor = {};
    mQuestion = nullptr;
    mMaySleep = false;
}

void LogindPower::send(PowerMessage message, void *argument)
{
    mCallback(mRefcon, 0, message, argument);
}

} // namespace platform
