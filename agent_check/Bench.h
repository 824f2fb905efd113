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

/// The list's changes and posts during a search; see PostDemands.cpp.
struct ListWatch {
    int posts = 0;
    int changes = 0;
    int postsWithoutChange = 0;
    int changesWithoutPost = 0;
};

/// The result of a change of the preferences file by another program; see FileDemands.cpp.
struct SettingsFinding {
    Outcome toggled;
    Outcome seen;
    Outcome foreign;
};

/// The objects that the demands share.
class Bench {
public:
    Bench(Options options, const QDBusConnection &bus);

    /// Runs the event loop until the condition holds. Returns false after `limit`, which the option --slow
    /// stretches.
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

    /// Skips a demand that depends on an improper reply, which the operation's own line reports. Fails if
    /// that line is left out.
    [[nodiscard]] Outcome unjudged(const QString &problem) const;
    /// Whether --allow-changes was given.
    [[nodiscard]] bool mayChange() const { return !options.camera.isEmpty(); }

    const Options options;
    QDBusConnection bus;
    Ear ear;
    Agent agent;
    /// Null if the agent was already running.
    std::unique_ptr<Launched> launched;

    // Results of demands that later demands use.
    std::optional<ListReading> list;
    std::optional<ListWatch> watch;
    std::optional<SettingsFinding> settings;
    bool hadPreferencesFile = false;
    std::uint64_t nodeSerial = 0;
};

/// Whether the program was told to end.
bool isInterrupted();

/// Makes SIGINT, SIGTERM and SIGHUP end the check properly, with everything restored.
void endOnSignals();

/// The reason for skipping demands that change something.
Outcome skipForChanges();

} // namespace agent_check
