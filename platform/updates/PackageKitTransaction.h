#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

#include <functional>
#include <vector>

namespace platform {

/// A package ID of PackageKit: "name;version;architecture;origin".
struct PackageId {
    explicit PackageId(const QString &id);

    QString id;
    QString name;
    QString version;
    QString architecture;
};

/// One PackageKit transaction, from creation to end. All calls are asynchronous, and finished() is emitted
/// exactly once. All calls go to the unique owner that the service's name has at the start; only that owner's
/// signals count.
class PackageKitTransaction final : public QObject {
    Q_OBJECT
public:
    /// Lost means that the service or the bus went away before the end, so that the result is unknown.
    enum class Outcome { Done, Refused, Failed, Lost };
    /// The values of PackageKit's package info that are used here.
    enum Info : unsigned { Installed = 1, Blocked = 9 };
    struct Package {
        unsigned info;
        PackageId id;
    };

    explicit PackageKitTransaction(const QDBusConnection &bus, QObject *parent = nullptr);

    /// Creates a transaction and calls its `method`. Call run() only once. If `interactive` is true, the
    /// service may ask for a password.
    void run(const QString &method, const QVariantList &arguments, bool interactive);
    [[nodiscard]] const std::vector<Package> &packages() const { return mPackages; }
    /// The service's reason if the outcome is Refused or Failed; if it is Lost, a technical text for the log.
    /// May be empty.
    [[nodiscard]] QString errorText() const { return mErrorText; }

Q_SIGNALS:
    /// Emitted with the progress from 0 to 100. Any other number means that the progress is unknown.
    void progressed(int percentage);
    void finished(platform::PackageKitTransaction::Outcome outcome);

private Q_SLOTS:
    void onPackage(uint info, const QString &id, const QString &summary);
    void onErrorCode(uint code, const QString &details);
    void onPropertiesChanged(const QString &interface, const QVariantMap &changed,
                             const QStringList &invalid);
    void onFinished(uint exit, uint runtime);
    void onDisconnected();

private:
    using Answer = std::function<void(const QDBusMessage &reply)>;

    void findOwner();
    void activate();
    void create(const QString &owner);
    void begin(const QString &owner, const QString &path);
    void listen(const QString &service, const QString &path);
    void watchService(const QString &service);
    void watchBus();
    void ask(const QDBusMessage &question, Answer answer);
    void call(const QDBusMessage &message);
    void failWith(const QDBusMessage &error);
    void lose(const QString &reason);
    void finish(Outcome outcome);

    QDBusConnection mBus;
    QString mMethod;
    QVariantList mArguments;
    bool mInteractive = false;
    /// Whether this transaction has asked the bus to start the service. If the service's name still has no
    /// owner after that, the transaction fails.
    bool mActivated = false;
    std::vector<Package> mPackages;
    uint mErrorCode = 0;
    QString mErrorText;
    bool mFinished = false;
};

} // namespace platform
