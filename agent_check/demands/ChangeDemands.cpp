#include "agent/AgentContract.h"
#include "agent/NotificationNames.h"
#include "agent/RemoteNames.h"
#include "agent_check/CheckContext.h"
#include "agent_check/Preferences.h"
#include "agent_check/Translation.h"
#include "agent_check/demands/Demand.h"

using namespace std::chrono_literals;

namespace agent_check {

namespace {

/// Within this time the agent must change its list and post the change.
constexpr auto ChangeTime = 3000ms;
/// After the first post of an event, the check waits for this time and counts surplus posts of the same
/// event.
constexpr auto Burst = 300ms;
constexpr auto SwitchTime = 5000ms;
constexpr auto PassKeyTime = 30000ms;
/// The longest allowed time between two progress reports of a firmware update.
constexpr auto ReportTime = 60000ms;

/// Continues with `rest` if the reply is proper. Otherwise the demand fails with the problem of the reply.
Outcome after(const Answer &answer, const std::function<Outcome()> &rest)
{
    return answer.isProper() ? rest() : fail(answer.problem);
}

QVariantMap recordOf(CheckContext &context)
{
    return ListReading::takeRows(context.agent).cameras.value(context.options.camera);
}

bool isListed(CheckContext &context)
{
    return ListReading::takeRows(context.agent).order.contains(context.options.camera);
}

/// Renames the camera and stores in `posts` how often the agent has posted the change of its list. Returns
/// what went wrong, or an empty text.
QString rename(CheckContext &context, const QString &name, int &posts)
{
    const int from = context.mark();
    const Answer answer = context.agent.ask(QStringLiteral("setName"), {name, context.options.camera});
    if (!answer.isProper())
        return answer.problem;
    if (!context.waitForPost(NotificationNames::CameraListChanged, from, ChangeTime))
        return notPosted(NotificationNames::CameraListChanged);
    context.listenFor(Burst);
    posts = context.posts(NotificationNames::CameraListChanged, from);
    const QString listed = recordOf(context).value(RecordKeys::FriendlyName).toString();
    return listed == name
        ? QString()
        : Translation::tr("the list shows the name \"%1\" instead of \"%2\"").arg(listed, name);
}

Outcome checkRename(CheckContext &context)
{
    const QString old = recordOf(context).value(RecordKeys::FriendlyName).toString();
    const QString name = QStringLiteral("KS-7 Check");
    const Answer valid = context.agent.ask(QStringLiteral("validateName"), {name});
    if (!valid.isProper())
        return fail(valid.problem);
    if (!valid.values.value(0).toBool())
        return fail(Translation::tr("validateName refuses \"%1\"").arg(name));
    int there = 0;
    int back = 0;
    const QString problem = rename(context, name, there);
    const QString problemBack = rename(context, old, back);
    if (!problem.isEmpty() || !problemBack.isEmpty())
        return fail(problem.isEmpty() ? problemBack : problem);
    // An agent must post each renaming once. But a change of the camera's status at the same time can add a
    // post. So fail only if both renamings had surplus posts.
    return there > 1 && back > 1
        ? fail(Translation::tr("one new name was posted %1 times").arg(qMin(there, back)))
        : pass();
}

Outcome checkIgnore(CheckContext &context)
{
    const QVariantMap record = recordOf(context);
    const Answer hidden = context.agent.ask(QStringLiteral("setIgnore"), {true, record});
    const bool isHidden = context.waitFor([&] { return !isListed(context); }, ChangeTime);
    const Answer shown = context.agent.ask(QStringLiteral("setIgnore"), {false, record});
    const bool isShown = context.waitFor([&] { return isListed(context); }, ChangeTime);
    if (!hidden.isProper() || !shown.isProper())
        return fail(hidden.isProper() ? shown.problem : hidden.problem);
    if (!isHidden)
        return fail(Translation::tr("the camera is still listed"));
    return isShown ? pass() : fail(Translation::tr("the camera is not listed again"));
}

QString prefer(CheckContext &context, const QString &address)
{
    const int from = context.mark();
    const Answer answer = context.agent.ask(QStringLiteral("setPreferredDeviceAddress"), {address});
    if (!answer.isProper())
        return answer.problem;
    return context.waitForPost(NotificationNames::PreferredCameraChanged, from, ChangeTime)
        ? QString()
        : notPosted(NotificationNames::PreferredCameraChanged);
}

Outcome checkPrefer(CheckContext &context)
{
    const QString &camera = context.options.camera;
    const ListReading before = ListReading::take(context.agent);
    const QString old = before.order.value(int(before.index));
    if (before.index != NoPreferredCamera && old == camera) {
        QStringList others = before.order;
        others.removeAll(camera);
        if (others.isEmpty())
            return skip(Translation::tr("the camera is preferred already, and the list has no other camera"));
        const QString problem = prefer(context, others.first());
        return judged(problem.isEmpty() ? prefer(context, camera) : problem);
    }
    const QString problem = prefer(context, camera);
    const Answer answer = context.agent.ask(QStringLiteral("isPreferredDeviceAddress"), {camera});
    const bool isPreferred = answer.values.value(0).toBool();
    if (before.index != NoPreferredCamera)
        context.agent.ask(QStringLiteral("setPreferredDeviceAddress"), {old});
    if (!problem.isEmpty())
        return fail(problem);
    if (!answer.isProper())
        return fail(answer.problem);
    return isPreferred ? pass() : fail(preferredReturned(camera, false));
}

QString flip(CheckContext &context, bool on)
{
    const int from = context.mark();
    context.post(NotificationNames::ToggleEnabled, {{UserInfoKeys::Value, on ? 1 : 0}});
    if (!context.waitForPost(NotificationNames::OnOffChanged, from, SwitchTime))
        return notPosted(NotificationNames::OnOffChanged);
    return isServiceOn() == on
        ? QString()
        : Translation::tr("the agent posted KS7OnOffChanged before it stored %1").arg(PreferenceKeys::KS7On);
}

Outcome checkSwitch(CheckContext &context)
{
    const bool wasOn = isServiceOn();
    const QString problem = flip(context, !wasOn);
    const QString problemBack = flip(context, wasOn);
    return judged(problem.isEmpty() ? problemBack : problem);
}

bool isAtCable(CheckContext &context)
{
    const Answer answer =
        context.agent.ask(QStringLiteral("connectedCamHasBTAddress"), {context.options.camera});
    return answer.isProper() && answer.values.value(0).toBool();
}

int resultOf(const RecordedEvent &post)
{
    return post.userInfo.value(UserInfoKeys::Result, -1).toInt();
}

QString badResult(const RecordedEvent &post)
{
    return Translation::tr("%1 has the result %2").arg(post.name).arg(resultOf(post));
}

Outcome checkPassKey(CheckContext &context)
{
    if (context.options.passKey.isEmpty())
        return skip(Translation::tr("the option --passkey is missing"));
    if (!isAtCable(context))
        return skip(Translation::tr("the camera is not on the USB cable"));
    const int from = context.mark();
    return after(context.agent.ask(QStringLiteral("setPassKey"), {context.options.passKey}), [&] {
        context.waitForPost(NotificationNames::PassKeySet, from, PassKeyTime);
        const RecordedEvent *post =
            context.recorder.last(NotificationNames::PassKeySet, context.agent.name(), from);
        if (!post)
            return fail(notPosted(NotificationNames::PassKeySet));
        if (resultOf(*post) != 0)
            return fail(badResult(*post));
        return post->userInfo.value(UserInfoKeys::PassKey).toString() == context.options.passKey
            ? pass()
            : fail(Translation::tr("KS7PassKeySet contains another passkey"));
    });
}

/// Waits until the update has ended. Returns false if the agent posts no progress for ReportTime.
bool waitForEndOfUpdate(const CheckContext &context, int from)
{
    int reports = -1;
    while (context.posts(NotificationNames::FirmwareUpdateEnded, from) == 0 && !isInterrupted()) {
        reports = context.posts(NotificationNames::FirmwareUpdateProgress, from);
        const auto hasNews = [&] {
            return context.posts(NotificationNames::FirmwareUpdateEnded, from) > 0
                || context.posts(NotificationNames::FirmwareUpdateProgress, from) > reports;
        };
        if (!context.waitFor(hasNews, ReportTime))
            return false;
    }
    return !isInterrupted();
}

Outcome checkFirmware(CheckContext &context)
{
    if (!isAtCable(context))
        return skip(Translation::tr("the camera is not on the USB cable"));
    const Answer needed = context.agent.ask(QStringLiteral("connectedCamNeedsFirmwareUpdate"));
    if (!needed.isProper() || !needed.values.value(0).toBool())
        return skip(Translation::tr("the camera needs no firmware update"));
    const int from = context.mark();
    return after(context.agent.ask(QStringLiteral("startUpdate")), [&] {
        if (!waitForEndOfUpdate(context, from))
            return fail(notPosted(NotificationNames::FirmwareUpdateEnded));
        context.listenFor(Burst);
        const int ends = context.posts(NotificationNames::FirmwareUpdateEnded, from);
        if (ends != 1)
            return fail(postedTimes(NotificationNames::FirmwareUpdateEnded, ends));
        const RecordedEvent *end =
            context.recorder.last(NotificationNames::FirmwareUpdateEnded, context.agent.name(), from);
        return resultOf(*end) == 0 ? pass() : fail(badResult(*end));
    });
}

Outcome checkRemove(CheckContext &context)
{
    const ListReading before = ListReading::take(context.agent);
    const int row = int(before.order.indexOf(context.options.camera));
    const int from = context.mark();
    return after(context.agent.ask(QStringLiteral("removeCameraAtIndex"), {row, true}), [&] {
        const Answer dropped = context.agent.ask(QStringLiteral("checkRemoveCurrentCam"),
                                                 {before.cameras.value(context.options.camera)});
        if (!dropped.isProper())
            return fail(dropped.problem);
        if (!context.waitForPost(NotificationNames::CameraListChanged, from, ChangeTime))
            return fail(notPosted(NotificationNames::CameraListChanged));
        const Answer preferred =
            context.agent.ask(QStringLiteral("isPreferredDeviceAddress"), {context.options.camera});
        if (isListed(context))
            return fail(Translation::tr("the camera is still listed"));
        return preferred.values.value(0).toBool() ? fail(Translation::tr("the camera is still preferred"))
                                                  : pass();
    });
}

Demand changeDemand(const char *id, const QString &text, Outcome (*check)(CheckContext &))
{
    return {QLatin1String(id), text, [check](CheckContext &context) {
                if (!context.mayChange())
                    return skipForChanges();
                const ListReading list = ListReading::takeRows(context.agent);
                if (!list.problem.isEmpty())
                    return context.outcomeOfImproperReply(list.problem);
                if (!list.order.contains(context.options.camera))
                    return fail(Translation::tr("the camera %1 is not listed").arg(context.options.camera));
                return check(context);
            }};
}

} // namespace

Demands changeDemands()
{
    return {
        changeDemand("change.name", Translation::tr("A new name is listed and posted once"), checkRename),
        changeDemand(
            "change.ignore",
            Translation::tr("An ignored camera leaves the list, and returns when it is no longer ignored"),
            checkIgnore),
        changeDemand("change.preferred", Translation::tr("A change of the preferred camera is posted"),
                     checkPrefer),
        changeDemand("change.switch",
                     Translation::tr(
                         "After KS7ToggleEnabled, the agent stores the setting, then posts KS7OnOffChanged"),
                     checkSwitch),
        changeDemand("change.passkey", Translation::tr("A new passkey is accepted, then posted"),
                     checkPassKey),
        changeDemand("change.firmware",
                     Translation::tr("A firmware update ends with one KS7FirmwareUpdateEnded"),
                     checkFirmware),
        changeDemand("change.removal", Translation::tr("A removed camera is neither listed nor preferred"),
                     checkRemove),
    };
}

} // namespace agent_check
