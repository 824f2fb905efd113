#pragma once

#include <QString>

#include <memory>

namespace platform {

class BusConnection;

/// A Bluetooth device known to the system.
class BluetoothDevice {
public:
    virtual ~BluetoothDevice() = default;

    /// The device's address as hexadecimal pairs with hyphens; a null string if the device has no address or
    /// BlueZ does not reply.
    [[nodiscard]] virtual QString getAddressString() const = 0;
};

/// Makes the device with this BlueZ object path. `bus` is the system bus, which getAddressString() opens. If
/// the bus hangs, only the first call blocks.
std::shared_ptr<BluetoothDevice> makeBlueZDevice(std::shared_ptr<BusConnection> bus,
                                                 const QString &objectPath);

} // namespace platform
