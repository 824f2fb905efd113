#pragma once

#include <QDBusMessage>
#include <QHash>
#include <QStringList>
#include <QVariantMap>

#include <chrono>
#include <memory>

class AgentWorker;

/// An agent on the session bus with its own thread and connection. Records all calls, of any interface and
/// path, and all posts, in order. Tests set its replies.
class RecordingAgent {
public:
    RecordingAgent();
    ~RecordingAgent();
    RecordingAgent(const RecordingAgent &) = delete;
    RecordingAgent &operator=(const RecordingAgent &) = delete;

    /// Takes a registered name; false when another process owns it.
    bool publish(const QString &registeredName);
    void publishBoth();
    /// Takes a registered name from its present owner.
    bool takeOver(const QString &registeredName);
    void release(const QString &registeredName);
    /// Closes the connection to the bus, as the end of a process does.
    void leaveBus();

    /// Sets the reply of `method`; the values may have any type.
    void answer(const QString &method, const QVariantList &values);
    void answerError(const QString &method,
                     const QString &error = QStringLiteral("org.freedesktop.DBus.Error.Failed"));
    /// Adds two cameras; the desk's is preferred.
    void knowTwoCameras(const QString &kitchen, const QString &desk);
    /// Delays the replies of `method`.
    void answerLate(const QString &method, std::chrono::milliseconds delay);
    /// Records calls of `method` without a reply.
    void hangIn(const QString &method);
    /// Records all calls without a reply.
    void hang();
    /// Replies to every call again; ends the three operations above.
    void replyAgain();
    /// Leaves the bus at the next call of `method` instead of replying.
    void dieIn(const QString &method);

    void post(const QString &name, const QVariantMap &userInfo = {});
    /// Posts a notification with any arguments.
    void postRaw(const QString &name, const QVariantList &arguments);

    /// The messages received since the last call: "flush", "setName Kitchen 00-11", "post KS7ToggleEnabled
    /// Value=1".
    QStringList takeJournal();
    [[nodiscard]] QStringList journal() const;
    /// The last call of `method`; an invalid message if there was none.
    [[nodiscard]] QDBusMessage lastCall(const QString &method) const;
    /// The agent's unique bus name.
    [[nodiscard]] QString uniqueName() const;

private:
    std::unique_ptr<AgentWorker> mWorker;
};
