#include "agent_check/Check.h"

#include "agent/RemoteNames.h"
#include "agent_check/Preferences.h"
#include "agent_check/Report.h"
#include "agent_check/Words.h"

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
    if (!mBench.ear.listen())
        return refuse(Words::tr("the session bus refuses to be listened to"));
    const QString reason = findAgent();
    if (!reason.isEmpty())
        return refuse(reason);
    const auto report = mBench.options.json ? makeJsonReport() : makeTextReport();
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
    return mBench.options.groups.isEmpty() || mBench.options.groups.contains(demand.group());
}

Outcome Check::lookAt(const Demand &demand)
{
    QCoreApplication::processEvents();
    const bool isLost = demand.needsAgent && !mBench.agent.name().isEmpty() && !mBench.agent.isThere();
    if (mBench.agent.isHung() && demand.group() != QStringLiteral("end"))
        return skip(Words::tr("the agent replies to nothing"));
    return isLost ? skip(Words::tr("the agent has gone, or its names have changed hands"))
                  : demand.check(mBench);
}

QString Check::findAgent()
{
    if (!mBench.options.launch.isEmpty()) {
        QString reason = launch();
        if (!reason.isEmpty())
            return reason;
    }
    mBench.agent.find();
    if (mBench.agent.owner(RemoteNames::AgentServer).isEmpty()
        && mBench.agent.owner(RemoteNames::AgentServerUSB).isEmpty())
        return mBench.launched ? Words::tr("the program has not taken the agent's names")
                               : Words::tr("there is no agent on the session bus; --launch starts one");
    return lookForCamera();
}

QString Check::launch()
{
    for (const QString &name : {RemoteNames::AgentServer, RemoteNames::AgentServerUSB}) {
        const auto process = mBench.agent.processOf(RemoteNames::busName(name));
        if (process)
            return Words::tr("another agent runs: process %1 owns %2")
                .arg(*process)
                .arg(RemoteNames::busName(name));
    }
    mBench.hadPreferencesFile = QFileInfo::exists(preferencesFile());
    mBench.launched = std::make_unique<Launched>(mBench.options.launch);
    if (!mBench.launched->start())
        return Words::tr("%1 cannot be started").arg(mBench.options.launch);
    mBench.waitFor(
        [this] {
            mBench.agent.find();
            const bool isUp =
                mBench.agent.isThere() && !mBench.agent.owner(RemoteNames::AgentServerUSB).isEmpty();
            return isUp || !mBench.launched->isRunning();
        },
        LaunchTime);
    return {};
}

QString Check::lookForCamera()
{
    const QString &camera = mBench.options.camera;
    if (camera.isEmpty())
        return {};
    ListReading list;
    // An agent that was just launched may need some time until it lists the camera.
    const bool isListed = mBench.waitFor(
        [&] {
            list = ListReading::takeRows(mBench.agent);
            return list.order.contains(camera) || !list.problem.isEmpty();
        },
        mBench.launched ? CameraTime : 0ms);
    if (isListed)
        return {};
    return Words::tr("the agent does not list the camera %1, but these: %2")
        .arg(camera, list.order.join(QStringLiteral(", ")));
}

} // namespace agent_check
