#pragma once

#include <QStringList>
#include <QVariantList>

#include <deque>

namespace simulator {

/// Records calls and posts to the agent, in order. Drops the oldest beyond a limit.
class Recorder {
public:
    /// Recorded as `name("text", 1, true)`.
    void recordCall(const QString &operation, const QVariantList &arguments);
    /// Recorded as `name` or, with user info, as `name {"Value":1}`.
    void recordPost(const QString &name, const QVariantMap &userInfo);
    void clear() { mEvents.clear(); }

    [[nodiscard]] QStringList calls() const;
    [[nodiscard]] QStringList posts() const;
    /// Calls and posts in their common order.
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
