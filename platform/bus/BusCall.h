#pragma once

#include <QDBusConnection>
#include <QDBusMessage>

#include <chrono>

namespace platform {

/// How long the pane waits for one reply, and for a bus to accept a connection.
inline constexpr std::chrono::milliseconds CallTimeout{3000};

/// Sends a method call that starts no service, and blocks until the reply or the timeout. No event loop runs.
QDBusMessage callAndWait(const QDBusConnection &bus, QDBusMessage call,
                         std::chrono::milliseconds timeout = CallTimeout);
/// Whether no reply came in time. The bus says the same when the peer left without a reply.
bool timedOut(const QDBusMessage &reply);
/// Whether the error is the one for a peer or a bus that is gone. A peer may send it as well: Qt does not
/// tell the sender of an error.
bool saysPeerIsGone(const QDBusMessage &reply);

} // namespace platform
