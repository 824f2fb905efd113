#include "simulator/model/CameraRegistry.h"

#include "agent/AgentContract.h"
#include "agent/NotificationNames.h"
#include "simulator/model/AgentPreferences.h"
#include "simulator/model/BusNotifier.h"

#include <algorithm>

namespace simulator {

CameraRegistry::CameraRegistry(BusNotifier &notifier, AgentPreferences &preferences)
    : mNotifier(notifier)
    , mPreferences(preferences)
{
}

void CameraRegistry::announce()
{
    mNotifier.post(NotificationNames::CameraListChanged);
    Q_EMIT changed();
}

void CameraRegistry::add(const Camera &camera)
{
    put(camera);
    announce();
}

void CameraRegistry::add(const QVector<Camera> &cameras)
{
    for (const Camera &camera : cameras)
        put(camera);
    announce();
}

void CameraRegistry::put(const Camera &camera)
{
    if (Camera *old = known(camera.address))
        *old = camera;
    else
        mCameras.append(camera);
}

void CameraRegistry::remove(const QString &address)
{
    const Camera *camera = known(address);
    if (!camera)
        return;
    mLastRemoved = *camera;
    mCameras.removeAt(int(camera - mCameras.constData()));
    announce();
}

void CameraRegistry::setStatus(const QString &address, int status)
{
    Camera *camera = known(address);
    if (!camera)
        return;
    camera->status = status;
    announce();
}

void CameraRegistry::setName(const QString &address, const QString &name)
{
    Camera *camera = known(address);
    if (!camera)
        return;
    camera->name = name;
    announce();
}

void CameraRegistry::setPreferred(const QString &address)
{
    if (address == mPreferred)
        return;
    mPreferred = address;
    mNotifier.post(NotificationNames::PreferredCameraChanged);
    Q_EMIT changed();
}

void CameraRegistry::pretendOrder(const std::optional<QStringList> &order)
{
    mPretendedOrder = order;
    announce();
}

Camera *CameraRegistry::known(const QString &address)
{
    const auto camera = std::find_if(mCameras.begin(), mCameras.end(),
                                     [&](const Camera &each) { return each.address == address; });
    return camera == mCameras.end() ? nullptr : &*camera;
}

std::optional<Camera> CameraRegistry::find(const QString &address) const
{
    for (const Camera &camera : mCameras) {
        if (camera.address == address)
            return camera;
    }
    return {};
}

std::optional<Camera> CameraRegistry::findByID(const QString &cameraID) const
{
    for (const Camera &camera : mCameras) {
        if (camera.cameraID == cameraID)
            return camera;
    }
    return {};
}

std::optional<Camera> CameraRegistry::preferred() const
{
    auto camera = find(mPreferred);
    return camera && !isIgnored(*camera) ? camera : std::nullopt;
}

std::optional<Camera> CameraRegistry::streaming() const
{
    QVector<Camera> candidates = listed();
    std::stable_partition(candidates.begin(), candidates.end(),
                          [this](const Camera &each) { return each.address == mPreferred; });
    const auto camera = std::find_if(candidates.begin(), candidates.end(),
                                     [](const Camera &each) { return each.status == kKS7CamStreaming; });
    return camera == candidates.end() ? std::nullopt : std::optional(*camera);
}

bool CameraRegistry::isIgnored(const Camera &camera) const
{
    return mPreferences.cameraValue(PreferenceKeys::IgnoredCams, camera.address).toBool();
}

QVector<Camera> CameraRegistry::listed() const
{
    const QVariantMap ignored = mPreferences.value(PreferenceKeys::IgnoredCams).toMap();
    QVector<Camera> cameras;
    std::copy_if(mCameras.begin(), mCameras.end(), std::back_inserter(cameras),
                 [&](const Camera &camera) { return !ignored.value(camera.address).toBool(); });
    return cameras;
}

CameraRecord CameraRegistry::record(const Camera &camera)
{
    return {camera.status, camera.cameraID, camera.name};
}

CameraDictionary CameraRegistry::dictionary() const
{
    CameraDictionary dictionary;
    for (const Camera &camera : listed())
        dictionary.insert(camera.address, dictionaryFromRecord(record(camera)));
    return dictionary;
}

CameraRecords CameraRegistry::records() const
{
    CameraRecords records;
    for (const Camera &camera : listed())
        records.append(dictionaryFromRecord(record(camera)));
    return records;
}

QStringList CameraRegistry::sorted() const
{
    if (mPretendedOrder)
        return *mPretendedOrder;
    QStringList addresses;
    for (const Camera &camera : listed())
        addresses.append(camera.address);
    return addresses;
}

std::uint64_t CameraRegistry::indexOfPreferred() const
{
    const auto index = mPreferred.isEmpty() ? -1 : sorted().indexOf(mPreferred);
    return index < 0 ? NoPreferredCamera : std::uint64_t(index);
}

} // namespace simulator
