#include "simulator/CameraRoster.h"

#include "agent/NotificationNames.h"
#include "settings/KS7Domain.h"
#include "simulator/AgentPreferences.h"
#include "simulator/Notifier.h"

#include <algorithm>

namespace simulator {

CameraRoster::CameraRoster(Notifier &notifier, AgentPreferences &preferences)
    : mNotifier(notifier)
    , mPreferences(preferences)
{
}

void CameraRoster::announce()
{
    mNotifier.post(NotificationNames::CameraListChanged);
    Q_EMIT changed();
}

void CameraRoster::add(const Camera &camera)
{
    put(camera);
    announce();
}

void CameraRoster::add(const QVector<Camera> &cameras)
{
    for (const Camera &camera : cameras)
        put(camera);
    announce();
}

void CameraRoster::put(const Camera &camera)
{
    if (Camera *old = known(camera.address))
        *old = camera;
    else
        mCameras.append(camera);
}

void CameraRoster::remove(const QString &address)
{
    const Camera *camera = known(address);
    if (!camera)
        return;
    mLastRemoved = *camera;
    mCameras.removeAt(int(camera - mCameras.constData()));
    announce();
}

void CameraRoster::setStatus(const QString &address, int status)
{
    Camera *camera = known(address);
    if (!camera)
        return;
    camera->status = status;
    announce();
}

void CameraRoster::setName(const QString &address, const QString &name)
{
    Camera *camera = known(address);
    if (!camera)
        return;
    camera->name = name;
    announce();
}

void CameraRoster::setPreferred(const QString &address)
{
    if (address == mPreferred)
        return;
    mPreferred = address;
    mNotifier.post(NotificationNames::PreferredCameraChanged);
    Q_EMIT changed();
}

void CameraRoster::pretendOrder(const std::optional<QStringList> &order)
{
    mPretendedOrder = order;
    announce();
}

Camera *CameraRoster::known(const QString &address)
{
    const auto camera = std::find_if(mCameras.begin(), mCameras.end(),
                                     [&](const Camera &each) { return each.address == address; });
    return camera == mCameras.end() ? nullptr : &*camera;
}

std::optional<Camera> CameraRoster::find(const QString &address) const
{
    for (const Camera &camera : mCameras) {
        if (camera.address == address)
            return camera;
    }
    return {};
}

std::optional<Camera> CameraRoster::findByID(const QString &cameraID) const
{
    for (const Camera &camera : mCameras) {
        if (camera.cameraID == cameraID)
            return camera;
    }
    return {};
}

std::optional<Camera> CameraRoster::preferred() const
{
    auto camera = find(mPreferred);
    return camera && !isIgnored(*camera) ? camera : std::nullopt;
}

bool CameraRoster::isIgnored(const Camera &camera) const
{
    return mPreferences.cameraValue(PreferenceKeys::IgnoredCams, camera.address).toBool();
}

QVector<Camera> CameraRoster::listed() const
{
    const QVariantMap ignored = mPreferences.value(PreferenceKeys::IgnoredCams).toMap();
    QVector<Camera> cameras;
    std::copy_if(mCameras.begin(), mCameras.end(), std::back_inserter(cameras),
                 [&](const Camera &camera) { return !ignored.value(camera.address).toBool(); });
    return cameras;
}

QVariantMap CameraRoster::record(const Camera &camera)
{
    return dictionaryFromRecord(CameraRecord{camera.status, camera.cameraID, camera.name});
}

CameraDictionary CameraRoster::dictionary() const
{
    CameraDictionary dictionary;
    for (const Camera &camera : listed())
        dictionary.insert(camera.address, record(camera));
    return dictionary;
}

CameraRecords CameraRoster::records() const
{
    CameraRecords records;
    for (const Camera &camera : listed())
        records.append(record(camera));
    return records;
}

QStringList CameraRoster::sorted() const
{
    if (mPretendedOrder)
        return *mPretendedOrder;
    QStringList addresses;
    for (const Camera &camera : listed())
        addresses.append(camera.address);
    return addresses;
}

std::uint64_t CameraRoster::indexOfPreferred() const
{
    const auto index = mPreferred.isEmpty() ? -1 : sorted().indexOf(mPreferred);
    return index < 0 ? NoPreferredCamera : std::uint64_t(index);
}

} // namespace simulator
