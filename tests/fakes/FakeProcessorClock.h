#pragma once

#include "platform/desktop/ProcessorClock.h"

#include <cstdint>

/// A processor clock with a fixed frequency.
class FakeProcessorClock final : public platform::ProcessorClock {
public:
    std::uint64_t frequency() override { return hertz; }
    std::uint64_t hertz = 2'400'000'000;
};
