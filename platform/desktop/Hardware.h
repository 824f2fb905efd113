#pragma once

#include <QString>

#include <cstdint>
#include <memory>

namespace platform {

/// The modifier keys held at this very moment.
class KeyboardModifiers {
public:
    static constexpr std::uint32_t OptionKey = 0x0800;
    virtual ~KeyboardModifiers() = default;

    /// Bit mask of the keys held; OptionKey is the Alt key.
    virtual std::uint32_t currentKeyModifiers() = 0;
};

/// The clock that the processor is built for.
class ProcessorClock {
public:
    virtual ~ProcessorClock() = default;

    /// Nominal or maximum frequency in hertz; 0 when it cannot be read.
    virtual std::uint64_t frequency() = 0;
};

/// A Bluetooth device that the system knows.
class BluetoothDevice {
public:
    virtual ~BluetoothDevice() = default;

    /// Hyphen-separated hexadecimal pairs; a null string when the device tells none.
    [[nodiscard]] virtual QString getAddressString() const = 0;
};

std::shared_ptr<KeyboardModifiers> makeKeyboardModifiers();

/// `sysRoot` holds "sys" and "proc"; tests give a folder of their own.
std::shared_ptr<ProcessorClock> makeProcessorClock(const QString &sysRoot = QStringLiteral("/"));

/// The device at a BlueZ object path of the system bus.
std::shared_ptr<BluetoothDevice> makeBlueZDevice(const QString &objectPath);

} // namespace platform
