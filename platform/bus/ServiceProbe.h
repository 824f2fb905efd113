#pragma once

#include "platform/bus/BusConnection.h"

#include <QDateTime>
#include <QString>
#include <QVariantList>

#include <cstdint>
#include <optional>

namespace platform {

/// Who is there on a bus. Each question is one to the bus itself, which starts nobody, and waits at most for
/// three seconds; a bus that has once let a question time out is not asked again.
class ServiceProbe {
public:
    enum class Presence { NoBus, Absent, Startable, Running };

    explicit ServiceProbe(QDBusConnection::BusType type);

    [[nodiscard]] bool isReachable() const;
    Presence presenceOf(const QString &busName);
    /// The process behind a name; nothing when nobody owns the name.
    std::optional<std::uint32_t> processOf(const QString &busName);

private:
    QVariantList ask(const QString &method, const QVariantList &arguments = {});

    BusConnection mBus;
    bool mHangs = false;
};

/// When a process of this machine was started; an invalid time when it cannot be found out.
QDateTime processStart(std::uint32_t process);

} // namespace platform
