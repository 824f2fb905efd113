#include "simulator/model/Discovery.h"

#include "agent/AgentContract.h"
#include "agent/NotificationNames.h"
#include "simulator/model/AgentPreferences.h"
#include "simulator/model/BusNotifier.h"
#include "simulator/model/CameraRegistry.h"

namespace simulator {

Discovery::Discovery(CameraRegistry &registry, AgentPreferences &preferences, BusNotifier &notifier,
                     const Behaviour &behaviour)
    : mRegistry(registry)
    , mPreferences(preferences)
    , mNotifier(notifier)
    , mBehaviour(behaviour)
{
    mFinding.setSingleShot(true);
    mSearching.setSingleShot(true);
    connect(&mFinding, &QTimer::timeout, this, &Discovery::find);
    connect(&mSearching, &QTimer::timeout, this, &Discovery::stop);
}

void Discovery::start()
{
    if (mIsSearching)
        return;
    mIsSearching = true;
    mNotifier.post(NotificationNames::StartedDiscovering);
    mFinding.start(mBehaviour.timing.finding);
    mSearching.start(mBehaviour.timing.searching);
}

void Discovery::stop()
{
    if (!mIsSearching)
        return;
    mIsSearching = false;
    mSearching.stop();
    mFinding.stop();
    mNotifier.post(NotificationNames::StoppedDiscovering);
}

void Discovery::leaveToBeFound(const Camera &camera)
{
    mToBeFound.append(camera);
}

void Discovery::find()
{
    Camera camera;
    if (mToBeFound.isEmpty()) {
        const QString address = nextNewAddress();
        camera = {address, factoryNameFor(address), cameraIDFor(address)};
    } else {
        camera = mToBeFound.takeFirst();
    }
    const QVariant name = mPreferences.cameraValue(PreferenceKeys::FriendlyNames, camera.address);
    if (name.isValid())
        camera.name = name.toString();
    camera.status = kKS7CamNotStreaming;
    camera.reachable = true;
    mRegistry.add(camera);
}

QString Discovery::nextNewAddress() const
{
    for (int number = 1;; ++number) {
        const int device = 0x61e2 + 0x15d1 * (number - 1);
        QString address = QStringLiteral("00-1b-dc-0f-%1-%2")
                              .arg((device >> 8) & 0xff, 2, 16, QLatin1Char('0'))
                              .arg(device & 0xff, 2, 16, QLatin1Char('0'));
        if (!mRegistry.find(address))
            return address;
    }
}

} // namespace simulator
