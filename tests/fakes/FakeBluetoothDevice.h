#pragma once

#include "platform/desktop/BluetoothDevice.h"

#include <QString>

#include <utility>

/// A Bluetooth device that only provides a fixed address.
class FakeBluetoothDevice final : public platform::BluetoothDevice {
public:
    explicit FakeBluetoothDevice(QString addressString)
        : address(std::move(addressString))
    {
    }
    [[nodiscard]] QString getAddressString() const override { return address; }
    QString address;
};
