#include "agent/AgentContract.h"
#include "agent/NotificationNames.h"
#include "agent_check/CheckContext.h"
#include "agent_check/Preferences.h"
#include "agent_check/Translation.h"
#include "agent_check/demands/Demand.h"
#include "platform/bus/BusNames.h"

#include <QDeadlineTimer>

#include <utility>

using namespace std::chrono_literals;

namespace agent_check {

namespace {

constexpr auto StartTime = 3000ms;
constexpr auto SearchTime = 60000ms;
/// After the end of a search, the list is watched for this time. Without a search, it is watched only for
/// this time.
constexpr auto Afterwards = 1000ms;
constexpr auto ReadingInterval = 250ms;
constexpr int MostReadings = 5;
/// After the list has shown a change, the agent must post it within this time.
constexpr auto PostTime = 1000ms;

/// Compares the agent's posts with the changes of its list. Reads the list at intervals and after each post.
class ListWatcher {
public:
    explicit ListWatcher(CheckContext &context)
        : mContext(context)
        , mFrom(context.mark())
        , mLast(ListReading::takeRows(context.agent))
    {
    }

    /// Watches the list until the condition holds. Returns false after `limit`, which --slow multiplies.
    bool watchUntil(const std::function<bool()> &condition, std::chrono::milliseconds limit)
    {
        watch(condition, mContext.options.limit(limit));
        return condition();
    }

    void watchFor(std::chrono::milliseconds time)
    {
        watch([] { return false; }, time);
    }

    [[nodiscard]] const ListWatch &seen() const { return mSeen; }

private:
    void watch(const std::function<bool()> &condition, std::chrono::milliseconds time)
    {
        const QDeadlineTimer deadline(time);
        while (!condition() && !deadline.hasExpired() && !isInterrupted() && mLast.problem.isEmpty()) {
            mContext.waitFor(
                [&, next = QDeadlineTimer(ReadingInterval)] {
                    return condition() || posts() > 0 || next.hasExpired();
                },
                ReadingInterval);
            look();
        }
        // If the list cannot be read, do not read it again. Only wait: the agent's posts are still recorded.
        if (!mLast.problem.isEmpty())
            mContext.waitFor([&] { return condition() || deadline.hasExpired(); }, time);
    }

    [[nodiscard]] int posts() const { return mContext.posts(NotificationNames::CameraListChanged, mFrom); }

    /// Reads the rows. A change between the two calls of a reading would look like two changes with one post,
    /// so reads changed rows again until two readings agree.
    [[nodiscard]] ListReading settledRows() const
    {
        ListReading rows = ListReading::takeRows(mContext.agent);
        ListReading previous = mLast;
        for (int reading = 1; reading < MostReadings; ++reading) {
            if (!rows.problem.isEmpty() || rows.hasSameRows(previous))
                break;
            previous = std::exchange(rows, ListReading::takeRows(mContext.agent));
        }
        return rows;
    }

    void look()
    {
        int posted = posts();
        // Reading the list takes time. Posts that arrive meanwhile are counted by the next look().
        int from = mContext.recorder.nextIndex();
        const ListReading now = settledRows();
        const bool hasChanged = now.problem.isEmpty() && !now.hasSameRows(mLast);
        mLast = now;
        if (hasChanged && posted == 0
            && mContext.waitForPost(NotificationNames::CameraListChanged, from, PostTime)) {
            posted = 1;
            from = mContext.recorder.nextIndex();
        }
        mFrom = from;
        mSeen.posts += posted;
        mSeen.changes += hasChanged ? 1 : 0;
        mSeen.postsWithoutChange += hasChanged ? 0 : posted;
        mSeen.changesWithoutPost += hasChanged && posted == 0 ? 1 : 0;
    }

    CheckContext &mContext;
    int mFrom;
    ListReading mLast;
    ListWatch mSeen;
};

Outcome checkSearch(CheckContext &context)
{
    if (!isServiceOn())
        return skip(Translation::tr("the camera service is switched off"));
    ListWatcher watcher(context);
    const int from = context.mark();
    context.post(NotificationNames::StartDiscovering);
    const auto isPosted = [&](const QString &name) {
        return [&, name] { return context.posts(name, from) > 0; };
    };
    if (!watcher.watchUntil(isPosted(NotificationNames::StartedDiscovering), StartTime))
        return fail(
            Translation::tr("the agent did not post KS7StartedDiscovering in time; is Bluetooth on?"));
    if (!watcher.watchUntil(isPosted(NotificationNames::StoppedDiscovering), SearchTime))
        return fail(notPosted(NotificationNames::StoppedDiscovering));
    watcher.watchFor(Afterwards);
    context.watch = watcher.seen();
    return pass();
}

const ListWatch &watchOf(CheckContext &context)
{
    if (!context.watch) {
        ListWatcher watcher(context);
        watcher.watchFor(Afterwards);
        context.watch = watcher.seen();
    }
    return *context.watch;
}

Outcome checkChangesArePosted(CheckContext &context)
{
    const ListWatch &watch = watchOf(context);
    if (watch.changes == 0)
        return skip(Translation::tr("the list did not change during the check"));
    return watch.changesWithoutPost == 0 ? pass()
                                         : fail(Translation::tr("%1 of %2 changes were not posted")
                                                    .arg(watch.changesWithoutPost)
                                                    .arg(watch.changes));
}

Outcome checkPostsAreChanges(CheckContext &context)
{
    const ListWatch &watch = watchOf(context);
    // Allow some posts without a change: the agent posts two quick changes twice, but one reading of the list
    // may see them as one change.
    const bool isTooOften = watch.postsWithoutChange > 1 && watch.postsWithoutChange > watch.changes;
    return isTooOften
        ? fail(Translation::tr("%1 posts for %2 changes of the list").arg(watch.posts).arg(watch.changes))
        : pass();
}

/// Returns the keys that the user info of this notification must contain. The passkey is a text; all other
/// values are integers.
QStringList requiredKeys(const RecordedEvent &post)
{
    if (post.name == NotificationNames::FirmwareUpdateProgress)
        return {UserInfoKeys::Total, UserInfoKeys::Value};
    if (post.name == NotificationNames::FirmwareUpdateEnded)
        return {UserInfoKeys::Result};
    if (post.name != NotificationNames::PassKeySet)
        return {};
    const bool isSet = post.userInfo.value(UserInfoKeys::Result).toInt() == 0;
    return isSet ? QStringList{UserInfoKeys::Result, UserInfoKeys::PassKey}
                 : QStringList{UserInfoKeys::Result};
}

QString problemOfPost(const RecordedEvent &post)
{
    if (post.signature != platform::bus::UserInfoSignature)
        return Translation::tr("%1 has the signature \"%2\"").arg(post.name, post.signature);
    const QStringList keys = requiredKeys(post);
    for (const QString &key : keys) {
        const auto type = key == UserInfoKeys::PassKey ? QMetaType::QString : QMetaType::Int;
        if (post.userInfo.value(key).userType() != type)
            return Translation::tr("%1 has no value \"%2\" of the right type").arg(post.name, key);
    }
    return {};
}

Outcome checkForm(CheckContext &context)
{
    bool isAnyPosted = false;
    const auto &events = context.recorder.events();
    for (const RecordedEvent &event : events) {
        if (event.isOwnerChange || event.sender != context.agent.name())
            continue;
        isAnyPosted = true;
        const QString problem = problemOfPost(event);
        if (!problem.isEmpty())
            return fail(problem);
    }
    return isAnyPosted ? pass() : skip(Translation::tr("the agent has posted nothing"));
}

} // namespace

Demands postDemands()
{
    return {
        {QStringLiteral("posts.search"),
         Translation::tr("KS7StartDiscovering starts a search. Its start and its end are posted"),
         checkSearch},
        {QStringLiteral("posts.list"), Translation::tr("Each change of the list is posted"),
         checkChangesArePosted},
        {QStringLiteral("posts.often"),
         Translation::tr("KS7CameraListChanged is posted no more often than the list changes"),
         checkPostsAreChanges},
        {QStringLiteral("posts.form"),
         Translation::tr("Each post has one argument a{sv} with the values that its name requires"),
         checkForm},
    };
}

} // namespace agent_check
