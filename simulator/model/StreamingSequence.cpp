#include "simulator/model/StreamingSequence.h"

#include "agent/NotificationNames.h"
#include "simulator/model/BusNotifier.h"
#include "simulator/model/CameraRegistry.h"

#include <algorithm>

namespace simulator {

StreamingSequence::StreamingSequence(CameraRegistry &registry, BusNotifier &notifier,
                                     const Behaviour &behaviour)
    : mRegistry(registry)
    , mNotifier(notifier)
    , mBehaviour(behaviour)
{
    mTimer.setSingleShot(true);
    connect(&mTimer, &QTimer::timeout, this, &StreamingSequence::advance);
}

void StreamingSequence::begin(const QString &address)
{
    end();
    const auto camera = mRegistry.find(address);
    if (!camera || !camera->reachable)
        return;
    mAddress = address;
    mTimer.start(delayBefore(kKS7CamPairing));
}

void StreamingSequence::end()
{
    mTimer.stop();
    mAddress.clear();
    const auto cameras = mRegistry.cameras();
    const bool streamed = std::any_of(cameras.begin(), cameras.end(),
                                      [](const Camera &camera) { return camera.status == kKS7CamStreaming; });
    mRegistry.setStatuses([](const Camera &camera) {
        return isBusy(camera.status) ? int(kKS7CamNotStreaming) : camera.status;
    });
    if (streamed)
        mNotifier.post(NotificationNames::StreamingEnded);
}

void StreamingSequence::advance()
{
    const auto camera = mRegistry.find(mAddress);
    if (!camera)
        return;
    const int next = isBusy(camera->status) ? camera->status + 1 : int(kKS7CamPairing);
    enter(next);
    if (next < kKS7CamStreaming)
        mTimer.start(delayBefore(next + 1));
}

void StreamingSequence::enter(int status)
{
    mRegistry.setStatus(mAddress.isEmpty() ? mRegistry.preferredAddress() : mAddress, status);
    if (status == kKS7CamPairing)
        mNotifier.post(NotificationNames::PairingInitiated);
    else if (status == kKS7CamStarting)
        mNotifier.post(NotificationNames::StreamingInitiated);
    else if (status == kKS7CamStreaming)
        mNotifier.post(NotificationNames::StreamingStarted);
    else
        mNotifier.post(NotificationNames::StreamingEnded);
}

int StreamingSequence::delayBefore(int status) const
{
    if (status == kKS7CamPairing)
        return mBehaviour.timing.pairing;
    return status == kKS7CamStarting ? mBehaviour.timing.starting : mBehaviour.timing.streaming;
}

} // namespace simulator
