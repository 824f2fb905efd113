#pragma once

#include "platform/bus/BusConnection.h"

#include <QDateTime>
#include <QString>
#include <QVariantList>

#include <cstdint>
#include <optional>

namespace platform {

/// Finds the owners of bus names. It calls the bus daemon only, so that no service is started. Only the first
/// question to a hung bus waits, for at most three seconds. The time for opening the bus starts with the
/// probe, so that probes of several buses wait together.
class ServiceProbe {
public:
    enum class Presence { NoBus, Absent, Startable, Running };

    explicit ServiceProbe(QDBusConnection::BusType type);

    [[nodiscard]] bool isReachable();
    Presence presenceOf(const QString &busName);
    /// Returns the process ID of the name's owner, or nothing if there is no owner or no reply.
    std::optional<std::uint32_t> processOf(const QString &busName);

private:
    QVariantList ask(const QString &method, const QVariantList &arguments = {});

    BusConnection mBus;
    bool mHangs = false;
};

/// Start time of a local process; invalid when it cannot be determined.
QDateTime processStart(std::uint32_t process);

} // namespace platform
