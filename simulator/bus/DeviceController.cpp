#include "simulator/bus/DeviceController.h"

#include "simulator/model/AgentModel.h"

namespace simulator {

DeviceController::DeviceController(AgentModel &model, const CallInterceptor &interceptor)
    : mModel(model)
    , mInterceptor(interceptor)
{
}

QVariantList DeviceController::answer(const QString &operation, const QVariantList &arguments,
                                      const std::function<QVariantList()> &work)
{
    return mInterceptor.answer(*this, operation, arguments, work);
}

void DeviceController::perform(const QString &operation, const QVariantList &arguments,
                               const std::function<void()> &work)
{
    mInterceptor.perform(*this, operation, arguments, work);
}

void DeviceController::flush()
{
    perform(QStringLiteral("flush"), {}, [this] { mModel.preferences().synchronize(); });
}

CameraDictionary DeviceController::cameraDict()
{
    const auto work = [this] { return QVariantList{QVariant::fromValue(mModel.registry().dictionary())}; };
    return answer(QStringLiteral("cameraDict"), {}, work).value(0).value<CameraDictionary>();
}

double DeviceController::getAudioLevel_l(double &r)
{
    const auto levels = answer(QStringLiteral("getAudioLevel_l"), {}, [this] {
        const auto [left, right] = mModel.levels().current(mModel.isStreaming());
        return QVariantList{left, right};
    });
    r = levels.value(1).toDouble();
    return levels.value(0).toDouble();
}

void DeviceController::setIgnore(bool ignore, const QVariantMap &forCam)
{
    perform(QStringLiteral("setIgnore"), {ignore, forCam}, [=, this] { mModel.ignore(forCam, ignore); });
}

void DeviceController::setName(const QString &name, const QString &forCamAddress)
{
    perform(QStringLiteral("setName"), {name, forCamAddress},
            [=, this] { mModel.rename(forCamAddress, name); });
}

void DeviceController::checkRemoveCurrentCam(const QVariantMap &camera)
{
    perform(QStringLiteral("checkRemoveCurrentCam"), {camera}, [=, this] { mModel.dropIfCurrent(camera); });
}

qulonglong DeviceController::indexOfPreferredKS7Cam()
{
    const auto work = [this] { return QVariantList{qulonglong(mModel.registry().indexOfPreferred())}; };
    return answer(QStringLiteral("indexOfPreferredKS7Cam"), {}, work).value(0).toULongLong();
}

bool DeviceController::validateName(const QString &name)
{
    const auto work = [name] { return QVariantList{AgentModel::isValidName(name)}; };
    return answer(QStringLiteral("validateName"), {name}, work).value(0).toBool();
}

void DeviceController::streamingStarted()
{
    perform(QStringLiteral("streamingStarted"), {}, [this] { mModel.report(kKS7CamStreaming); });
}

void DeviceController::pairingInitiated()
{
    perform(QStringLiteral("pairingInitiated"), {}, [this] { mModel.report(kKS7CamPairing); });
}

void DeviceController::streamingInitiated()
{
    perform(QStringLiteral("streamingInitiated"), {}, [this] { mModel.report(kKS7CamStarting); });
}

void DeviceController::streamingStopped()
{
    perform(QStringLiteral("streamingStopped"), {}, [this] { mModel.report(kKS7CamNotStreaming); });
}

void DeviceController::removeCameraAtIndex(int row, bool fromFavorites)
{
    perform(QStringLiteral("removeCameraAtIndex"), {row, fromFavorites},
            [=, this] { mModel.removeRow(row, fromFavorites); });
}

void DeviceController::getKnownZephraDevices()
{
    // The registry is always up to date; there is nothing to look up.
    perform(QStringLiteral("getKnownZephraDevices"), {}, [] {});
}

QStringList DeviceController::sortedDeviceList()
{
    const auto work = [this] { return QVariantList{mModel.registry().sorted()}; };
    return answer(QStringLiteral("sortedDeviceList"), {}, work).value(0).toStringList();
}

CameraRecords DeviceController::cameras()
{
    const auto work = [this] { return QVariantList{QVariant::fromValue(mModel.registry().records())}; };
    return answer(QStringLiteral("cameras"), {}, work).value(0).value<CameraRecords>();
}

QVariantMap DeviceController::getPreferredKS7Cam()
{
    return answer(QStringLiteral("getPreferredKS7Cam"), {},
                  [this] {
                      const auto camera = mModel.registry().preferred();
                      return QVariantList{camera ? CameraRegistry::record(*camera) : QVariantMap()};
                  })
        .value(0)
        .toMap();
}

bool DeviceController::isPreferredDeviceAddress(const QString &address)
{
    const auto work = [=, this] {
        return QVariantList{!address.isEmpty() && address == mModel.registry().preferredAddress()};
    };
    return answer(QStringLiteral("isPreferredDeviceAddress"), {address}, work).value(0).toBool();
}

void DeviceController::setPreferredDeviceAddress(const QString &address)
{
    perform(QStringLiteral("setPreferredDeviceAddress"), {address}, [=, this] { mModel.choose(address); });
}

} // namespace simulator
