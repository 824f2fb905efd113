#pragma once

#include <QString>

#include <cstdint>
#include <memory>

namespace platform {

/// The nominal clock of the processor.
class ProcessorClock {
public:
    virtual ~ProcessorClock() = default;

    /// Nominal or maximum frequency in hertz, never the momentary one; 0 when the system reports none.
    virtual std::uint64_t frequency() = 0;
};

/// `sysRoot` is the folder that contains `sys` and `proc`. Tests pass a folder of their own.
std::shared_ptr<ProcessorClock> makeProcessorClock(const QString &sysRoot = QStringLiteral("/"));

} // namespace platform
