#include "platform/updates/SoftwareUpdate.h"

namespace platform {

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

} // namespace platform
