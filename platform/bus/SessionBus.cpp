#include "platform/bus/SessionBus.h"

#include "platform/bus/BusNames.h"

#include <QDBusMessage>
#include <QDBusPendingReply>
#include <QUuid>

using namespace std::chrono_literals;

namespace platform {
namespace {

constexpr auto OwnerTimeout = 3000ms;
/// After one owner question without an answer the bus itself hangs: twenty more must not take a minute.
constexpr auto OwnerTimeoutOfHungBus = 100ms;

bool timedOut(const QDBusError &error)
{
    return error.type() == QDBusError::NoReply || error.type() == QDBusError::Timeout
        || error.type() == QDBusError::TimedOut;
}

QDBusMessage ownerQuestion(const QString &busName)
{
    auto question = QDBusMessage::createMethodCall(bus::Daemon, bus::DaemonPath, bus::Daemon,
                                                   QStringLiteral("GetNameOwner"));
    question.setAutoStartService(false);
    question << busName;
    return question;
}

} // namespace

SessionBus::SessionBus()
    : mConnection(QString())
    , mPatience(OwnerTimeout)
{
}

SessionBus::~SessionBus()
{
    close();
}

QDBusConnection SessionBus::connection()
{
    if (!mTried)
        open();
    return mConnection;
}

void SessionBus::reopenIfLost()
{
    if (mOpen && mConnection.isConnected())
        return;
    // The connection may be gone before the word of it has come through the run loop.
    reportLoss();
    open();
}

QString SessionBus::ownerOf(const QString &busName)
{
    QDBusPendingReply<QString> answer =
        connection().asyncCall(ownerQuestion(busName), static_cast<int>(mPatience.count()));
    answer.waitForFinished();
    mPatience = answer.isError() && timedOut(answer.error()) ? OwnerTimeoutOfHungBus : OwnerTimeout;
    return answer.isError() ? QString() : answer.value();
}

void SessionBus::open()
{
    mTried = true;
    close();
    mName = QStringLiteral("ks7-preferences-") + QUuid::createUuid().toString(QUuid::WithoutBraces);
    mConnection = QDBusConnection::connectToBus(QDBusConnection::SessionBus, mName);
    mOpen = mConnection.isConnected();
    if (!mOpen)
        return;
    mConnection.connect({}, bus::LocalPath, bus::LocalInterface, bus::LocalDisconnected, this,
                        SLOT(disconnected()));
    Q_EMIT opened();
}

void SessionBus::close()
{
    mOpen = false;
    // The connection is closed later, in Qt's own thread, and must not find this object half destroyed there.
    mConnection.disconnect({}, bus::LocalPath, bus::LocalInterface, bus::LocalDisconnected, this,
                           SLOT(disconnected()));
    mConnection = QDBusConnection(QString());
    if (!mName.isEmpty())
        QDBusConnection::disconnectFromBus(mName);
    mName.clear();
}

void SessionBus::disconnected()
{
    // A late word of a connection that has been replaced since says nothing about the new one.
    if (!mConnection.isConnected())
        reportLoss();
}

void SessionBus::reportLoss()
{
    if (std::exchange(mOpen, false))
        Q_EMIT lost();
}

} // namespace platform
