#pragma once

#include <QString>

#include <memory>

namespace platform {

/// A Bluetooth device that the system knows.
class BluetoothDevice {
public:
    virtual ~BluetoothDevice() = default;

    /// Hyphen-separated hexadecimal pairs; a null string when the device tells none.
    [[nodiscard]] virtual QString getAddressString() const = 0;
};

/// The device at a BlueZ object path of the system bus.
std::shared_ptr<BluetoothDevice> makeBlueZDevice(const QString &objectPath);

} // namespace platform
