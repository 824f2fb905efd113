#pragma once

#include <cstdint>

namespace platform {

/// The types of messages that a power callback receives. Callbacks get them as plain integers, so the numbers
/// must not change.
enum PowerMessage : std::uint32_t {
    kIOMessageCanSystemSleep = 0xE0000270,
    kIOMessageSystemWillSleep = 0xE0000280,
    kIOMessageSystemHasPoweredOn = 0xE0000300,
};

/// Delivers the machine's sleep and wake messages on the main thread.
class PowerManagement {
public:
    using Callback = void (*)(void *refcon, std::uint32_t service, std::uint32_t messageType,
                              void *messageArgument);
    virtual ~PowerManagement() = default;

    /// Registers a callback until the process ends and returns the handle for allowPowerChange(). On a system
    /// without power management, the callback is never called.
    virtual std::uint32_t registerForSystemPower(void *refcon, Callback callback) = 0;
    /// Answers the message that had this `messageArgument`: the machine may sleep.
    virtual void allowPowerChange(std::uint32_t rootPort, void *messageArgument) = 0;
};

} // namespace platform
