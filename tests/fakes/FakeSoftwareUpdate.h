#pragma once

#include "platform/updates/SoftwareUpdate.h"
#include "tests/fakes/Journal.h"

#include <memory>
#include <vector>

/// Creates updaters that only record that they were started.
class FakeSoftwareUpdate final : public platform::SoftwareUpdateFramework {
public:
    explicit FakeSoftwareUpdate(Journal journal)
        : mJournal(std::move(journal))
    {
    }
    std::shared_ptr<platform::SoftwareUpdater>
    updaterForBundle(const std::shared_ptr<platform::Bundle> &) override;
    std::shared_ptr<platform::SoftwareUpdater>
    initForBundle(const std::shared_ptr<platform::Bundle> &) override;
    platform::UpdateOffer &offer() override { return mOffer; }

    /// The bundles that were passed in the requests for an updater, in order.
    std::vector<std::shared_ptr<platform::Bundle>> bundles;

private:
    std::shared_ptr<platform::SoftwareUpdater> makeUpdater(const QString &how,
                                                           const std::shared_ptr<platform::Bundle> &bundle);
    Journal mJournal;
    platform::UpdateOffer mOffer;
};
