#include "simulator/model/AgentModel.h"

#include "agent/AgentContract.h"
#include "agent/NotificationNames.h"
#include "agent/RemoteNames.h"
#include "simulator/model/BusNotifier.h"

#include <algorithm>

namespace simulator {

namespace {

constexpr int LongestName = 63;

} // namespace

AgentModel::AgentModel(BusNotifier &notifier, AgentPreferences &preferences, Behaviour behaviour)
    : mNotifier(notifier)
    , mPreferences(preferences)
    , mBehaviour(std::move(behaviour))
    , mRegistry(notifier, preferences)
    , mSequence(mRegistry, notifier, mBehaviour)
    , mDiscovery(mRegistry, preferences, notifier, mBehaviour)
    , mCable(mBehaviour, notifier)
{
    connect(&mCable, &UsbCable::plugged, this, &AgentModel::pluggedIn);
    connect(&mCable, &UsbCable::unplugged, this, [this](const QString &address) {
        if (address == mRegistry.preferredAddress())
            callPreferred();
    });
}

bool AgentModel::isStreaming() const
{
    const auto camera = mRegistry.preferred();
    return camera && camera->status == kKS7CamStreaming;
}

void AgentModel::choose(const QString &address)
{
    const auto camera = mRegistry.find(address);
    if (!camera)
        return;
    const bool isBusyAlready = address == mRegistry.preferredAddress() && isBusy(camera->status);
    if (isBusyAlready)
        return;
    mRegistry.setPreferred(address);
    callPreferred();
}

void AgentModel::callPreferred()
{
    if (!mBehaviour.connect)
        return;
    const QString address = mRegistry.preferredAddress();
    // A camera on the USB cable keeps its radio off, so it cannot stream.
    if (mBluetooth && mPreferences.isServiceOn() && !mCable.holds(address))
        mSequence.begin(address);
    else
        mSequence.end();
}

void AgentModel::removeRow(int row, bool fromFavorites)
{
    const auto camera = mRegistry.find(mRegistry.sorted().value(row));
    if (!camera)
        return;
    if (isBusy(camera->status))
        mSequence.end();
    mRegistry.remove(camera->address);
    if (fromFavorites)
        mPreferences.removeCameraValue(PreferenceKeys::FriendlyNames, camera->address);
    else
        mDiscovery.leaveToBeFound(*camera);
}

void AgentModel::dropIfCurrent(const std::optional<CameraRecord> &record)
{
    const auto removed = mRegistry.lastRemoved();
    if (!removed || removed->address != mRegistry.preferredAddress() || mRegistry.find(removed->address))
        return;
    if (record && record->cameraIDString == removed->cameraID)
        mRegistry.setPreferred(QString());
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
    if (!isValidName(name) || !mRegistry.find(address))
        return;
    mPreferences.setCameraValue(PreferenceKeys::FriendlyNames, address, name.trimmed());
    mRegistry.setName(address, name.trimmed());
}

void AgentModel::ignore(const QVariantMap &record, bool ignored)
{
    const auto camera = mRegistry.findByID(record.value(RecordKeys::CameraIDString).toString());
    if (!camera)
        return;
    mPreferences.setCameraValue(PreferenceKeys::IgnoredCams, camera->address, ignored);
    mRegistry.refresh();
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
    mSequence.end();
}

void AgentModel::switchBluetooth(bool on)
{
    mBluetooth = on;
    if (!on) {
        mDiscovery.stop();
        mSequence.end();
    }
    if (mBehaviour.connect)
        mRegistry.setStatuses([&](const Camera &camera) {
            const bool isReachable = camera.reachable && (on || mCable.holds(camera.address));
            return int(isReachable ? kKS7CamNotStreaming : kKS7CamNotFound);
        });
    mNotifier.post(on ? NotificationNames::FoundBluetooth : NotificationNames::NoBluetooth);
    if (on)
        callPreferred();
}

void AgentModel::report(int status)
{
    mSequence.enter(status);
}

void AgentModel::pluggedIn(const QString &address)
{
    const auto camera = mRegistry.find(address);
    if (!camera || !mBehaviour.connect)
        return;
    if (address == mRegistry.preferredAddress())
        mSequence.end();
    mRegistry.setStatuses(
        [&](const Camera &each) { return each.address == address ? int(kKS7CamNotStreaming) : each.status; });
}

} // namespace simulator
