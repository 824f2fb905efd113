#include "simulator/bus/DeviceController.h"

#include "simulator/model/AgentModel.h"

namespace simulator {

void DeviceController::flush()
{
    mModel.preferences().synchronize();
}

CameraDictionary DeviceController::cameraDict()
{
    return mModel.registry().dictionary();
}

void DeviceController::getAudioLevel_l(float *l, float *r)
{
    const auto [left, right] = mModel.levels().current(mModel.isStreaming());
    *l = static_cast<float>(left);
    *r = static_cast<float>(right);
}

void DeviceController::setIgnore(bool ignore, const QVariantMap &forCam)
{
    mModel.ignore(forCam, ignore);
}

void DeviceController::setName(const QString &name, const QString &forCamAddress)
{
    mModel.rename(forCamAddress, name);
}

void DeviceController::checkRemoveCurrentCam(const std::optional<CameraRecord> &camera)
{
    mModel.dropIfCurrent(camera);
}

std::uint64_t DeviceController::indexOfPreferredKS7Cam()
{
    return mModel.registry().indexOfPreferred();
}

bool DeviceController::validateName(const QString &name)
{
    return AgentModel::isValidName(name);
}

void DeviceController::streamingStarted()
{
    mModel.report(kKS7CamStreaming);
}

void DeviceController::pairingInitiated()
{
    mModel.report(kKS7CamPairing);
}

void DeviceController::streamingInitiated()
{
    mModel.report(kKS7CamStarting);
}

void DeviceController::streamingStopped()
{
    mModel.report(kKS7CamNotStreaming);
}

void DeviceController::removeCameraAtIndex(int row, bool fromFavorites)
{
    mModel.removeRow(row, fromFavorites);
}

QStringList DeviceController::sortedDeviceList()
{
    return mModel.registry().sorted();
}

CameraRecords DeviceController::cameras()
{
    return mModel.registry().records();
}

std::optional<CameraRecord> DeviceController::getPreferredKS7Cam()
{
    const auto camera = mModel.registry().preferred();
    return camera ? std::optional(CameraRegistry::record(*camera)) : std::nullopt;
}

bool DeviceController::isPreferredDeviceAddress(const QString &address)
{
    return !address.isEmpty() && address == mModel.registry().preferredAddress();
}

void DeviceController::setPreferredDeviceAddress(const QString &address)
{
    mModel.choose(address);
}

} // namespace simulator
