#pragma once

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <cstdint>
#include <optional>

/// The reply of indexOfPreferredKS7Cam() when no camera is preferred.
inline constexpr std::uint64_t NoPreferredCamera = 0x7FFFFFFFFFFFFFFF;

/// A camera as agent and pane send it.
struct CameraRecord {
    int status = 0;
    QString cameraIDString;
    QString friendlyName;
};

/// Camera address to the camera's entry: "Status", "CameraIDString", "FriendlyName".
using CameraDictionary = QMap<QString, QVariantMap>;

/// The camera and Bluetooth side of the agent, operation for operation as the agent declares it.
/// The base class is the nil proxy: it does nothing and returns nil, 0 or false.
class KS7DeviceControllerProxy {
public:
    virtual ~KS7DeviceControllerProxy() = default;

    virtual void flush() { }
    virtual CameraDictionary cameraDict() { return {}; }
    /// Leaves both levels as they are when there is no reply.
    virtual void getAudioLevel_l([[maybe_unused]] float *l, [[maybe_unused]] float *r) { }
    virtual void setIgnore([[maybe_unused]] bool ignore, [[maybe_unused]] const QVariantMap &forCam) { }
    virtual void setName([[maybe_unused]] const QString &name, [[maybe_unused]] const QString &forCamAddress)
    {
    }
    virtual void checkRemoveCurrentCam([[maybe_unused]] const std::optional<CameraRecord> &camera) { }
    virtual std::uint64_t indexOfPreferredKS7Cam() { return 0; }
    virtual bool validateName([[maybe_unused]] const QString &name) { return false; }
    virtual void streamingStarted() { }
    virtual void pairingInitiated() { }
    virtual void streamingInitiated() { }
    virtual void streamingStopped() { }
    virtual void removeCameraAtIndex([[maybe_unused]] int row, [[maybe_unused]] bool fromFavorites) { }
    virtual void getKnownZephraDevices() { }
    virtual QStringList sortedDeviceList() { return {}; }
    virtual QList<QVariantMap> cameras() { return {}; }
    virtual std::optional<CameraRecord> getPreferredKS7Cam() { return {}; }
    virtual bool isPreferredDeviceAddress([[maybe_unused]] const QString &address) { return false; }
    virtual void setPreferredDeviceAddress([[maybe_unused]] const QString &address) { }
};
