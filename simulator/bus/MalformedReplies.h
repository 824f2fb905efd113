#pragma once

#include <QDBusMessage>
#include <QVariantList>

namespace simulator {

/// Replies that violate the contract, to test how the pane handles a faulty agent.
namespace MalformedReplies {

/// Returns a malformed reply to `call`, made from the proper results. The kinds are: "wrongType", "empty" (no
/// result), "extra" (one result too many), "error" (a D-Bus error), "oddValues" (right types, senseless
/// values) and "huge" (very long values). Any other kind gives the proper reply.
QDBusMessage reply(const QDBusMessage &call, const QString &kind, const QVariantList &proper);

} // namespace MalformedReplies

} // namespace simulator
