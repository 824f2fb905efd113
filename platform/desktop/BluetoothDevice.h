#pragma once

#include <QString>

#include <memory>

namespace platform {

/// A Bluetooth device known to the system.
class BluetoothDevice {
public:
    virtual ~BluetoothDevice() = default;

    /// Hyphen-separated hexadecimal pairs; null if the device has no address.
    [[nodiscard]] virtual QString getAddressString() const = 0;
};

/// The device at a BlueZ object path of the system bus.
std::shared_ptr<BluetoothDevice> makeBlueZDevice(const QString &objectPath);

} // namespace platform
