#include "platform/updates/PackageKitTransaction.h"

#include "platform/bus/BusCall.h"
#include "platform/bus/BusNames.h"

#include <QDBusError>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QLocale>

#include <limits>
#include <utility>

namespace platform {
namespace {

const QString PercentageProperty = QStringLiteral("Percentage");

// Exit codes and error codes of PackageKit's interface.
constexpr uint ExitSuccess = 1;
constexpr uint ExitCancelled = 3;
constexpr uint ErrorCancelled = 17;
constexpr uint ErrorNotAuthorized = 48;

// No timeout, because PackageKit's reply may have to wait until the user has typed a password.
constexpr int NoTimeout = std::numeric_limits<int>::max();

QStringList hints(bool interactive)
{
    const QString yes = QStringLiteral("true");
    const QString no = QStringLiteral("false");
    return {QStringLiteral("locale=") + QLocale().name() + QStringLiteral(".UTF-8"),
            QStringLiteral("background=") + (interactive ? no : yes),
            QStringLiteral("interactive=") + (interactive ? yes : no)};
}

/// Whether the error leaves the result unknown. saysPeerIsGone() does not fit: a service that was never
/// started (ServiceUnknown, NameHasNoOwner) is a failure.
bool leavesResultUnknown(const QDBusMessage &error)
{
    return timedOut(error) || QDBusError(error).type() == QDBusError::Disconnected;
}

QDBusMessage daemonCall(const QString &method, const QVariantList &arguments)
{
    auto call = QDBusMessage::createMethodCall(bus::Daemon, bus::DaemonPath, bus::Daemon, method);
    call.setArguments(arguments);
    return call;
}

bool saysNoPermission(const QString &errorName)
{
    return errorName.endsWith(QStringLiteral(".RefusedByPolicy"))
        || errorName.endsWith(QStringLiteral(".Denied"))
        || errorName == QDBusError::errorString(QDBusError::AccessDenied);
}

} // namespace

PackageId::PackageId(const QString &packageId)
    : id(packageId)
{
    const QStringList parts = packageId.split(QLatin1Char(';'));
    name = parts.value(0);
    version = parts.value(1);
    architecture = parts.value(2);
}

PackageKitTransaction::PackageKitTransaction(const QDBusConnection &bus, QObject *parent)
    : QObject(parent)
    , mBus(bus)
{
}

void PackageKitTransaction::run(const QString &method, const QVariantList &arguments, bool interactive)
{
    mMethod = method;
    mArguments = arguments;
    mInteractive = interactive;
    if (!mBus.isConnected()) {
        // Fail now: on a closed connection QtDBus would never finish a call.
        mErrorText = mBus.lastError().message();
        return finish(Outcome::Failed);
    }
    watchBus();
    findOwner();
}

// Asks for the service's owner before the transaction is created, because a later call of GetNameOwner could
// return another owner. The reply to CreateTransaction does not help: Qt 6.8 leaves QDBusMessage::service()
// of asynchronous replies empty.
void PackageKitTransaction::findOwner()
{
    ask(daemonCall(QStringLiteral("GetNameOwner"), {bus::PackageKit}), [this](const QDBusMessage &reply) {
        if (reply.errorName() == bus::NameHasNoOwner && !std::exchange(mActivated, true))
            activate();
        else if (reply.type() == QDBusMessage::ErrorMessage)
            failWith(reply);
        else
            create(reply.arguments().value(0).toString());
    });
}

void PackageKitTransaction::activate()
{
    ask(daemonCall(QStringLiteral("StartServiceByName"), {bus::PackageKit, 0U}),
        [this](const QDBusMessage &reply) {
            if (reply.type() == QDBusMessage::ErrorMessage)
                failWith(reply);
            else
                findOwner();
        });
}

void PackageKitTransaction::create(const QString &owner)
{
    watchService(owner);
    const auto call = QDBusMessage::createMethodCall(owner, bus::PackageKitPath, bus::PackageKit,
                                                     QStringLiteral("CreateTransaction"));
    ask(call, [this, owner](const QDBusMessage &reply) {
        const QString path = reply.arguments().value(0).value<QDBusObjectPath>().path();
        if (path.isEmpty())
            failWith(reply);
        else
            begin(owner, path);
    });
}

void PackageKitTransaction::begin(const QString &owner, const QString &path)
{
    // Accept signals of the owner only, because any program may send such signals on the system bus.
    listen(owner, path);
    auto setHints =
        QDBusMessage::createMethodCall(owner, path, bus::PackageKitTransaction, QStringLiteral("SetHints"));
    setHints << hints(mInteractive);
    mBus.asyncCall(setHints);
    auto work = QDBusMessage::createMethodCall(owner, path, bus::PackageKitTransaction, mMethod);
    work.setArguments(mArguments);
    work.setInteractiveAuthorizationAllowed(mInteractive);
    call(work);
}

void PackageKitTransaction::listen(const QString &service, const QString &path)
{
    mBus.connect(service, path, bus::PackageKitTransaction, QStringLiteral("Package"), this,
                 SLOT(onPackage(uint, QString, QString)));
    mBus.connect(service, path, bus::PackageKitTransaction, QStringLiteral("ErrorCode"), this,
                 SLOT(onErrorCode(uint, QString)));
    mBus.connect(service, path, bus::PackageKitTransaction, QStringLiteral("Finished"), this,
                 SLOT(onFinished(uint, uint)));
    mBus.connect(service, path, bus::Properties, QStringLiteral("PropertiesChanged"), this,
                 SLOT(onPropertiesChanged(QString, QVariantMap, QStringList)));
}

void PackageKitTransaction::watchService(const QString &service)
{
    auto *watcher = new QDBusServiceWatcher(service, mBus, QDBusServiceWatcher::WatchForUnregistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceUnregistered, this,
            [this] { lose(QStringLiteral("the package service went away")); });
}

void PackageKitTransaction::watchBus()
{
    // Subscribe to Disconnected, because QDBusServiceWatcher reports nothing when the connection breaks.
    mBus.connect({}, bus::LocalPath, bus::LocalInterface, bus::LocalDisconnected, this,
                 SLOT(onDisconnected()));
}

void PackageKitTransaction::ask(const QDBusMessage &question, Answer answer)
{
    auto *watcher = new QDBusPendingCallWatcher(mBus.asyncCall(question), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, answer = std::move(answer)] {
        watcher->deleteLater();
        // Ignore replies after the end: the loss of the bus or of the owner has already been reported.
        if (!mFinished)
            answer(watcher->reply());
    });
}

void PackageKitTransaction::call(const QDBusMessage &message)
{
    auto *watcher = new QDBusPendingCallWatcher(mBus.asyncCall(message, NoTimeout), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        if (watcher->isError())
            failWith(watcher->reply());
    });
}

void PackageKitTransaction::failWith(const QDBusMessage &error)
{
    if (leavesResultUnknown(error))
        return lose(error.errorMessage());
    mErrorText = error.errorMessage();
    finish(saysNoPermission(error.errorName()) ? Outcome::Refused : Outcome::Failed);
}

void PackageKitTransaction::lose(const QString &reason)
{
    if (mFinished)
        return;
    mErrorText = reason;
    finish(Outcome::Lost);
}

void PackageKitTransaction::onDisconnected()
{
    lose(QStringLiteral("the system bus went away"));
}

void PackageKitTransaction::onPackage(uint info, const QString &id, const QString &)
{
    // PackageKit may put the urgency of an update into the upper 16 bits, so remove them.
    constexpr uint InfoMask = 0xFFFF;
    mPackages.push_back({info & InfoMask, PackageId(id)});
}

void PackageKitTransaction::onErrorCode(uint code, const QString &details)
{
    mErrorCode = code;
    mErrorText = details;
}

void PackageKitTransaction::onPropertiesChanged(const QString &, const QVariantMap &changed,
                                                const QStringList &)
{
    const auto percentage = changed.constFind(PercentageProperty);
    if (percentage != changed.constEnd() && !mFinished)
        Q_EMIT progressed(percentage->toInt());
}

void PackageKitTransaction::onFinished(uint exit, uint)
{
    if (exit == ExitSuccess)
        return finish(Outcome::Done);
    const bool refused =
        exit == ExitCancelled || mErrorCode == ErrorCancelled || mErrorCode == ErrorNotAuthorized;
    finish(refused ? Outcome::Refused : Outcome::Failed);
}

void PackageKitTransaction::finish(Outcome outcome)
{
    if (mFinished)
        return;
    mFinished = true;
    Q_EMIT finished(outcome);
}

} // namespace platform
