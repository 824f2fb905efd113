#pragma once

#include "platform/power/PowerManagement.h"
#include "tests/fakes/Journal.h"

#include <cstdint>
#include <vector>

/// A power service that delivers a power message only when the test calls send().
class FakePowerManagement final : public platform::PowerManagement {
public:
    explicit FakePowerManagement(Journal journal)
        : mJournal(std::move(journal))
    {
    }
    std::uint32_t registerForSystemPower(void *refcon, Callback callback) override;
    void allowPowerChange(std::uint32_t rootPort, void *messageArgument) override;
    void send(std::uint32_t messageType, void *argument);

    /// The arguments of all calls of allowPowerChange(), in order.
    std::vector<void *> allowed;
    int registrations = 0;

private:
    Journal mJournal;
    void *mRefcon = nullptr;
    Callback mCallback = nullptr;
};
