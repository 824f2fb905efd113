#pragma once

#include "platform/bus/BusConnection.h"

#include <QDateTime>
#include <QString>
#include <QVariantList>

#include <cstdint>
#include <optional>

namespace platform {

/// Finds the owners of bus names. It calls the bus daemon only, so that no service is started. Each call
/// takes at most three seconds, and no call is sent after a timeout.
class ServiceProbe {
public:
    enum class Presence { NoBus, Absent, Startable, Running };

    explicit ServiceProbe(QDBusConnection::BusType type);

    [[nodiscard]] bool isReachable() const;
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
