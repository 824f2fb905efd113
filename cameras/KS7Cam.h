#pragma once

#include "agent/AgentContract.h"

#include <QString>

#include <cstdint>
#include <memory>

namespace platform {
class BluetoothDevice;
class UserDefaults;
}

/// One camera: either a Bluetooth device, named through the preferences, or what the agent told of it.
class KS7Cam {
public:
    /// A record that answers with exactly these strings; the caller owns it.
    static std::shared_ptr<KS7Cam> camWithName(const QString &name, const QString &cameraID,
                                               std::int32_t status);

    KS7Cam() = default;
    KS7Cam *initWithName(const QString &name, const QString &cameraID, std::int32_t status);
    /// `defaults` holds the names and the ignored cameras; it must outlive the record.
    KS7Cam *initWithDevice(std::shared_ptr<platform::BluetoothDevice> device,
                           platform::UserDefaults *defaults);
    /// A new record of the same device and nothing else: without a device, an empty record.
    [[nodiscard]] std::shared_ptr<KS7Cam> copy() const;

    [[nodiscard]] const std::shared_ptr<platform::BluetoothDevice> &device() const { return mDevice; }
    [[nodiscard]] std::int32_t status() const { return mStatus; }
    void setStatus(std::int32_t status);
    /// Whether the camera has been seen alive through setStatus().
    [[nodiscard]] bool wasFound() const { return mWasFound; }
    /// "Streaming" and the like; empty for an unknown code.
    [[nodiscard]] QString statusString() const;

    /// Last four digits of the device's address, upper-cased; null when it tells no address, all of them
    /// when there are fewer than four.
    static QString cameraIDStringForDevice(const platform::BluetoothDevice *device);
    static QString defaultFriendlyNameForDevice(const platform::BluetoothDevice *device);
    [[nodiscard]] QString cameraIDString() const;
    [[nodiscard]] QString friendlyName() const;
    /// Stores the user's name for the device; without a device nothing is written.
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
