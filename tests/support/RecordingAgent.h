#pragma once

#include <QDBusMessage>
#include <QHash>
#include <QStringList>
#include <QVariantMap>

#include <chrono>
#include <memory>

class AgentWorker;

/// An agent on the session bus, in a thread and with a bus connection of its own, that writes down every
/// message that reaches it, in order: calls of any interface on any path, and what is posted. It answers as
/// it is told.
class RecordingAgent {
public:
    RecordingAgent();
    ~RecordingAgent();
    RecordingAgent(const RecordingAgent &) = delete;
    RecordingAgent &operator=(const RecordingAgent &) = delete;

    /// Takes a registered name; false when somebody else has it.
    bool publish(const QString &registeredName);
    void publishBoth();
    /// Takes a registered name from the agent that has it.
    bool takeOver(const QString &registeredName);
    void release(const QString &registeredName);
    /// Leaves the bus, as the end of a process does.
    void leaveBus();

    /// From now on `method` answers these values, of whatever types.
    void answer(const QString &method, const QVariantList &values);
    void answerError(const QString &method,
                     const QString &error = QStringLiteral("org.freedesktop.DBus.Error.Failed"));
    /// From now on there are a kitchen's camera and a desk's, which is preferred.
    void knowTwoCameras(const QString &kitchen, const QString &desk);
    /// From now on `method` is answered this long after it was heard.
    void answerLate(const QString &method, std::chrono::milliseconds delay);
    /// From now on `method` is heard and never answered.
    void hangIn(const QString &method);
    /// From now on every call is heard and never answered.
    void hang();
    /// From now on every call is answered, as before any of the three above.
    void replyAgain();
    /// `method` is the last one that the agent hears: it leaves the bus instead of answering.
    void dieIn(const QString &method);

    void post(const QString &name, const QVariantMap &userInfo = {});
    /// A broadcast with these arguments, whatever they are.
    void postRaw(const QString &name, const QVariantList &arguments);

    /// What has reached the agent since the last time: "flush", "setName Kitchen 00-11", "post
    /// KS7ToggleEnabled Value=1".
    QStringList takeJournal();
    [[nodiscard]] QStringList journal() const;
    /// The last call of `method`, a message of no type when there was none.
    [[nodiscard]] QDBusMessage lastCall(const QString &method) const;
    /// The unique name that the agent has on the bus.
    [[nodiscard]] QString uniqueName() const;

private:
    std::unique_ptr<AgentWorker> mWorker;
};
