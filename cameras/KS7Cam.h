#pragma once

#include "agent/AgentContract.h"

#include <QString>

#include <cstdint>
#include <memory>

namespace platform {
class BluetoothDevice;
class UserDefaults;
}

/// A camera record. It has either a Bluetooth device, whose name is in the preferences, or a name and an ID
/// from the agent.
class KS7Cam {
public:
    /// Returns a new record without a device, which has exactly this name and ID.
    static std::shared_ptr<KS7Cam> camWithName(const QString &name, const QString &cameraID,
                                               std::int32_t status);

    KS7Cam() = default;
    KS7Cam *initWithName(const QString &name, const QString &cameraID, std::int32_t status);
    /// The user's names and the ignored cameras are read from `defaults` and written to it. It must outlive
    /// the record.
    KS7Cam *initWithDevice(std::shared_ptr<platform::BluetoothDevice> device,
                           platform::UserDefaults *defaults);
    /// Returns a new record for the same device, without the status. The copy of a record without a device is
    /// empty.
    [[nodiscard]] std::shared_ptr<KS7Cam> copy() const;

    [[nodiscard]] const std::shared_ptr<platform::BluetoothDevice> &device() const { return mDevice; }
    [[nodiscard]] std::int32_t status() const { return mStatus; }
    void setStatus(std::int32_t status);
    /// Returns whether setStatus() was ever called with "Not Streaming", "Pairing" or "Streaming".
    [[nodiscard]] bool wasFound() const { return mWasFound; }
    /// Returns the name of the status, such as "Streaming"; empty for an unknown status.
    [[nodiscard]] QString statusString() const;

    /// Returns the last four digits of the device's address in upper case, or all of a shorter address. Null
    /// without an address.
    static QString cameraIDStringForDevice(const platform::BluetoothDevice *device);
    static QString defaultFriendlyNameForDevice(const platform::BluetoothDevice *device);
    [[nodiscard]] QString cameraIDString() const;
    [[nodiscard]] QString friendlyName() const;
    /// Stores the user's name for the device. Does nothing without a device.
    void setFriendlyName(const QString &name);
    [[nodiscard]] bool shouldIgnore() const;
    void setShouldIgnore(bool ignore);

private:
    std::shared_ptr<platform::BluetoothDevice> mDevice;
    std::int32_t mStatus = kKS7CamNotFound;
    bool mWasFound = false;
    QString mFriendlyName;
    QString mCameraID;
    platform::UserDefaults *mDefaults = nullptr;
};
