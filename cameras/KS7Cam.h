#pragma once

#include "agent/AgentContract.h"

#include <QString>

#include <cstdint>
#include <memory>

namespace platform {
class BluetoothDevice;
class UserDefaults;
}

/// One camera: a Bluetooth device named in the preferences, or a record with the agent's name and ID.
class KS7Cam {
public:
    /// A record with exactly these strings; the caller owns it.
    static std::shared_ptr<KS7Cam> camWithName(const QString &name, const QString &cameraID,
                                               std::int32_t status);

    KS7Cam() = default;
    KS7Cam *initWithName(const QString &name, const QString &cameraID, std::int32_t status);
    /// `defaults` stores the names and the ignored cameras, and must outlive the record.
    KS7Cam *initWithDevice(std::shared_ptr<platform::BluetoothDevice> device,
                           platform::UserDefaults *defaults);
    /// A new record of the same device and nothing else; empty without a device.
    [[nodiscard]] std::shared_ptr<KS7Cam> copy() const;

    [[nodiscard]] const std::shared_ptr<platform::BluetoothDevice> &device() const { return mDevice; }
    [[nodiscard]] std::int32_t status() const { return mStatus; }
    void setStatus(std::int32_t status);
    /// Whether setStatus() ever set a live status.
    [[nodiscard]] bool wasFound() const { return mWasFound; }
    /// For example "Streaming"; empty for an unknown code.
    [[nodiscard]] QString statusString() const;

    /// The last four digits of the device's address in upper case, or all if there are fewer. Null without
    /// an address.
    static QString cameraIDStringForDevice(const platform::BluetoothDevice *device);
    static QString defaultFriendlyNameForDevice(const platform::BluetoothDevice *device);
    [[nodiscard]] QString cameraIDString() const;
    [[nodiscard]] QString friendlyName() const;
    /// Stores the user's name for the device; does nothing without a device.
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
