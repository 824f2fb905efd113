#include "platform/power/LogindSession.h"

#include "platform/bus/BusConnection.h"
#include "platform/bus/BusNames.h"
#include "platform/desktop/Workspace.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>

namespace platform {
namespace {

const QString PropertiesChanged = QStringLiteral("PropertiesChanged");
const QString Active = QStringLiteral("Active");

QDBusMessage managerQuestion(const QString &method, const QVariant &argument)
{
    auto question = QDBusMessage::createMethodCall(bus::Logind, bus::LogindPath, bus::LogindManager, method);
    question.setAutoStartService(false);
    question << argument;
    return question;
}

QDBusMessage propertyQuestion(const QString &path, const QString &interface, const QString &property)
{
    auto question = QDBusMessage::createMethodCall(bus::Logind, path, bus::Properties, QStringLiteral("Get"));
    question.setAutoStartService(false);
    question << interface << property;
    return question;
}

/// Returns the object path in a reply; empty if the reply contains none.
QString pathOf(const QDBusMessage &answer)
{
    const QVariant value = answer.arguments().value(0);
    return value.canConvert<QDBusObjectPath>() ? value.value<QDBusObjectPath>().path() : QString();
}

/// Returns the value of a property in a reply; invalid if the reply contains none.
QVariant propertyOf(const QDBusMessage &answer)
{
    const QVariant value = answer.arguments().value(0);
    return value.canConvert<QDBusVariant>() ? value.value<QDBusVariant>().variant() : QVariant();
}

/// Returns the object path from logind's user property Display, which is a pair of session name and object
/// path. If the name is empty, the user has no graphical session and the result is empty.
QString displayPathOf(const QDBusMessage &answer)
{
    const QVariant value = propertyOf(answer);
    if (!value.canConvert<QDBusArgument>())
        return {};
    const auto display = value.value<QDBusArgument>();
    if (display.currentSignature() != QLatin1String("(so)"))
        return {};
    QString name;
    QDBusObjectPath path;
    display.beginStructure();
    display >> name >> path;
    display.endStructure();
    return name.isEmpty() ? QString() : path.path();
}

} // namespace

LogindSession::LogindSession(std::shared_ptr<BusConnection> bus)
    : mBus(std::move(bus))
{
}

LogindSession::~LogindSession()
{
    unwatchSession();
}

void LogindSession::addObserver(const void *observer, const QString &name, NotificationHandler handler)
{
    mObservers.addObserver(observer, name, std::move(handler));
    if (!mStarted)
        start();
    // BusConnection stops its search for a missing bus after about a minute. Each showing of the pane adds
    // observers, which is a good moment to search again.
    mBus->openInBackground();
}

void LogindSession::removeObserver(const void *observer, const QString &name)
{
    mObservers.removeObserver(observer, name);
}

void LogindSession::postNotificationName(const QString &name, const void *object, const QVariantMap &userInfo)
{
    mObservers.postNotificationName(name, object, userInfo);
}

void LogindSession::start()
{
    mStarted = true;
    connect(mBus.get(), &BusConnection::opened, this, &LogindSession::subscribe);
    if (mBus->isOpen())
        subscribe();
}

void LogindSession::subscribe()
{
    // Ask again whenever logind starts: changes that happened while it was down were never announced.
    mWatcher = std::make_unique<QDBusServiceWatcher>(bus::Logind, mBus->connection(),
                                                     QDBusServiceWatcher::WatchForRegistration);
    connect(mWatcher.get(), &QDBusServiceWatcher::serviceRegistered, this, &LogindSession::findSession);
    findSession();
}

void LogindSession::findSession()
{
    const QString session = qEnvironmentVariable("XDG_SESSION_ID");
    if (session.isEmpty()) {
        findSessionOfProcess();
        return;
    }
    ask(managerQuestion(QStringLiteral("GetSession"), session), [this](const QDBusMessage &answer) {
        const QString path = pathOf(answer);
        if (path.isEmpty())
            findSessionOfProcess();
        else
            watchSession(path);
    });
}

void LogindSession::findSessionOfProcess()
{
    const auto process = static_cast<uint>(QCoreApplication::applicationPid());
    ask(managerQuestion(QStringLiteral("GetSessionByPID"), process), [this](const QDBusMessage &answer) {
        const QString path = pathOf(answer);
        if (path.isEmpty())
            findDisplayOfUser();
        else
            watchSession(path);
    });
}

// Watches the user's graphical session if logind knows no session for this process, for example because
// systemd --user has started it.
void LogindSession::findDisplayOfUser()
{
    const QString user = bus::LogindPath + QStringLiteral("/user/self");
    ask(propertyQuestion(user, bus::LogindUser, QStringLiteral("Display")),
        [this](const QDBusMessage &answer) {
            const QString path = displayPathOf(answer);
            if (!path.isEmpty())
                watchSession(path);
        });
}

void LogindSession::watchSession(const QString &path)
{
    unwatchSession();
    mSessionPath = path;
    mBus->connection().connect(bus::Logind, path, bus::Properties, PropertiesChanged, this,
                               SLOT(propertiesChanged(QString, QVariantMap, QStringList)));
    readActive();
}

void LogindSession::unwatchSession()
{
    if (!mSessionPath.isEmpty() && mBus->isOpen())
        mBus->connection().disconnect(bus::Logind, mSessionPath, bus::Properties, PropertiesChanged, this,
                                      SLOT(propertiesChanged(QString, QVariantMap, QStringList)));
}

void LogindSession::readActive()
{
    ask(propertyQuestion(mSessionPath, bus::LogindSession, Active), [this](const QDBusMessage &answer) {
        const QVariant active = propertyOf(answer);
        if (active.userType() == QMetaType::Bool)
            setActive(active.toBool());
    });
}

void LogindSession::propertiesChanged(const QString &interface, const QVariantMap &changed,
                                      const QStringList &invalid)
{
    if (interface != bus::LogindSession)
        return;
    const QVariant active = changed.value(Active);
    const bool isTold = active.userType() == QMetaType::Bool;
    if (!isTold && !invalid.contains(Active))
        return;
    // Observers assume that the session is active at first, so report a loss even before the first reply.
    mActive = mActive.value_or(true);
    if (isTold)
        setActive(active.toBool());
    else
        readActive();
}

void LogindSession::setActive(bool active)
{
    const auto before = std::exchange(mActive, active);
    if (!before || *before == active)
        return;
    mObservers.postNotificationName(active ? NSWorkspaceSessionDidBecomeActiveNotification
                                           : NSWorkspaceSessionDidResignActiveNotification);
}

void LogindSession::ask(const QDBusMessage &question, Answer answer)
{
    // Without an open connection, send no call: QtDBus would never finish it.
    if (!mBus->isOpen())
        return;
    auto *watcher = new QDBusPendingCallWatcher(mBus->connection().asyncCall(question), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, answer = std::move(answer)] {
        watcher->deleteLater();
        const QDBusPendingReply<> reply = *watcher;
        answer(reply.isError() ? QDBusMessage() : reply.reply());
    });
}

} // namespace platform
