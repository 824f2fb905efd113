#pragma once

#include "platform/updates/SoftwareUpdate.h"

#include <memory>

/// Alias of the update framework's updater class, from which the pane's own updater is derived.
using KS7SUUpdater = platform::SoftwareUpdater;

/// The updater of the pane's own bundle, not of the host application's bundle.
class KSUpdater final : public KS7SUUpdater {
public:
    /// Wraps the framework's shared updater for the pane's bundle.
    static std::shared_ptr<KSUpdater> sharedUpdater(platform::SoftwareUpdateFramework &framework,
                                                    const std::shared_ptr<platform::Bundle> &bundle);
    /// Wraps a new updater of the framework for the pane's bundle.
    static std::shared_ptr<KSUpdater> init(platform::SoftwareUpdateFramework &framework,
                                           const std::shared_ptr<platform::Bundle> &bundle);

    void applicationDidFinishLaunching() override;

private:
    explicit KSUpdater(std::shared_ptr<KS7SUUpdater> updater);

    std::shared_ptr<KS7SUUpdater> mUpdater;
};
