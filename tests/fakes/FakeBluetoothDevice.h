#pragma once

#include "platform/desktop/BluetoothDevice.h"

#include <QString>

#include <utility>

/// A device that has an address and nothing else.
class FakeBluetoothDevice final : public platform::BluetoothDevice {
public:
    explicit FakeBluetoothDevice(QString addressString)
        : address(std::move(addressString))
    {
    }
    [[nodiscard]] QString getAddressString() const override { return address; }
    QString address;
};
