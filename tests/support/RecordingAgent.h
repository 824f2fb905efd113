#pragma once

#include <QDBusMessage>
#include <QHash>
#include <QStringList>
#include <QVariantMap>

#include <chrono>
#include <memory>

class AgentWorker;

/// An agent on the session bus, with its own thread and connection. It records all posts and all calls of any
/// interface and path, in order. Tests set its replies.
class RecordingAgent {
public:
    RecordingAgent();
    ~RecordingAgent();
    RecordingAgent(const RecordingAgent &) = delete;
    RecordingAgent &operator=(const RecordingAgent &) = delete;

    /// Registers a bus name. Returns false if another process owns the name.
    bool publish(const QString &registeredName);
    void publishBoth();
    /// Takes over a bus name from its present owner.
    bool takeOver(const QString &registeredName);
    void release(const QString &registeredName);
    /// Closes the connection to the bus, as if the process had ended.
    void leaveBus();

    /// Sets the reply of `method`. The values may have types that the interface does not declare.
    void answer(const QString &method, const QVariantList &values);
    void answerError(const QString &method,
                     const QString &error = QStringLiteral("org.freedesktop.DBus.Error.Failed"));
    /// Adds two cameras and makes the one on the desk the preferred camera.
    void knowTwoCameras(const QString &kitchen, const QString &desk);
    /// Delays all replies of `method`.
    void answerLate(const QString &method, std::chrono::milliseconds delay);
    /// Records calls of `method`, but does not reply to them.
    void hangIn(const QString &method);
    /// Records all calls, but replies to none.
    void hang();
    /// Ends the effects of answerLate(), hangIn() and hang(): the agent replies to every call again.
    void replyAgain();
    /// Makes the agent leave the bus at the next call of `method` instead of replying.
    void dieIn(const QString &method);

    void post(const QString &name, const QVariantMap &userInfo = {});
    /// Posts a notification whose arguments may have any types.
    void postRaw(const QString &name, const QVariantList &arguments);

    /// Returns the messages received since the last call, such as "flush", "setName Kitchen 00-11" or "post
    /// KS7ToggleEnabled Value=1".
    QStringList takeJournal();
    [[nodiscard]] QStringList journal() const;
    /// The last call of `method`. An invalid message if no call was received.
    [[nodiscard]] QDBusMessage lastCall(const QString &method) const;
    /// The agent's unique bus name.
    [[nodiscard]] QString uniqueName() const;

private:
    std::unique_ptr<AgentWorker> mWorker;
};
