#pragma once

#include <QDBusConnection>
#include <QDBusMessage>

#include <chrono>

namespace platform {

/// Time limit of one call's reply, and of a bus that has to accept a connection.
inline constexpr std::chrono::milliseconds CallTimeout{3000};

/// Sends a method call that starts no service. Blocks until the reply or the timeout; no event loop runs.
QDBusMessage callAndWait(const QDBusConnection &bus, QDBusMessage call,
                         std::chrono::milliseconds timeout = CallTimeout);
/// Whether no reply arrived in time. The bus sends the same error (NoReply) when the peer exits without a
/// reply.
bool timedOut(const QDBusMessage &reply);
/// Whether the error means that the peer or the bus is gone. Qt does not name an error's sender, so a peer
/// can send this error too.
bool saysPeerIsGone(const QDBusMessage &reply);

} // namespace platform
