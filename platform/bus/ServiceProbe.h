#pragma once

#include "platform/bus/BusConnection.h"

#include <QDateTime>
#include <QString>
#include <QVariantList>

#include <cstdint>
#include <optional>

namespace platform {

/// Finds the owners of bus names. It asks the bus daemon only, so no service is started. Each call takes
/// three seconds at most; after one timeout the bus is not asked again.
class ServiceProbe {
public:
    enum class Presence { NoBus, Absent, Startable, Running };

    explicit ServiceProbe(QDBusConnection::BusType type);

    [[nodiscard]] bool isReachable() const;
    Presence presenceOf(const QString &busName);
    /// Process ID of the name's owner; nothing when nobody owns the name.
    std::optional<std::uint32_t> processOf(const QString &busName);

private:
    QVariantList ask(const QString &method, const QVariantList &arguments = {});

    BusConnection mBus;
    bool mHangs = false;
};

/// Start time of a local process; invalid when it cannot be determined.
QDateTime processStart(std::uint32_t process);

} // namespace platform
