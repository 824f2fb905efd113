#pragma once

#include "platform/power/PowerManagement.h"
#include "tests/fakes/Journal.h"

#include <cstdint>
#include <vector>

/// Power messages come from send() only.
class FakePowerManagement final : public platform::PowerManagement {
public:
    explicit FakePowerManagement(Journal journal)
        : mJournal(std::move(journal))
    {
    }
    std::uint32_t registerForSystemPower(void *refcon, Callback callback) override;
    void allowPowerChange(std::uint32_t rootPort, void *messageArgument) override;
    void send(std::uint32_t messageType, void *argument);

    /// Arguments of all allowPowerChange() calls.
    std::vector<void *> allowed;
    int registrations = 0;

private:
    Journal mJournal;
    void *mRefcon = nullptr;
    Callback mCallback = nullptr;
};
