#pragma once

#include "agent/WireTypes.h"

#include <QObject>
#include <QStringList>

/// The agent's end of the camera interface: the parent of a DeviceControllerAdaptor. The compiler checks it
/// against the generated adaptor, operation for operation.
class DeviceControllerService : public QObject {
    Q_OBJECT
public:
    virtual void flush() = 0;
    virtual CameraDictionary cameraDict() = 0;
    /// Returns the left level and writes the right one to `r`.
    virtual double getAudioLevel_l(double &r) = 0;
    virtual void setIgnore(bool ignore, const QVariantMap &forCam) = 0;
    virtual void setName(const QString &name, const QString &forCamAddress) = 0;
    virtual void checkRemoveCurrentCam(const QVariantMap &camera) = 0;
    virtual qulonglong indexOfPreferredKS7Cam() = 0;
    virtual bool validateName(const QString &name) = 0;
    virtual void streamingStarted() = 0;
    virtual void pairingInitiated() = 0;
    virtual void streamingInitiated() = 0;
    virtual void streamingStopped() = 0;
    virtual void removeCameraAtIndex(int row, bool fromFavorites) = 0;
    virtual void getKnownZephraDevices() = 0;
    virtual QStringList sortedDeviceList() = 0;
    virtual CameraRecords cameras() = 0;
    virtual QVariantMap getPreferredKS7Cam() = 0;
    virtual bool isPreferredDeviceAddress(const QString &address) = 0;
    virtual void setPreferredDeviceAddress(const QString &address) = 0;
};

/// The agent's end of the USB interface: the parent of a USBControllerAdaptor.
class USBControllerService : public QObject {
    Q_OBJECT
public:
    virtual int startUpdate() = 0;
    virtual bool connectedCamNeedsFirmwareUpdate() = 0;
    virtual int setPassKey(const QString &passKey) = 0;
    virtual bool connectedCamHasBTAddress(const QString &address) = 0;
};
