#include "platform/bus/BusConnection.h"

#include "platform/bus/BusCall.h"
#include "platform/bus/BusHandshake.h"
#include "platform/bus/BusNames.h"

#include <QSocketNotifier>
#include <QStringList>

#include <limits>
#include <utility>

using namespace std::chrono_literals;

namespace platform {
namespace {

/// Intervals between attempts to open the bus. Each is 1.5 times the previous one; the sum is a minute.
constexpr auto FirstInterval = 100ms;
constexpr auto LongestInterval = 20s;

QStringList &namesInUse()
{
    static QStringList names;
    return names;
}

/// Returns the first connection name that no BusConnection uses. A destroyed BusConnection leaves its
/// connection open, and the next one with this name reuses it.
QString takeName(QDBusConnection::BusType type, const QString &owner)
{
    const QString kind = owner
        + (type == QDBusConnection::SystemBus ? QStringLiteral("-system-%1") : QStringLiteral("-session-%1"));
    int number = 1;
    while (namesInUse().contains(kind.arg(number)))
        ++number;
    namesInUse().append(kind.arg(number));
    return kind.arg(number);
}

QDBusMessage questionToBus(const QString &method)
{
    return QDBusMessage::createMethodCall(bus::Daemon, bus::DaemonPath, bus::Daemon, method);
}

} // namespace

BusConnection::BusConnection(QDBusConnection::BusType type, const QString &owner)
    : mType(type)
    , mName(takeName(type, owner))
    , mConnection(QString())
    , mInterval(FirstInterval)
{
    mNextTry.setSingleShot(true);
    connect(&mNextTry, &QTimer::timeout, this, &BusConnection::openInBackground);
}

BusConnection::~BusConnection()
{
    stopListening();
    leaveBus();
    namesInUse().removeOne(mName);
}

QDBusConnection BusConnection::connection()
{
    if (!mTried)
        tryToOpen(Opening::Blocking);
    return mConnection;
}

void BusConnection::reopenIfLost()
{
    // Check the connection's state. Its Disconnected signal may still be queued, so a loss may be unreported.
    if (!isOpen())
        reportLoss();
    if (!isOpen())
        tryToOpen(Opening::Blocking);
}

void BusConnection::openInBackground()
{
    if (!isOpen())
        tryToOpen(Opening::NonBlocking);
}

QString BusConnection::ownerOf(const QString &busName)
{
    if (isHung())
        return {};
    auto question = questionToBus(QStringLiteral("GetNameOwner"));
    question << busName;
    const QDBusMessage reply = callAndWait(connection(), question);
    if (timedOut(reply))
        mSignOfLife =
            mConnection.asyncCall(questionToBus(QStringLiteral("GetId")), std::numeric_limits<int>::max());
    return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0).toString() : QString();
}

void BusConnection::tryToOpen(Opening opening)
{
    mTried = true;
    stopListening();
    if (!mHandshake)
        mHandshake = BusHandshake::shared(mType);
    const auto outcome = opening == Opening::Blocking ? mHandshake->wait() : mHandshake->look();
    if (outcome == BusHandshake::Outcome::Silent) {
        mWasAway = true;
        listenForAnswer();
        return;
    }
    mHandshake.reset();
    BusHandshake::forget(mType);
    if (outcome == BusHandshake::Outcome::Answered)
        connectToBus();
    if (!isOpen())
        searchOn();
}

void BusConnection::connectToBus()
{
    leaveBus();
    // Remove a broken connection: QDBusConnection::connectToBus() would return it again without reopening it.
    if (!QDBusConnection(mName).isConnected())
        QDBusConnection::disconnectFromBus(mName);
    mConnection = QDBusConnection::connectToBus(mType, mName);
    mOpen = mConnection.isConnected();
    if (!mOpen)
        return;
    endSearch();
    mConnection.connect({}, bus::LocalPath, bus::LocalInterface, bus::LocalDisconnected, this,
                        SLOT(disconnected()));
    const bool again = std::exchange(mWasAway, false);
    Q_EMIT opened();
    if (again)
        Q_EMIT foundAgain();
}

void BusConnection::leaveBus()
{
    mOpen = false;
    mSignOfLife.reset();
    mConnection.disconnect({}, bus::LocalPath, bus::LocalInterface, bus::LocalDisconnected, this,
                           SLOT(disconnected()));
    mConnection = QDBusConnection(QString());
}

void BusConnection::listenForAnswer()
{
    mListener = new QSocketNotifier(mHandshake->socket(), QSocketNotifier::Read, this);
    connect(mListener, &QSocketNotifier::activated, this, &BusConnection::openInBackground);
}

void BusConnection::stopListening()
{
    if (!mListener)
        return;
    // Use deleteLater(), because the notifier may be the sender of the signal that is being handled.
    mListener->setEnabled(false);
    std::exchange(mListener, nullptr)->deleteLater();
}

void BusConnection::searchOn()
{
    mWasAway = true;
    if (mNextTry.isActive())
        return;
    if (mInterval > LongestInterval)
        return endSearch();
    mNextTry.start(mInterval);
    mInterval += mInterval / 2;
}

void BusConnection::endSearch()
{
    mNextTry.stop();
    mInterval = FirstInterval;
}

void BusConnection::disconnected()
{
    // A late signal may belong to a connection that has been replaced, so check the present one.
    if (isLostUnreported())
        reportLoss();
}

void BusConnection::reportLoss()
{
    if (!std::exchange(mOpen, false))
        return;
    searchOn();
    Q_EMIT lost();
}

} // namespace platform
