#pragma once

#include <QStringList>
#include <QVariantList>

#include <deque>

namespace simulator {

/// Records the calls and notifications that the agent receives, in their order. Beyond a limit it drops the
/// oldest ones.
class Recorder {
public:
    /// Records a call in the form `name("text", 1, true)`.
    void recordCall(const QString &operation, const QVariantList &arguments);
    /// Records a notification in the form `name`, or `name {"Value":1}` if it has user info.
    void recordPost(const QString &name, const QVariantMap &userInfo);
    void clear() { mEvents.clear(); }

    [[nodiscard]] QStringList calls() const;
    [[nodiscard]] QStringList posts() const;
    /// Returns calls and notifications together, in the order in which they arrived.
    [[nodiscard]] QStringList events() const;

private:
    enum class Kind { Call, Post };
    struct Event {
        Kind kind;
        QString text;
    };
    void record(Kind kind, const QString &text);
    [[nodiscard]] QStringList texts(Kind kind) const;

    std::deque<Event> mEvents;
};

} // namespace simulator
