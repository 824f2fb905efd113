#pragma once

#include <QString>

#include <memory>

namespace platform {

class BusConnection;

/// A Bluetooth device known to the system.
class BluetoothDevice {
public:
    virtual ~BluetoothDevice() = default;

    /// Hyphen-separated hexadecimal pairs; null if the device has no address.
    [[nodiscard]] virtual QString getAddressString() const = 0;
};

/// The device at a BlueZ object path. `bus` is the system bus, opened by the first question. A bus that hangs
/// is waited for once.
std::shared_ptr<BluetoothDevice> makeBlueZDevice(std::shared_ptr<BusConnection> bus,
                                                 const QString &objectPath);

} // namespace platform
