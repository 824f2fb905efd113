#include "platform/updates/PackageKitUpdater.h"

#include "platform/base/LogCategory.h"
#include "platform/bus/BusConnection.h"
#include "platform/updates/PackageKitTransaction.h"
#include "platform/updates/UpdateState.h"

#include <QFileInfo>
#include <QTimer>

#include <algorithm>
#include <dlfcn.h>
#include <optional>
#include <utility>

namespace platform {
namespace {

// Bits of PackageKit's filters and of its transaction flags.
constexpr qulonglong FilterNone = 1ULL << 1;
constexpr qulonglong FilterInstalled = 1ULL << 2;
constexpr qulonglong OnlyTrusted = 1ULL << 1;

/// Looks for an update, offers it and installs it. All calls are asynchronous. Only the start of an
/// installation may block, while it opens the bus.
class PackageKitUpdater final : public QObject, public SoftwareUpdater {
public:
    PackageKitUpdater(std::shared_ptr<BusConnection> bus, UpdaterOptions options,
                      std::shared_ptr<UpdateOffer> offer)
        : mBus(std::move(bus))
        , mOptions(std::move(options))
        , mState(mOptions.stateFile)
        , mSharedOffer(std::move(offer))
        , mOffer(*mSharedOffer)
    {
        connect(mBus.get(), &BusConnection::opened, this, [this] { askIfDue(); });
        connect(&mOffer, &UpdateOffer::installChosen, this, [this] { install(); });
        connect(&mOffer, &UpdateOffer::laterChosen, this, [this] { mOffer.withdraw(); });
        connect(&mOffer, &UpdateOffer::skipChosen, this, [this] { skip(); });
    }

    void applicationDidFinishLaunching() override
    {
        mDue = true;
        // Queue the search, so that the pane is shown first. openInBackground() does not block either.
        QTimer::singleShot(0, this, [this] {
            mBus->openInBackground();
            askIfDue();
        });
    }

private:
    using Transaction = PackageKitTransaction;
    using Finished = std::function<void(Transaction &, Transaction::Outcome)>;

    /// Searches once after each showing of the pane: now or, if the bus is closed, when it opens.
    void askIfDue()
    {
        if (mBus->isOpen() && std::exchange(mDue, false))
            askOnceADay();
    }

    void askOnceADay()
    {
        const QDateTime now = mOptions.now();
        if (mBusy || mOffer.stage() != UpdateOffer::Stage::None || mState.askedWithinADay(now))
            return;
        mState.noteAsked(now);
        findOwnPackage();
    }

    void findOwnPackage()
    {
        const QVariantList arguments{FilterInstalled, QStringList{mOptions.ownFile}};
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
            if (update == found.end() || mState.isSkipped(update->id.version))
                return;
            mUpdate = update->id;
            mOffer.offer(mUpdate->version);
        });
    }

    void install()
    {
        if (mBusy || !mUpdate)
            return;
        mBus->reopenIfLost();
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
            // Log the reason and do not show it, because for the outcome Lost it is a technical text.
            logFailure(transaction);
            mOffer.fail({});
        }
    }

    void skip()
    {
        if (!mUpdate)
            return;
        mState.skip(mUpdate->version);
        mOffer.withdraw();
    }

    void run(const QString &method, const QVariantList &arguments, const Finished &finished)
    {
        const bool installs = mOffer.stage() == UpdateOffer::Stage::Installing;
        auto *transaction = new Transaction(mBus->connection(), this);
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

    static void logFailure(const Transaction &transaction)
    {
        qCInfo(PLATFORM_LOG, "The search for updates failed: %s", qUtf8Printable(transaction.errorText()));
    }

    std::shared_ptr<BusConnection> mBus;
    UpdaterOptions mOptions;
    UpdateState mState;
    std::shared_ptr<UpdateOffer> mSharedOffer;
    UpdateOffer &mOffer;
    std::optional<PackageId> mUpdate;
    bool mBusy = false;
    /// Whether the pane has been shown since the last search.
    bool mDue = false;
};

class PackageKitFramework final : public SoftwareUpdateFramework {
public:
    PackageKitFramework(std::shared_ptr<BusConnection> bus, UpdaterOptions options)
        : mBus(std::move(bus))
        , mOptions(std::move(options))
    {
    }

    // Ignores `bundle` and keeps one updater, because only the pane's bundle asks for one.
    std::shared_ptr<SoftwareUpdater> updaterForBundle(const std::shared_ptr<Bundle> &bundle) override
    {
        if (!mUpdater)
            mUpdater = initForBundle(bundle);
        return mUpdater;
    }

    std::shared_ptr<SoftwareUpdater> initForBundle(const std::shared_ptr<Bundle> &) override
    {
        return std::make_shared<PackageKitUpdater>(mBus, mOptions, mOffer);
    }

    UpdateOffer &offer() override { return *mOffer; }

private:
    std::shared_ptr<BusConnection> mBus;
    UpdaterOptions mOptions;
    std::shared_ptr<UpdateOffer> mOffer = std::make_shared<UpdateOffer>();
    std::shared_ptr<SoftwareUpdater> mUpdater;
};

} // namespace

QString ownCodeFile()
{
    Dl_info info{};
    if (dladdr(reinterpret_cast<const void *>(&ownCodeFile), &info) == 0 || !info.dli_fname)
        return {};
    return QFileInfo(QString::fromLocal8Bit(info.dli_fname)).canonicalFilePath();
}

std::shared_ptr<SoftwareUpdateFramework> makePackageKitFramework(std::shared_ptr<BusConnection> bus,
                                                                 UpdaterOptions options)
{
    return std::make_shared<PackageKitFramework>(std::move(bus), std::move(options));
}

std::shared_ptr<SoftwareUpdateFramework> makePackageKitFramework(std::shared_ptr<BusConnection> bus,
                                                                 const QString &program)
{
    return makePackageKitFramework(std::move(bus), {ownCodeFile(), UpdateState::fileOf(program), [] {
                                                        return QDateTime::currentDateTimeUtc();
                                                    }});
}

} // namespace platform
