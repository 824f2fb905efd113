#include "tests/fakes/FakeAgentProxyFactory.h"

#include "tests/fakes/FakeAgent.h"

namespace {

QString yesOrNo(bool value)
{
    return value ? QStringLiteral("yes") : QStringLiteral("no");
}

void runDuring(FakeAgent &agent, const QString &operation)
{
    const auto during = agent.during.find(operation);
    if (during != agent.during.end())
        during->second();
}

class FakeDeviceController final : public KS7DeviceControllerProxy {
public:
    explicit FakeDeviceController(FakeAgent &agent)
        : mAgent(agent)
    {
    }
    void flush() override { record(QStringLiteral("flush")); }
    CameraDictionary cameraDict() override
    {
        record(QStringLiteral("cameraDict"));
        return mAgent.cameraDict;
    }
    void getAudioLevel_l(float *l, float *r) override
    {
        record(QStringLiteral("getAudioLevel_l"));
        if (!mAgent.answersLevels)
            return;
        *l = mAgent.left;
        *r = mAgent.right;
    }
    void setName(const QString &name, const QString &forCamAddress) override
    {
        record(QStringLiteral("setName"), name + QLatin1Char(' ') + forCamAddress);
    }
    void checkRemoveCurrentCam(const std::optional<CameraRecord> &camera) override
    {
        record(QStringLiteral("checkRemoveCurrentCam"),
               camera
                   ? QStringLiteral("%1 %2 %3")
                         .arg(QString::number(camera->status), camera->cameraIDString, camera->friendlyName)
                   : QStringLiteral("nil"));
    }
    std::uint64_t indexOfPreferredKS7Cam() override
    {
        record(QStringLiteral("indexOfPreferredKS7Cam"));
        return mAgent.indexOfPreferred;
    }
    bool validateName(const QString &name) override
    {
        record(QStringLiteral("validateName"), name);
        return mAgent.acceptsNames;
    }
    void removeCameraAtIndex(int row, bool fromFavorites) override
    {
        record(QStringLiteral("removeCameraAtIndex"),
               QString::number(row) + QLatin1Char(' ') + yesOrNo(fromFavorites));
    }
    QStringList sortedDeviceList() override
    {
        record(QStringLiteral("sortedDeviceList"));
        return mAgent.sorted;
    }
    std::optional<CameraRecord> getPreferredKS7Cam() override
    {
        record(QStringLiteral("getPreferredKS7Cam"));
        return mAgent.preferred;
    }
    void setPreferredDeviceAddress(const QString &address) override
    {
        record(QStringLiteral("setPreferredDeviceAddress"),
               address.isNull() ? QStringLiteral("nil") : address);
    }

private:
    void record(const QString &operation, const QString &arguments = {})
    {
        mAgent.call(arguments.isNull() ? operation : operation + QLatin1Char(' ') + arguments);
        runDuring(mAgent, operation);
    }
    FakeAgent &mAgent;
};

class FakeUSBController final : public TernUSBCommandControllerProxy {
public:
    explicit FakeUSBController(FakeAgent &agent)
        : mAgent(agent)
    {
    }
    int startUpdate() override
    {
        record(QStringLiteral("startUpdate"));
        return mAgent.startUpdateResult;
    }
    bool connectedCamNeedsFirmwareUpdate() override
    {
        record(QStringLiteral("connectedCamNeedsFirmwareUpdate"));
        return mAgent.needsFirmware;
    }
    int setPassKey(const QString &passKey) override
    {
        record(QStringLiteral("setPassKey"), passKey);
        return mAgent.setPassKeyResult;
    }
    bool connectedCamHasBTAddress(const QString &address) override
    {
        record(QStringLiteral("connectedCamHasBTAddress"),
               address.isNull() ? QStringLiteral("nil") : address);
        return mAgent.everyAddressIsAtTheCable
            || (!mAgent.usbAddress.isEmpty() && mAgent.usbAddress == address);
    }

private:
    void record(const QString &operation, const QString &arguments = {})
    {
        mAgent.call(arguments.isNull() ? operation : operation + QLatin1Char(' ') + arguments);
        runDuring(mAgent, operation);
    }
    FakeAgent &mAgent;
};

} // namespace

Proxy<KS7DeviceControllerProxy>
FakeAgentProxyFactory::deviceController(const std::shared_ptr<platform::RootProxy> &root)
{
    if (!root)
        return {};
    return std::shared_ptr<KS7DeviceControllerProxy>(std::make_shared<FakeDeviceController>(mAgent));
}

Proxy<TernUSBCommandControllerProxy>
FakeAgentProxyFactory::usbController(const std::shared_ptr<platform::RootProxy> &root)
{
    if (!root)
        return {};
    return std::shared_ptr<TernUSBCommandControllerProxy>(std::make_shared<FakeUSBController>(mAgent));
}
