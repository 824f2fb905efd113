#pragma once

#include <QDBusConnection>
#include <QDBusMessage>

#include <chrono>

namespace platform {

/// Time limit for the reply to one call, and for a bus to reply while a connection is being opened.
inline constexpr std::chrono::milliseconds CallTimeout{3000};

/// Sends a method call that does not auto-start the service. Blocks until the reply or the timeout, without
/// running an event loop.
QDBusMessage callAndWait(const QDBusConnection &bus, QDBusMessage call,
                         std::chrono::milliseconds timeout = CallTimeout);
/// Whether the reply reports a timeout. Also true if the peer exited before it replied, because the bus then
/// sends the same error (NoReply).
bool timedOut(const QDBusMessage &reply);
/// Whether the error says that the peer or the bus is gone. Qt does not tell who sent an error, so a running
/// peer can send this one, too.
bool saysPeerIsGone(const QDBusMessage &reply);

} // namespace platform
