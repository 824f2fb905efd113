#pragma once

#include "platform/updates/SoftwareUpdate.h"

#include <memory>

/// The updater of the pane's own bundle, not of the host: both ways to one go by the bundle given.
class KSUpdater {
public:
    /// The framework's shared updater for the pane's bundle.
    static std::shared_ptr<platform::KS7SUUpdater>
    sharedUpdater(platform::SoftwareUpdateFramework &framework,
                  const std::shared_ptr<platform::Bundle> &bundle);
    /// An updater of one's own for the pane's bundle.
    static std::shared_ptr<platform::KS7SUUpdater> init(platform::SoftwareUpdateFramework &framework,
                                                        const std::shared_ptr<platform::Bundle> &bundle);
};
