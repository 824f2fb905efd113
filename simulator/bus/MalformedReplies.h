#pragma once

#include <QDBusMessage>
#include <QVariantList>

namespace simulator {

/// Replies that break the agent's interface.
namespace MalformedReplies {

/// Replaces the reply to `call` with the values `proper`. Kinds: "wrongType", "empty" (no value),
/// "extra" (one value too many), "error" (a D-Bus error), "oddValues" (right types, senseless contents)
/// and "huge" (very long contents). Any other kind gives the proper reply.
QDBusMessage reply(const QDBusMessage &call, const QString &kind, const QVariantList &proper);

} // namespace MalformedReplies

} // namespace simulator
