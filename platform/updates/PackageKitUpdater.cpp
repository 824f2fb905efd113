#include "platform/updates/PackageKitUpdater.h"

#include "platform/LogCategory.h"
#include "platform/updates/PackageKitTransaction.h"
#include "platform/updates/UpdateState.h"

#include <QFileInfo>
#include <QTimer>

#include <algorithm>
#include <dlfcn.h>
#include <optional>

namespace platform {
namespace {

// A connection of the pane's own: the one of the host is not ours to use.
const QString ConnectionName = QStringLiteral("com.orvex.KS7.updates");

// Bit fields of the package service's interface.
constexpr qulonglong FilterNone = 1ULL << 1;
constexpr qulonglong FilterInstalled = 1ULL << 2;
constexpr qulonglong OnlyTrusted = 1ULL << 1;

/// Asks, offers and installs; everything is started by a run-loop event and none of it waits.
class PackageKitUpdater final : public QObject, public KS7SUUpdater {
public:
    PackageKitUpdater(UpdaterOptions circumstances, std::shared_ptr<UpdateOffer> offer)
        : mCircumstances(std::move(circumstances))
        , mMemory(mCircumstances.memoryFile)
        , mSharedOffer(std::move(offer))
        , mOffer(*mSharedOffer)
    {
        connect(&mOffer, &UpdateOffer::installChosen, this, [this] { install(); });
        connect(&mOffer, &UpdateOffer::laterChosen, this, [this] { mOffer.withdraw(); });
        connect(&mOffer, &UpdateOffer::skipChosen, this, [this] { skip(); });
    }

    void applicationDidFinishLaunching() override
    {
        // Showing the pane goes first; even the first word to the bus waits until it is done.
        QTimer::singleShot(0, this, [this] { askOnceADay(); });
    }

private:
    using Transaction = PackageKitTransaction;
    using Finished = std::function<void(Transaction &, Transaction::Outcome)>;

    void askOnceADay()
    {
        const QDateTime now = mCircumstances.now();
        if (mBusy || mOffer.stage() != UpdateOffer::Stage::None || mMemory.askedWithinADay(now))
            return;
        mMemory.noteAsked(now);
        findOwnPackage();
    }

    void findOwnPackage()
    {
        const QVariantList arguments{FilterInstalled, QStringList{mCircumstances.ownFile}};
        run(QStringLiteral("SearchFiles"), arguments, [this](Transaction &transaction, auto outcome) {
            if (outcome != Transaction::Outcome::Done)
                return logFailure(transaction);
            const auto &found = transaction.packages();
            const auto owner = std::find_if(found.begin(), found.end(), [](const auto &package) {
                return package.info == Transaction::Installed;
            });
            if (owner != found.end())
                findUpdate(owner->id);
        });
    }

    void findUpdate(const PackageId &own)
    {
        run(QStringLiteral("GetUpdates"), {FilterNone}, [this, own](Transaction &transaction, auto outcome) {
            if (outcome != Transaction::Outcome::Done)
                return logFailure(transaction);
            const auto &found = transaction.packages();
            const auto update = std::find_if(found.begin(), found.end(), [&own](const auto &package) {
                return package.info != Transaction::Blocked && package.id.name == own.name
                    && package.id.architecture == own.architecture && package.id.version != own.version;
            });
            if (update == found.end() || mMemory.isSkipped(update->id.version))
                return;
            mUpdate = update->id;
            mOffer.offer(mUpdate->version);
        });
    }

    void install()
    {
        if (mBusy || !mUpdate)
            return;
        mOffer.progress(UpdateOffer::UnknownPercentage);
        const QVariantList arguments{OnlyTrusted, QStringList{mUpdate->id}};
        run(QStringLiteral("UpdatePackages"), arguments,
            [this](Transaction &transaction, auto outcome) { installed(transaction, outcome); });
    }

    void installed(const Transaction &transaction, Transaction::Outcome outcome)
    {
        switch (outcome) {
        case Transaction::Outcome::Done:
            return mOffer.succeed();
        case Transaction::Outcome::Refused:
            return mOffer.offer(mUpdate->version);
        case Transaction::Outcome::Failed:
            return mOffer.fail(transaction.errorText());
        case Transaction::Outcome::Lost:
            // What the bus says of it helps nobody who reads it in a window.
            logFailure(transaction);
            mOffer.fail({});
        }
    }

    void skip()
    {
        if (!mUpdate)
            return;
        mMemory.skip(mUpdate->version);
        mOffer.withdraw();
    }

    void run(const QString &method, const QVariantList &arguments, const Finished &finished)
    {
        const bool installs = mOffer.stage() == UpdateOffer::Stage::Installing;
        auto *transaction = new Transaction(bus(), this);
        mBusy = true;
        connect(transaction, &Transaction::finished, this, [this, transaction, finished](auto outcome) {
            mBusy = false;
            transaction->deleteLater();
            finished(*transaction, outcome);
        });
        if (installs)
            connect(transaction, &Transaction::progressed, &mOffer, &UpdateOffer::progress);
        transaction->run(method, arguments, installs);
    }

    static QDBusConnection bus()
    {
        // A connection that has broken stays broken under its name.
        if (!QDBusConnection(ConnectionName).isConnected())
            QDBusConnection::disconnectFromBus(ConnectionName);
        return QDBusConnection::connectToBus(QDBusConnection::SystemBus, ConnectionName);
    }

    static void logFailure(const Transaction &transaction)
    {
        qCInfo(KS7_PLATFORM, "No answer about updates: %s", qUtf8Printable(transaction.errorText()));
    }

    UpdaterOptions mCircumstances;
    UpdateState mMemory;
    std::shared_ptr<UpdateOffer> mSharedOffer;
    UpdateOffer &mOffer;
    std::optional<PackageId> mUpdate;
    bool mBusy = false;
};

class PackageKitFramework final : public SoftwareUpdateFramework {
public:
    explicit PackageKitFramework(UpdaterOptions circumstances)
        : mCircumstances(std::move(circumstances))
    {
    }

    // The one bundle whose code this is has the one package that is looked after.
    std::shared_ptr<KS7SUUpdater> updaterForBundle(const std::shared_ptr<Bundle> &bundle) override
    {
        if (!mUpdater)
            mUpdater = initForBundle(bundle);
        return mUpdater;
    }

    std::shared_ptr<KS7SUUpdater> initForBundle(const std::shared_ptr<Bundle> &) override
    {
        return std::make_shared<PackageKitUpdater>(mCircumstances, mOffer);
    }

    UpdateOffer &offer() override { return *mOffer; }

private:
    UpdaterOptions mCircumstances;
    std::shared_ptr<UpdateOffer> mOffer = std::make_shared<UpdateOffer>();
    std::shared_ptr<KS7SUUpdater> mUpdater;
};

} // namespace

QString ownCodeFile()
{
    Dl_info info{};
    if (dladdr(reinterpret_cast<const void *>(&ownCodeFile), &info) == 0 || !info.dli_fname)
        return {};
    return QFileInfo(QString::fromLocal8Bit(info.dli_fname)).canonicalFilePath();
}

std::shared_ptr<SoftwareUpdateFramework> makePackageKitFramework(UpdaterOptions circumstances)
{
    return std::make_shared<PackageKitFramework>(std::move(circumstances));
}

std::shared_ptr<SoftwareUpdateFramework> makePackageKitFramework()
{
    return makePackageKitFramework(
        {ownCodeFile(), UpdateState::defaultFile(), [] { return QDateTime::currentDateTimeUtc(); }});
}

} // namespace platform
