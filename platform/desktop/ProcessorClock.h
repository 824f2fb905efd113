#pragma once

#include <QString>

#include <cstdint>
#include <memory>

namespace platform {

/// The clock that the processor is built for.
class ProcessorClock {
public:
    virtual ~ProcessorClock() = default;

    /// Nominal or maximum frequency in hertz; 0 when it cannot be read.
    virtual std::uint64_t frequency() = 0;
};

/// `sysRoot` holds "sys" and "proc"; tests give a folder of their own.
std::shared_ptr<ProcessorClock> makeProcessorClock(const QString &sysRoot = QStringLiteral("/"));

} // namespace platform
