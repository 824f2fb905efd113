#pragma once

#include "agent/KS7DeviceControllerProxy.h"

namespace simulator {

class AgentModel;

/// Implements the agent's interface for cameras and Bluetooth.
class DeviceController final : public KS7DeviceControllerProxy {
public:
    explicit DeviceController(AgentModel &model)
        : mModel(model)
    {
    }

    void flush() override;
    CameraDictionary cameraDict() override;
    void getAudioLevel_l(float *l, float *r) override;
    void setIgnore(bool ignore, const QVariantMap &forCam) override;
    void setName(const QString &name, const QString &forCamAddress) override;
    void checkRemoveCurrentCam(const std::optional<CameraRecord> &camera) override;
    std::uint64_t indexOfPreferredKS7Cam() override;
    bool validateName(const QString &name) override;
    void streamingStarted() override;
    void pairingInitiated() override;
    void streamingInitiated() override;
    void streamingStopped() override;
    void removeCameraAtIndex(int row, bool fromFavorites) override;
    /// Does nothing, because the list of cameras is always up to date.
    void getKnownZephraDevices() override { }
    QStringList sortedDeviceList() override;
    CameraRecords cameras() override;
    std::optional<CameraRecord> getPreferredKS7Cam() override;
    bool isPreferredDeviceAddress(const QString &address) override;
    void setPreferredDeviceAddress(const QString &address) override;

private:
    AgentModel &mModel;
};

} // namespace simulator
