#pragma once

#include "agent_check/Declarations.h"

#include <QDBusConnection>
#include <QDBusPendingCall>
#include <QSet>
#include <QVariant>

#include <chrono>
#include <optional>

namespace agent_check {

/// The reply to a call of one operation.
struct Answer {
    /// The reason why the reply is improper; empty for a reply of the declared types.
    QString problem;
    QVariantList values;

    [[nodiscard]] bool isProper() const { return problem.isEmpty(); }
};

/// The agent under test, identified by the owners of its two names.
class Agent {
public:
    Agent(const QDBusConnection &bus, int slowness);

    /// Looks the owners of both names up.
    void find();
    /// The unique owner of a registered name; empty when there is none.
    [[nodiscard]] QString owner(const QString &registeredName) const;
    /// The owner of the camera side.
    [[nodiscard]] QString name() const;
    /// The process ID behind a bus name; nothing if the bus knows none.
    [[nodiscard]] std::optional<uint> processOf(const QString &busName) const;
    /// Whether the owners have stayed the same since find().
    [[nodiscard]] bool isThere() const;

    /// Calls and waits like the pane. An operation whose call has timed out is not called again.
    Answer ask(const QString &operation, const QVariantList &arguments = {});
    QDBusPendingCall begin(const QString &operation, const QVariantList &arguments = {}) const;
    /// Waits for the reply.
    Answer end(const QString &operation, QDBusPendingCall call);
    /// The introspection text of the object; empty when the agent gives none.
    [[nodiscard]] QByteArray introspection(const QString &registeredName) const;
    /// Whether the agent has stopped replying: several operations, or a ping after a time-out, had no reply.
    [[nodiscard]] bool isHung() const { return mIsHung; }
    [[nodiscard]] bool hasTimedOut() const { return !mSilent.isEmpty(); }
    /// The pane's time-out for the operation.
    [[nodiscard]] std::chrono::milliseconds timeOf(const QString &operation) const;

private:
    [[nodiscard]] QString ownerNow(const QString &registeredName) const;
    void timedOut(const Operation &operation);
    QString problemOf(const Operation &operation, const QDBusMessage &reply);

    QDBusConnection mBus;
    const int mSlowness;
    QString mOwner;
    QString mOwnerUSB;
    QSet<QString> mSilent;
    bool mIsHung = false;
};

} // namespace agent_check
