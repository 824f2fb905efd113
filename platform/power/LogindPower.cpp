#include "platform/power/LogindPower.h"

#include "platform/bus/BusNames.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>

namespace platform {
namespace {

/// Answers that power management is there; logind needs no handle of its own.
constexpr std::uint32_t RootPort = 1;
const QString PowerConnection = QStringLiteral("ks7-preferences-power");

QDBusMessage inhibitQuestion()
{
    auto question = QDBusMessage::createMethodCall(bus::Logind, bus::LogindPath, bus::LogindManager,
                                                   QStringLiteral("Inhibit"));
    question.setAutoStartService(false);
    question << QStringLiteral("sleep") << QStringLiteral("KS-7")
             << QStringLiteral("The camera's picture is let go of first") << QStringLiteral("delay");
    return question;
}

} // namespace

LogindPower::LogindPower()
    : mBus(QString())
{
}

LogindPower::~LogindPower()
{
    // The connection stays: Qt would close it in a thread of its own, with answers still on their way.
    mBus.disconnect(bus::Logind, bus::LogindPath, bus::LogindManager, bus::PrepareForSleep, this,
                    SLOT(prepareForSleep(bool)));
}

std::uint32_t LogindPower::registerForSystemPower(void *refcon, Callback callback)
{
    mRefcon = refcon;
    mCallback = callback;
    mBus = QDBusConnection::connectToBus(QDBusConnection::SystemBus, PowerConnection);
    if (!mBus.isConnected())
        return 0;
    mBus.connect(bus::Logind, bus::LogindPath, bus::LogindManager, bus::PrepareForSleep, this,
                 SLOT(prepareForSleep(bool)));
    mWatcher = std::make_unique<QDBusServiceWatcher>(bus::Logind, mBus);
    connect(mWatcher.get(), &QDBusServiceWatcher::serviceRegistered, this, &LogindPower::logindCame);
    connect(mWatcher.get(), &QDBusServiceWatcher::serviceUnregistered, this, &LogindPower::logindWent);
    takeInhibitor();
    return RootPort;
}

void LogindPower::allowPowerChange(std::uint32_t, void *messageArgument)
{
    // Late answers to earlier messages let nothing sleep.
    if (!mToken || messageArgument != mToken.get())
        return;
    mMaySleep = true;
    mInhibitor = {};
}

void LogindPower::prepareForSleep(bool start)
{
    if (start) {
        mMaySleep = false;
        // The old one goes after the new one is there: their addresses differ.
        auto token = std::make_unique<char>();
        mToken.swap(token);
        send(kIOMessageSystemWillSleep, mToken.get());
        return;
    }
    mMaySleep = false;
    takeInhibitor();
    send(kIOMessageSystemHasPoweredOn, nullptr);
}

void LogindPower::takeInhibitor()
{
    if (mInhibitor.isValid() || mQuestion)
        return;
    mQuestion = new QDBusPendingCallWatcher(mBus.asyncCall(inhibitQuestion()), this);
    connect(mQuestion, &QDBusPendingCallWatcher::finished, this, &LogindPower::inhibited);
}

void LogindPower::inhibited(QDBusPendingCallWatcher *answer)
{
    answer->deleteLater();
    if (answer != mQuestion)
        return;
    mQuestion = nullptr;
    const QDBusPendingReply<QDBusUnixFileDescriptor> reply = *answer;
    // An answer that comes when the machine already may sleep would only hold it up.
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
