#include "tests/fakes/FakeSoftwareUpdate.h"

namespace {

class FakeUpdater final : public platform::SoftwareUpdater {
public:
    explicit FakeUpdater(Journal journal)
        : mJournal(std::move(journal))
    {
    }
    void applicationDidFinishLaunching() override { note(mJournal, QStringLiteral("updater started")); }

private:
    Journal mJournal;
};

} // namespace

std::shared_ptr<platform::SoftwareUpdater>
FakeSoftwareUpdate::makeUpdater(const QString &how, const std::shared_ptr<platform::Bundle> &bundle)
{
    note(mJournal, QStringLiteral("updater ") + how);
    bundles.push_back(bundle);
    return std::make_shared<FakeUpdater>(mJournal);
}

std::shared_ptr<platform::SoftwareUpdater>
FakeSoftwareUpdate::updaterForBundle(const std::shared_ptr<platform::Bundle> &bundle)
{
    return makeUpdater(QStringLiteral("shared"), bundle);
}

std::shared_ptr<platform::SoftwareUpdater>
FakeSoftwareUpdate::initForBundle(const std::shared_ptr<platform::Bundle> &bundle)
{
    return makeUpdater(QStringLiteral("made"), bundle);
}
