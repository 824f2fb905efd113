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
/// Whether the call failed because the peer or the bus is gone or keeps silent. Errors that the peer itself
/// sent are replies and do not count.
bool isLinkLost(const QDBusMessage &reply, const QString &peer);

} // namespace platform
