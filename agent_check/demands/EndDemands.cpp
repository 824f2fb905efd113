#include "agent/AgentContract.h"
#include "agent/RemoteNames.h"
#include "agent_check/CheckContext.h"
#include "agent_check/Translation.h"
#include "agent_check/demands/Demand.h"
#include "platform/bus/BusNames.h"
#include "platform/capture/PipeWireNodes.h"

using namespace std::chrono_literals;

namespace agent_check {

namespace {

constexpr auto EndTime = 5000ms;
/// After the agent has released one of its two bus names, it must release the other within this time.
constexpr auto TogetherTime = 1000ms;

Outcome checkAlive(CheckContext &context)
{
    if (!context.agent.isThere())
        return fail(Translation::tr("the agent has gone, or its names have changed hands"));
    const auto &events = context.recorder.events();
    for (const RecordedEvent &event : events) {
        if (event.isOwnerChange && !event.sender.isEmpty())
            return fail(Translation::tr("%1 has changed hands").arg(event.name));
    }
    if (context.agent.hasTimedOut())
        return fail(Translation::tr("it has let a call time out, so the pane takes it as dead"));
    return judged(context.agent.ask(QStringLiteral("flush")).problem);
}

int released(const CheckContext &context)
{
    int names = 0;
    const auto &events = context.recorder.events();
    for (const RecordedEvent &event : events)
        names += event.isOwnerChange && event.newOwner.isEmpty() ? 1 : 0;
    return names;
}

Outcome checkReleased(CheckContext &context)
{
    if (!context.launched)
        return skip(Translation::tr("the agent ran already; --launch starts one"));
    context.launched->terminate();
    if (!context.waitFor([&] { return released(context) > 0; }, EndTime))
        return fail(Translation::tr("it has not released them on SIGTERM"));
    if (!context.waitFor([&] { return released(context) == 2; }, TogetherTime))
        return fail(Translation::tr("it has released one of them only"));
    const bool hasEnded = context.waitFor([&] { return !context.launched->isRunning(); }, EndTime);
    return hasEnded ? pass() : fail(Translation::tr("the program still runs"));
}

Outcome checkNodeGone(CheckContext &context)
{
    if (!context.launched || context.nodeSerial == 0)
        return skip(Translation::tr("there is no picture of a launched agent"));
    const auto isGone = [&] {
        const auto nodes = platform::lookUpPipeWireNodes(platform::LookUpTimeout);
        return nodes && !platform::hasNode(*nodes, context.nodeSerial);
    };
    return context.waitFor(isGone, EndTime) ? pass() : fail(Translation::tr("it is still there"));
}

} // namespace

Demands endDemands()
{
    return {
        {QStringLiteral("end.alive"), Translation::tr("The agent outlives the check with both names"),
         checkAlive, false},
        {QStringLiteral("end.released"), Translation::tr("Both names are released together at the end"),
         checkReleased},
        {QStringLiteral("end.node"), Translation::tr("The picture's node ends with the agent"), checkNodeGone,
         false},
    };
}

} // namespace agent_check
