#pragma once

#include "agent_check/Agent.h"
#include "agent_check/Demand.h"
#include "agent_check/Ear.h"
#include "agent_check/Launched.h"
#include "agent_check/ListReading.h"
#include "agent_check/Options.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace agent_check {

/// What the list's watch has seen while a search ran; see PostDemands.cpp.
struct ListWatch {
    int posts = 0;
    int changes = 0;
    int postsWithoutChange = 0;
    int changesWithoutPost = 0;
};

/// What happened to a settings file that another program has changed; see FileDemands.cpp.
struct SettingsFinding {
    Outcome toggled;
    Outcome seen;
    Outcome foreign;
};

/// All that the demands work with.
class Bench {
public:
    Bench(Options options, const QDBusConnection &bus);

    /// Runs the event loop until the condition holds; false when that takes longer than `limit`, which the
    /// options may stretch.
    bool waitFor(const std::function<bool()> &condition, std::chrono::milliseconds limit) const;
    /// Runs the event loop for that time.
    void listenFor(std::chrono::milliseconds time) const;
    /// Posts as the pane does.
    void post(const QString &name, const QVariantMap &userInfo = {}) const;
    /// The number of the agent's posts of this name since an event's index.
    [[nodiscard]] int posts(const QString &name, int from) const;
    /// The index of the next event, after all that the agent has posted so far.
    int mark() const;
    bool waitForPost(const QString &name, int from, std::chrono::milliseconds limit) const;

    /// The outcome of a demand that depends on a reply with this problem: the operation's own line names it.
    [[nodiscard]] Outcome unjudged(const QString &problem) const;
    /// Whether --allow-changes was given.
    [[nodiscard]] bool mayChange() const { return !options.camera.isEmpty(); }

    const Options options;
    QDBusConnection bus;
    Ear ear;
    Agent agent;
    /// Null for an agent that ran already.
    std::unique_ptr<Launched> launched;

    // What one demand found out for the next ones.
    std::optional<ListReading> list;
    std::optional<ListWatch> watch;
    std::optional<SettingsFinding> settings;
    bool hadPreferencesFile = false;
    std::uint64_t nodeSerial = 0;
};

/// Whether the program was told to end.
bool isInterrupted();

/// Lets SIGINT, SIGTERM and SIGHUP end the check in its order, with everything restored.
void endOnSignals();

/// The reason of all demands that change something.
Outcome skipForChanges();

} // namespace agent_check
