#include "agent_check/Check.h"

#include "agent/RemoteNames.h"
#include "agent_check/Preferences.h"
#include "agent_check/Translation.h"
#include "agent_check/report/Report.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <cstdio>

using namespace std::chrono_literals;

namespace agent_check {

namespace {

/// A launched agent must take its bus names within this time. The pane waits only about 2 s, but the check
/// must also be able to test a slow agent.
constexpr auto LaunchTime = 10000ms;
constexpr auto CameraTime = 10000ms;

} // namespace

int refuse(const QString &reason)
{
    std::fprintf(stderr, "ks7-agent-check: %s\n", qUtf8Printable(reason));
    return CannotCheck;
}

int Check::run()
{
    if (!mContext.recorder.start())
        return refuse(Translation::tr("the session bus refused the subscription to the agent's posts"));
    const QString reason = findAgent();
    if (!reason.isEmpty())
        return refuse(reason);
    const auto report = mContext.options.json ? makeJsonReport() : makeTextReport();
    const Demands demands = allDemands();
    for (const Demand &demand : demands) {
        if (!isWanted(demand) || isInterrupted())
            continue;
        report->began(demand);
        const Outcome outcome = lookAt(demand);
        if (!isInterrupted())
            report->found(demand, outcome);
    }
    report->end(!isInterrupted());
    if (isInterrupted())
        return CannotCheck;
    return report->hasFailures() ? SomethingFailed : NothingFailed;
}

bool Check::isWanted(const Demand &demand) const
{
    return mContext.options.groups.isEmpty() || mContext.options.groups.contains(demand.group());
}

Outcome Check::lookAt(const Demand &demand)
{
    QCoreApplication::processEvents();
    const bool isLost = demand.needsAgent && !mContext.agent.name().isEmpty() && !mContext.agent.isThere();
    if (mContext.agent.isHung() && demand.group() != QStringLiteral("end"))
        return skip(Translation::tr("the agent replies to nothing"));
    return isLost ? skip(Translation::tr("the agent has ended, or its bus names have another owner"))
                  : demand.check(mContext);
}

QString Check::findAgent()
{
    if (!mContext.options.launch.isEmpty()) {
        QString reason = launch();
        if (!reason.isEmpty())
            return reason;
    }
    mContext.agent.find();
    if (mContext.agent.owner(RemoteNames::AgentServer).isEmpty()
        && mContext.agent.owner(RemoteNames::AgentServerUSB).isEmpty())
        return mContext.launched
            ? Translation::tr("the program has not taken the agent's bus names")
            : Translation::tr("there is no agent on the session bus; --launch starts one");
    return lookForCamera();
}

QString Check::launch()
{
    for (const QString &name : {RemoteNames::AgentServer, RemoteNames::AgentServerUSB}) {
        const auto process = mContext.agent.processOf(RemoteNames::busName(name));
        if (process)
            return Translation::tr("another agent runs: process %1 owns %2")
                .arg(*process)
                .arg(RemoteNames::busName(name));
    }
    mContext.hadPreferencesFile = QFileInfo::exists(preferencesFile());
    mContext.launched = std::make_unique<LaunchedAgent>(mContext.options.launch);
    if (!mContext.launched->start())
        return Translation::tr("%1 cannot be started").arg(mContext.options.launch);
    mContext.waitFor(
        [this] {
            mContext.agent.find();
            const bool isUp =
                mContext.agent.isThere() && !mContext.agent.owner(RemoteNames::AgentServerUSB).isEmpty();
            return isUp || !mContext.launched->isRunning();
        },
        LaunchTime);
    return {};
}

QString Check::lookForCamera()
{
    const QString &camera = mContext.options.camera;
    if (camera.isEmpty())
        return {};
    ListReading list;
    // An agent that was just launched may need some time until it lists the camera.
    const bool isListed = mContext.waitFor(
        [&] {
            list = ListReading::takeRows(mContext.agent);
            return list.order.contains(camera) || !list.problem.isEmpty();
        },
        mContext.launched ? CameraTime : 0ms);
    if (isListed)
        return {};
    return Translation::tr("the agent does not list the camera %1, but these: %2")
        .arg(camera, list.order.join(QStringLiteral(", ")));
}

} // namespace agent_check
