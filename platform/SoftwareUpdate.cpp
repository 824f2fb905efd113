#include "platform/SoftwareUpdate.h"

namespace platform {
namespace {

class NullUpdater final : public KS7SUUpdater {
public:
    void applicationDidFinishLaunching() override { }
};

class NullUpdateFramework final : public SoftwareUpdateFramework {
public:
    std::shared_ptr<KS7SUUpdater> updaterForBundle(const std::shared_ptr<Bundle> &) override
    {
        return mUpdater;
    }
    std::shared_ptr<KS7SUUpdater> initForBundle(const std::shared_ptr<Bundle> &) override
    {
        return std::make_shared<NullUpdater>();
    }
    UpdateOffer &offer() override { return mOffer; }

private:
    std::shared_ptr<NullUpdater> mUpdater = std::make_shared<NullUpdater>();
    UpdateOffer mOffer;
};

} // namespace

void UpdateOffer::offer(const QString &version)
{
    mVersion = version;
    enter(Stage::Offered);
}

void UpdateOffer::progress(int percentage)
{
    mPercentage = percentage >= 0 && percentage <= 100 ? percentage : UnknownPercentage;
    enter(Stage::Installing);
}

void UpdateOffer::succeed()
{
    enter(Stage::Installed);
}

void UpdateOffer::fail(const QString &reason)
{
    mReason = reason;
    enter(Stage::Failed);
}

void UpdateOffer::withdraw()
{
    mVersion.clear();
    enter(Stage::None);
}

void UpdateOffer::enter(Stage stage)
{
    mStage = stage;
    if (stage != Stage::Installing)
        mPercentage = UnknownPercentage;
    if (stage != Stage::Failed)
        mReason.clear();
    Q_EMIT changed();
}

std::shared_ptr<SoftwareUpdateFramework> makeNullUpdateFramework()
{
    return std::make_shared<NullUpdateFramework>();
}

} // namespace platform
