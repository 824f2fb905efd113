#include "about/KSUpdater.h"

std::shared_ptr<platform::KS7SUUpdater>
KSUpdater::sharedUpdater(platform::SoftwareUpdateFramework &framework,
                         const std::shared_ptr<platform::Bundle> &bundle)
{
    return framework.updaterForBundle(bundle);
}

std::shared_ptr<platform::KS7SUUpdater> KSUpdater::init(platform::SoftwareUpdateFramework &framework,
                                                        const std::shared_ptr<platform::Bundle> &bundle)
{
    return framework.initForBundle(bundle);
}
