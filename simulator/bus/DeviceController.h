#pragma once

#include "agent/AgentServices.h"
#include "simulator/bus/CallInterceptor.h"

#include <QDBusContext>

namespace simulator {

class AgentModel;

/// The camera and Bluetooth side of the agent, as a bus object.
class DeviceController final : public DeviceControllerService, protected QDBusContext {
    Q_OBJECT
public:
    DeviceController(AgentModel &model, const CallInterceptor &interceptor);

    void flush() override;
    CameraDictionary cameraDict() override;
    double getAudioLevel_l(double &r) override;
    void setIgnore(bool ignore, const QVariantMap &forCam) override;
    void setName(const QString &name, const QString &forCamAddress) override;
    void checkRemoveCurrentCam(const QVariantMap &camera) override;
    qulonglong indexOfPreferredKS7Cam() override;
    bool validateName(const QString &name) override;
    void streamingStarted() override;
    void pairingInitiated() override;
    void streamingInitiated() override;
    void streamingStopped() override;
    void removeCameraAtIndex(int row, bool fromFavorites) override;
    void getKnownZephraDevices() override;
    QStringList sortedDeviceList() override;
    CameraRecords cameras() override;
    QVariantMap getPreferredKS7Cam() override;
    bool isPreferredDeviceAddress(const QString &address) override;
    void setPreferredDeviceAddress(const QString &address) override;

private:
    QVariantList answer(const QString &operation, const QVariantList &arguments,
                        const std::function<QVariantList()> &work);
    void perform(const QString &operation, const QVariantList &arguments, const std::function<void()> &work);

    AgentModel &mModel;
    CallInterceptor mInterceptor;
};

} // namespace simulator
