#pragma once

#include <cstdint>

namespace platform {

/// The message types that a power callback receives. Their numbers are fixed.
enum PowerMessage : std::uint32_t {
    kIOMessageCanSystemSleep = 0xE0000270,
    kIOMessageSystemWillSleep = 0xE0000280,
    kIOMessageSystemHasPoweredOn = 0xE0000300,
};

/// The sleep and wake messages of the machine, delivered on the main run loop.
class PowerManagement {
public:
    using Callback = void (*)(void *refcon, std::uint32_t service, std::uint32_t messageType,
                              void *messageArgument);
    virtual ~PowerManagement() = default;

    /// Registers for the life of the process. Returns the handle for allowPowerChange(). Without power
    /// management no message comes.
    virtual std::uint32_t registerForSystemPower(void *refcon, Callback callback) = 0;
    /// Acknowledges the message that brought `messageArgument`: the machine may sleep.
    virtual void allowPowerChange(std::uint32_t rootPort, void *messageArgument) = 0;
};

} // namespace platform
