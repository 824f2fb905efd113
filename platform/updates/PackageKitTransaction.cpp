#include "platform/updates/PackageKitTransaction.h"

#include "platform/bus/BusNames.h"

#include <QDBusError>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QLocale>

#include <limits>

namespace platform {
namespace {

const QString ServicePath = QStringLiteral("/org/freedesktop/PackageKit");
const QString TransactionInterface = bus::PackageKit + QStringLiteral(".Transaction");
const QString PercentageProperty = QStringLiteral("Percentage");

// The numbers of the package service's interface.
constexpr uint ExitSuccess = 1;
constexpr uint ExitCancelled = 3;
constexpr uint ErrorCancelled = 17;
constexpr uint ErrorNotAuthorized = 48;

// A person reads and types before a call that needs a password is answered.
constexpr int AsLongAsItTakes = std::numeric_limits<int>::max();

QStringList hints(bool interactive)
{
    const QString yes = QStringLiteral("true");
    const QString no = QStringLiteral("false");
    return {QStringLiteral("locale=") + QLocale().name() + QStringLiteral(".UTF-8"),
            QStringLiteral("background=") + (interactive ? no : yes),
            QStringLiteral("interactive=") + (interactive ? yes : no)};
}

/// The bus answers so in the place of a service that has gone.
bool saysServiceIsGone(const QString &errorName)
{
    return errorName == QDBusError::errorString(QDBusError::NoReply)
        || errorName == QDBusError::errorString(QDBusError::Disconnected);
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
    if (!mBus.isConnected()) {
        // A call on a bus that is not there never comes to an end.
        mErrorText = mBus.lastError().message();
        return finish(Outcome::Failed);
    }
    watchBus();
    const auto create = QDBusMessage::createMethodCall(bus::PackageKit, ServicePath, bus::PackageKit,
                                                       QStringLiteral("CreateTransaction"));
    auto *watcher = new QDBusPendingCallWatcher(mBus.asyncCall(create), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, watcher, method, arguments, interactive] {
                watcher->deleteLater();
                const QDBusMessage reply = watcher->reply();
                if (reply.type() == QDBusMessage::ErrorMessage)
                    failWith(reply);
                else
                    begin(reply, method, arguments, interactive);
            });
}

void PackageKitTransaction::begin(const QDBusMessage &created, const QString &method,
                                  const QVariantList &arguments, bool interactive)
{
    const QString path = created.arguments().value(0).value<QDBusObjectPath>().path();
    if (path.isEmpty())
        return failWith(created);
    // Signals count from the owner that made the transaction only: others could send them on a system bus.
    const QString service = created.service();
    listen(service, path);
    watchService(service);
    auto setHints =
        QDBusMessage::createMethodCall(service, path, TransactionInterface, QStringLiteral("SetHints"));
    setHints << hints(interactive);
    mBus.asyncCall(setHints);
    auto work = QDBusMessage::createMethodCall(service, path, TransactionInterface, method);
    work.setArguments(arguments);
    work.setInteractiveAuthorizationAllowed(interactive);
    call(work);
}

void PackageKitTransaction::listen(const QString &service, const QString &path)
{
    mBus.connect(service, path, TransactionInterface, QStringLiteral("Package"), this,
                 SLOT(onPackage(uint, QString, QString)));
    mBus.connect(service, path, TransactionInterface, QStringLiteral("ErrorCode"), this,
                 SLOT(onErrorCode(uint, QString)));
    mBus.connect(service, path, TransactionInterface, QStringLiteral("Finished"), this,
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
    // A bus that goes takes the watch over the service with it.
    mBus.connect({}, bus::LocalPath, bus::LocalInterface, bus::LocalDisconnected, this,
                 SLOT(onDisconnected()));
}

void PackageKitTransaction::call(const QDBusMessage &message)
{
    auto *watcher = new QDBusPendingCallWatcher(mBus.asyncCall(message, AsLongAsItTakes), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        if (watcher->isError())
            failWith(watcher->reply());
    });
}

void PackageKitTransaction::failWith(const QDBusMessage &error)
{
    if (saysServiceIsGone(error.errorName()))
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
    // The upper half may hold the urgency of an update.
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
