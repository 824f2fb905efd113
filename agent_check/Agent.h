#pragma once

#include "agent_check/Declarations.h"

#include <QDBusConnection>
#include <QDBusPendingCall>
#include <QSet>
#include <QVariant>

#include <chrono>
#include <optional>

namespace agent_check {

/// The reply to a call of one of the agent's operations.
struct Answer {
    /// The reason why the reply is improper. Empty for a reply with the declared types.
    QString problem;
    QVariantList values;

    [[nodiscard]] bool isProper() const { return problem.isEmpty(); }
};

/// The agent under test. It is identified by the unique owners of its two bus names.
class Agent {
public:
    Agent(const QDBusConnection &bus, int slowness);

    /// Stores the current owners of both bus names as the agent under test.
    void find();
    /// Returns the unique owner of a registered name, as find() stored it; empty without an owner.
    [[nodiscard]] QString owner(const QString &registeredName) const;
    /// Returns the unique owner of KS7AgentServer, as find() stored it.
    [[nodiscard]] QString name() const;
    /// Returns the process ID of a bus name's owner; nothing if the bus does not know it.
    [[nodiscard]] std::optional<uint> processOf(const QString &busName) const;
    /// Returns whether the owners of both bus names are still those that find() stored.
    [[nodiscard]] bool isThere() const;

    /// Calls an operation and waits for the reply, with the pane's timeout. After a timeout of an operation,
    /// its further calls fail at once.
    Answer ask(const QString &operation, const QVariantList &arguments = {});
    QDBusPendingCall begin(const QString &operation, const QVariantList &arguments = {}) const;
    /// Waits for the reply to a call that begin() has sent.
    Answer end(const QString &operation, QDBusPendingCall call);
    /// Returns the introspection data of the object behind a registered name; empty if the agent gives none.
    [[nodiscard]] QByteArray introspection(const QString &registeredName) const;
    /// Returns whether the agent counts as hung: several of its operations have timed out, or a ping that was
    /// sent after a timeout has timed out too.
    [[nodiscard]] bool isHung() const { return mIsHung; }
    [[nodiscard]] bool hasTimedOut() const { return !mSilent.isEmpty(); }
    /// Returns the pane's timeout for an operation, multiplied by the factor of --slow.
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
