#include "simulator/model/AgentModel.h"

#include "agent/NotificationNames.h"
#include "agent/RemoteNames.h"
#include "settings/KS7Domain.h"
#include "simulator/model/Notifier.h"

#include <algorithm>

namespace simulator {

namespace {

constexpr int LongestName = 63;

} // namespace

AgentModel::AgentModel(Notifier &notifier, AgentPreferences &preferences, const Behaviour &behaviour,
                       const Timing &timing)
    : mNotifier(notifier)
    , mPreferences(preferences)
    , mBehaviour(behaviour)
    , mRoster(notifier, preferences)
    , mCourse(mRoster, notifier, timing)
    , mDiscovery(mRoster, preferences, notifier, timing)
    , mCable(mBehaviour, mErrors, notifier, timing)
{
    connect(&mCable, &UsbCable::plugged, this, &AgentModel::pluggedIn);
    connect(&mCable, &UsbCable::unplugged, this, [this](const QString &address) {
        if (address == mRoster.preferredAddress())
            callPreferred();
    });
}

bool AgentModel::isStreaming() const
{
    const auto camera = mRoster.preferred();
    return camera && camera->status == kKS7CamStreaming;
}

void AgentModel::choose(const QString &address)
{
    const auto camera = mRoster.find(address);
    if (!camera)
        return;
    const bool isBusyAlready = address == mRoster.preferredAddress() && isBusy(camera->status);
    if (isBusyAlready)
        return;
    mRoster.setPreferred(address);
    callPreferred();
}

void AgentModel::callPreferred()
{
    if (!mBehaviour.connect)
        return;
    const QString address = mRoster.preferredAddress();
    // A camera at the cable keeps its radio off.
    if (mBluetooth && mPreferences.isServiceOn() && !mCable.holds(address))
        mCourse.begin(address);
    else
        mCourse.end();
}

void AgentModel::removeRow(int row, bool fromFavorites)
{
    const auto camera = mRoster.find(mRoster.sorted().value(row));
    if (!camera)
        return;
    if (isBusy(camera->status))
        mCourse.end();
    mRoster.remove(camera->address);
    if (fromFavorites)
        mPreferences.removeCameraValue(PreferenceKeys::FriendlyNames, camera->address);
    else
        mDiscovery.leaveToBeFound(*camera);
}

void AgentModel::dropIfCurrent(const QVariantMap &record)
{
    const auto removed = mRoster.lastRemoved();
    if (!removed || removed->address != mRoster.preferredAddress() || mRoster.find(removed->address))
        return;
    if (CameraRegistry::record(*removed).value(RecordKeys::CameraIDString)
        == record.value(RecordKeys::CameraIDString))
        mRoster.setPreferred(QString());
}

bool AgentModel::isValidName(const QString &name)
{
    const QString trimmed = name.trimmed();
    return !trimmed.isEmpty() && trimmed.size() <= LongestName
        && std::none_of(trimmed.begin(), trimmed.end(),
                        [](QChar each) { return each.category() == QChar::Other_Control; });
}

void AgentModel::rename(const QString &address, const QString &name)
{
    if (!isValidName(name) || !mRoster.find(address))
        return;
    mPreferences.setCameraValue(PreferenceKeys::FriendlyNames, address, name.trimmed());
    mRoster.setName(address, name.trimmed());
}

void AgentModel::ignore(const QVariantMap &record, bool ignored)
{
    const auto camera = mRoster.findByID(record.value(RecordKeys::CameraIDString).toString());
    if (!camera)
        return;
    mPreferences.setCameraValue(PreferenceKeys::IgnoredCams, camera->address, ignored);
    mRoster.refresh();
}

void AgentModel::discover()
{
    if (mBehaviour.discover && mBluetooth && mPreferences.isServiceOn())
        mDiscovery.start();
}

void AgentModel::switchService(bool on)
{
    mPreferences.set(PreferenceKeys::KS7On, on);
    mNotifier.post(NotificationNames::OnOffChanged);
    if (on) {
        callPreferred();
        return;
    }
    mDiscovery.stop();
    mCourse.end();
}

void AgentModel::switchBluetooth(bool on)
{
    mBluetooth = on;
    if (!on) {
        mDiscovery.stop();
        mCourse.end();
    }
    if (mBehaviour.connect)
        mRoster.setStatuses([&](const Camera &camera) {
            const bool isReachable = camera.reachable && (on || mCable.holds(camera.address));
            return int(isReachable ? kKS7CamNotStreaming : kKS7CamNotFound);
        });
    mNotifier.post(on ? NotificationNames::FoundBluetooth : NotificationNames::NoBluetooth);
    if (on)
        callPreferred();
}

void AgentModel::report(int status)
{
    mCourse.enter(status);
}

void AgentModel::pluggedIn(const QString &address)
{
    const auto camera = mRoster.find(address);
    if (!camera || !mBehaviour.connect)
        return;
    if (address == mRoster.preferredAddress())
        mCourse.end();
    mRoster.setStatuses(
        [&](const Camera &each) { return each.address == address ? int(kKS7CamNotStreaming) : each.status; });
}

} // namespace simulator
