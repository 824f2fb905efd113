#pragma once

#include "agent_check/Agent.h"
#include "agent_check/LaunchedAgent.h"
#include "agent_check/NotificationRecorder.h"
#include "agent_check/Options.h"
#include "agent_check/demands/Demand.h"
#include "agent_check/demands/ListReading.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace agent_check {

/// The changes of the list and the posts during a search. PostDemands.cpp counts them.
struct ListWatch {
    int posts = 0;
    int changes = 0;
    int postsWithoutChange = 0;
    int changesWithoutPost = 0;
};

/// The outcomes of a change of the preferences file by another program. FileDemands.cpp determines them.
struct SettingsFinding {
    Outcome toggled;
    Outcome seen;
    Outcome foreign;
};

/// The objects and results that several demands share.
class CheckContext {
public:
    CheckContext(Options options, const QDBusConnection &bus);

    /// Runs the event loop until the condition holds. Returns false after `limit`, which the option --slow
    /// multiplies.
    bool waitFor(const std::function<bool()> &condition, std::chrono::milliseconds limit) const;
    /// Runs the event loop for this time.
    void listenFor(std::chrono::milliseconds time) const;
    /// Posts a notification to the agent, as the pane would.
    void post(const QString &name, const QVariantMap &userInfo = {}) const;
    /// Counts the agent's posts of this name, from the event with the index `from` on.
    [[nodiscard]] int posts(const QString &name, int from) const;
    /// Waits for all earlier posts of the agent. Returns the index that the next event will have.
    int mark() const;
    bool waitForPost(const QString &name, int from, std::chrono::milliseconds limit) const;

    /// The outcome of a demand that cannot be checked because of an improper reply: a skip if the group
    /// "operation" is checked too, because that group reports the reply. Otherwise a failure with `problem`.
    [[nodiscard]] Outcome outcomeOfImproperReply(const QString &problem) const;
    /// Returns whether the option --allow-changes names a camera that the checks may change.
    [[nodiscard]] bool mayChange() const { return !options.camera.isEmpty(); }

    const Options options;
    QDBusConnection bus;
    NotificationRecorder recorder;
    Agent agent;
    /// The agent's program, if this check has started it. Null if the agent was already running.
    std::unique_ptr<LaunchedAgent> launched;

    // Results of earlier demands that later demands use.
    std::optional<ListReading> list;
    std::optional<ListWatch> watch;
    std::optional<SettingsFinding> settings;
    bool hadPreferencesFile = false;
    std::uint64_t nodeSerial = 0;
};

/// Returns whether SIGINT, SIGTERM or SIGHUP has arrived.
bool isInterrupted();

/// Makes SIGINT, SIGTERM and SIGHUP end the check early, but only after all changes are undone.
void endOnSignals();

/// The outcome of demands that change something, if --allow-changes is not given.
Outcome skipForChanges();

// Details of outcomes that several groups of demands use.
QString notPosted(const QString &notification);
QString postedTimes(const QString &notification, int times);
QString withoutOwner(const QString &busName);
QString preferredReturned(const QString &address, bool returned);

} // namespace agent_check
