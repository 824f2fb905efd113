#include "platform/bus/BusCall.h"

#include "platform/bus/BusNames.h"

#include <QDBusError>

namespace platform {

QDBusMessage callAndWait(const QDBusConnection &bus, QDBusMessage call, std::chrono::milliseconds timeout)
{
    call.setAutoStartService(false);
    return bus.call(call, QDBus::Block, static_cast<int>(timeout.count()));
}

bool timedOut(const QDBusMessage &reply)
{
    const auto type = QDBusError(reply).type();
    return type == QDBusError::NoReply || type == QDBusError::Timeout || type == QDBusError::TimedOut;
}

bool saysPeerIsGone(const QDBusMessage &reply)
{
    const auto type = QDBusError(reply).type();
    // NameHasNoOwner also means that the peer is gone: the bus daemon sends it for a call without auto-start
    // if nobody owns the name.
    return type == QDBusError::Disconnected || type == QDBusError::ServiceUnknown
        || reply.errorName() == bus::NameHasNoOwner;
}

} // namespace platform
