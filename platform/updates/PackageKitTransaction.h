#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

#include <vector>

namespace platform {

/// A package as the package service names it: "name;version;architecture;origin".
struct PackageId {
    explicit PackageId(const QString &id);

    QString id;
    QString name;
    QString version;
    QString architecture;
};

/// One piece of work of the package service, from its creation to its end. Nothing here waits: every answer
/// comes by the run loop, and finished() comes exactly once for each run().
class PackageKitTransaction final : public QObject {
    Q_OBJECT
public:
    /// Lost: the service or the bus went away in the middle, and nobody can tell what became of it.
    enum class Outcome { Done, Refused, Failed, Lost };
    /// What the service says about a package of its answer; only those that matter here.
    enum Info : unsigned { Installed = 1, Blocked = 9 };
    struct Package {
        unsigned info;
        PackageId id;
    };

    explicit PackageKitTransaction(const QDBusConnection &bus, QObject *parent = nullptr);

    /// Starts `method` of a new transaction. `interactive` lets the service ask the person for a password.
    void run(const QString &method, const QVariantList &arguments, bool interactive);
    [[nodiscard]] const std::vector<Package> &packages() const { return mPackages; }
    /// Why it did not end with Outcome::Done, in the words of the service or, if Lost, of the bus; may be
    /// empty.
    [[nodiscard]] QString errorText() const { return mErrorText; }

Q_SIGNALS:
    /// 0 to 100; another number when the service cannot tell.
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
    void begin(const QDBusMessage &created, const QString &method, const QVariantList &arguments,
               bool interactive);
    void listen(const QString &service, const QString &path);
    void watchService(const QString &service);
    void watchBus();
    void call(const QDBusMessage &message);
    void failWith(const QDBusMessage &error);
    void lose(const QString &reason);
    void finish(Outcome outcome);

    QDBusConnection mBus;
    std::vector<Package> mPackages;
    uint mErrorCode = 0;
    QString mErrorText;
    bool mFinished = false;
};

} // namespace platform
