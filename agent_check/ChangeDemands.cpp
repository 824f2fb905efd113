#include "agent/AgentContract.h"
#include "agent/NotificationNames.h"
#include "agent/RemoteNames.h"
#include "agent_check/Bench.h"
#include "agent_check/Demand.h"
#include "agent_check/Preferences.h"
#include "agent_check/Words.h"

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

QVariantMap recordOf(Bench &bench)
{
    return ListReading::takeRows(bench.agent).cameras.value(bench.options.camera);
}

bool isListed(Bench &bench)
{
    return ListReading::takeRows(bench.agent).order.contains(bench.options.camera);
}

/// Renames the camera and stores in `posts` how often the agent has posted the change of its list. Returns
/// what went wrong, or an empty text.
QString rename(Bench &bench, const QString &name, int &posts)
{
    const int from = bench.mark();
    const Answer answer = bench.agent.ask(QStringLiteral("setName"), {name, bench.options.camera});
    if (!answer.isProper())
        return answer.problem;
    if (!bench.waitForPost(NotificationNames::CameraListChanged, from, ChangeTime))
        return Words::tr("KS7CameraListChanged has not come");
    bench.listenFor(Burst);
    posts = bench.posts(NotificationNames::CameraListChanged, from);
    const QString listed = recordOf(bench).value(RecordKeys::FriendlyName).toString();
    return listed == name ? QString() : Words::tr("the list has \"%1\" instead of \"%2\"").arg(listed, name);
}

Outcome checkRename(Bench &bench)
{
    const QString old = recordOf(bench).value(RecordKeys::FriendlyName).toString();
    const QString name = QStringLiteral("KS-7 Check");
    const Answer valid = bench.agent.ask(QStringLiteral("validateName"), {name});
    if (!valid.isProper() || !valid.values.value(0).toBool())
        return fail(Words::tr("validateName refuses \"%1\"").arg(name));
    int there = 0;
    int back = 0;
    const QString problem = rename(bench, name, there);
    const QString problemBack = rename(bench, old, back);
    if (!problem.isEmpty() || !problemBack.isEmpty())
        return fail(problem.isEmpty() ? problemBack : problem);
    // An agent must post each renaming once. But a change of the camera's status at the same time can add a
    // post. So fail only if both renamings had surplus posts.
    return there > 1 && back > 1 ? fail(Words::tr("one change is posted %1 times").arg(qMin(there, back)))
                                 : pass();
}

Outcome checkIgnore(Bench &bench)
{
    const QVariantMap record = recordOf(bench);
    const Answer hidden = bench.agent.ask(QStringLiteral("setIgnore"), {true, record});
    const bool isHidden = bench.waitFor([&] { return !isListed(bench); }, ChangeTime);
    const Answer shown = bench.agent.ask(QStringLiteral("setIgnore"), {false, record});
    const bool isShown = bench.waitFor([&] { return isListed(bench); }, ChangeTime);
    if (!hidden.isProper() || !shown.isProper())
        return fail(hidden.isProper() ? shown.problem : hidden.problem);
    if (!isHidden)
        return fail(Words::tr("the camera is still listed"));
    return isShown ? pass() : fail(Words::tr("the camera is not listed again"));
}

QString prefer(Bench &bench, const QString &address)
{
    const int from = bench.mark();
    const Answer answer = bench.agent.ask(QStringLiteral("setPreferredDeviceAddress"), {address});
    if (!answer.isProper())
        return answer.problem;
    return bench.waitForPost(NotificationNames::PreferredCameraChanged, from, ChangeTime)
        ? QString()
        : Words::tr("KS7PreferredCameraChanged has not come");
}

Outcome checkPrefer(Bench &bench)
{
    const QString &camera = bench.options.camera;
    const ListReading before = ListReading::take(bench.agent);
    const QString old = before.order.value(int(before.index));
    if (before.index != NoPreferredCamera && old == camera) {
        QStringList others = before.order;
        others.removeAll(camera);
        if (others.isEmpty())
            return skip(Words::tr("the camera is preferred, and there is no other one"));
        const QString problem = prefer(bench, others.first());
        return judged(problem.isEmpty() ? prefer(bench, camera) : problem);
    }
    const QString problem = prefer(bench, camera);
    const Answer answer = bench.agent.ask(QStringLiteral("isPreferredDeviceAddress"), {camera});
    const bool isPreferred = answer.isProper() && answer.values.value(0).toBool();
    if (before.index != NoPreferredCamera)
        bench.agent.ask(QStringLiteral("setPreferredDeviceAddress"), {old});
    if (!problem.isEmpty())
        return fail(problem);
    return isPreferred ? pass() : fail(Words::tr("isPreferredDeviceAddress is false for it"));
}

QString flip(Bench &bench, bool on)
{
    const int from = bench.mark();
    bench.post(NotificationNames::ToggleEnabled, {{UserInfoKeys::Value, on ? 1 : 0}});
    if (!bench.waitForPost(NotificationNames::OnOffChanged, from, SwitchTime))
        return Words::tr("KS7OnOffChanged has not come");
    return isServiceOn() == on
        ? QString()
        : Words::tr("%1 is not stored when KS7OnOffChanged comes").arg(PreferenceKeys::KS7On);
}

Outcome checkSwitch(Bench &bench)
{
    const bool wasOn = isServiceOn();
    const QString problem = flip(bench, !wasOn);
    const QString problemBack = flip(bench, wasOn);
    return judged(problem.isEmpty() ? problemBack : problem);
}

bool isAtCable(Bench &bench)
{
    const Answer answer = bench.agent.ask(QStringLiteral("connectedCamHasBTAddress"), {bench.options.camera});
    return answer.isProper() && answer.values.value(0).toBool();
}

Outcome checkPassKey(Bench &bench)
{
    if (bench.options.passKey.isEmpty())
        return skip(Words::tr("no --passkey was given"));
    if (!isAtCable(bench))
        return skip(Words::tr("the camera is not at the cable"));
    const int from = bench.mark();
    return after(bench.agent.ask(QStringLiteral("setPassKey"), {bench.options.passKey}), [&] {
        bench.waitForPost(NotificationNames::PassKeySet, from, PassKeyTime);
        const Heard *post = bench.ear.last(NotificationNames::PassKeySet, bench.agent.name(), from);
        if (!post)
            return fail(Words::tr("KS7PassKeySet has not come"));
        const int result = post->userInfo.value(UserInfoKeys::Result, -1).toInt();
        if (result != 0)
            return fail(Words::tr("the result is %1").arg(result));
        return post->userInfo.value(UserInfoKeys::PassKey).toString() == bench.options.passKey
            ? pass()
            : fail(Words::tr("another passkey is reported"));
    });
}

/// Waits until the update has ended. Returns false if the agent posts no progress for ReportTime.
bool waitForEndOfUpdate(const Bench &bench, int from)
{
    int reports = -1;
    while (bench.posts(NotificationNames::FirmwareUpdateEnded, from) == 0 && !isInterrupted()) {
        reports = bench.posts(NotificationNames::FirmwareUpdateProgress, from);
        const auto hasNews = [&] {
            return bench.posts(NotificationNames::FirmwareUpdateEnded, from) > 0
                || bench.posts(NotificationNames::FirmwareUpdateProgress, from) > reports;
        };
        if (!bench.waitFor(hasNews, ReportTime))
            return false;
    }
    return !isInterrupted();
}

Outcome checkFirmware(Bench &bench)
{
    if (!isAtCable(bench))
        return skip(Words::tr("the camera is not at the cable"));
    const Answer needed = bench.agent.ask(QStringLiteral("connectedCamNeedsFirmwareUpdate"));
    if (!needed.isProper() || !needed.values.value(0).toBool())
        return skip(Words::tr("the camera needs no update"));
    const int from = bench.mark();
    return after(bench.agent.ask(QStringLiteral("startUpdate")), [&] {
        if (!waitForEndOfUpdate(bench, from))
            return fail(Words::tr("KS7FirmwareUpdateEnded has not come"));
        bench.listenFor(Burst);
        const int ends = bench.posts(NotificationNames::FirmwareUpdateEnded, from);
        if (ends != 1)
            return fail(Words::tr("the end is posted %1 times").arg(ends));
        const Heard *end = bench.ear.last(NotificationNames::FirmwareUpdateEnded, bench.agent.name(), from);
        const int result = end->userInfo.value(UserInfoKeys::Result, -1).toInt();
        return result == 0 ? pass() : fail(Words::tr("the result is %1").arg(result));
    });
}

Outcome checkRemove(Bench &bench)
{
    const ListReading before = ListReading::take(bench.agent);
    const int row = int(before.order.indexOf(bench.options.camera));
    const int from = bench.mark();
    return after(bench.agent.ask(QStringLiteral("removeCameraAtIndex"), {row, true}), [&] {
        const Answer dropped = bench.agent.ask(QStringLiteral("checkRemoveCurrentCam"),
                                               {before.cameras.value(bench.options.camera)});
        if (!dropped.isProper())
            return fail(dropped.problem);
        if (!bench.waitForPost(NotificationNames::CameraListChanged, from, ChangeTime))
            return fail(Words::tr("KS7CameraListChanged has not come"));
        const Answer preferred =
            bench.agent.ask(QStringLiteral("isPreferredDeviceAddress"), {bench.options.camera});
        if (isListed(bench))
            return fail(Words::tr("the camera is still listed"));
        return preferred.values.value(0).toBool() ? fail(Words::tr("the camera is still preferred")) : pass();
    });
}

Demand changeDemand(const char *id, const QString &text, Outcome (*check)(Bench &))
{
    return {QLatin1String(id), text, [check](Bench &bench) {
                if (!bench.mayChange())
                    return skipForChanges();
                const ListReading list = ListReading::takeRows(bench.agent);
                if (!list.problem.isEmpty())
                    return bench.unjudged(list.problem);
                if (!list.order.contains(bench.options.camera))
                    return fail(Words::tr("the camera %1 is not listed").arg(bench.options.camera));
                return check(bench);
            }};
}

} // namespace

Demands changeDemands()
{
    return {
        changeDemand("change.name", Words::tr("A new name is listed and posted once"), checkRename),
        changeDemand("change.ignore", Words::tr("An ignored camera is not listed, and listed again later"),
                     checkIgnore),
        changeDemand("change.preferred", Words::tr("Another preferred camera is posted"), checkPrefer),
        changeDemand("change.switch", Words::tr("KS7ToggleEnabled is stored, then posted"), checkSwitch),
        changeDemand("change.passkey", Words::tr("A passkey is accepted, then posted"), checkPassKey),
        changeDemand("change.firmware", Words::tr("An update ends with one post"), checkFirmware),
        changeDemand("change.removal", Words::tr("A removed camera is neither listed nor preferred"),
                     checkRemove),
    };
}

} // namespace agent_check
