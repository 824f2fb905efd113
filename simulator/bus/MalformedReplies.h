#pragma once

#include <QDBusMessage>
#include <QVariantList>

namespace simulator {

/// Answers that no agent should give.
namespace MalformedReplies {

/// The reply to `call` that takes the place of the proper one, which would bring `proper`:
/// "wrongType", "empty" (no value at all), "extra" (a value too many), "error" (a D-Bus error),
/// "oddValues" (the right type with senseless contents) and "huge" (very much of it).
/// Any other kind gives the proper reply.
QDBusMessage reply(const QDBusMessage &call, const QString &kind, const QVariantList &proper);

} // namespace MalformedReplies

} // namespace simulator
