#include "about/KSUpdater.h"

#include <utility>

KSUpdater::KSUpdater(std::shared_ptr<KS7SUUpdater> updater)
    : mUpdater(std::move(updater))
{
}

std::shared_ptr<KSUpdater> KSUpdater::sharedUpdater(platform::SoftwareUpdateFramework &framework,
                                                    const std::shared_ptr<platform::Bundle> &bundle)
{
    return std::shared_ptr<KSUpdater>(new KSUpdater(framework.updaterForBundle(bundle)));
}

std::shared_ptr<KSUpdater> KSUpdater::init(platform::SoftwareUpdateFramework &framework,
                                           const std::shared_ptr<platform::Bundle> &bundle)
{
    return std::shared_ptr<KSUpdater>(new KSUpdater(framework.initForBundle(bundle)));
}

void KSUpdater::applicationDidFinishLaunching()
{
    mUpdater->applicationDidFinishLaunching();
}
