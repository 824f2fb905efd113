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
        return fail(Translation::tr("the agent has ended, or its bus names have another owner"));
    const auto &events = context.recorder.events();
    for (const RecordedEvent &event : events) {
        if (event.isOwnerChange && !event.sender.isEmpty())
            return fail(Translation::tr("the owner of %1 changed during the check").arg(event.name));
    }
    if (context.agent.hasTimedOut())
        return fail(Translation::tr("the agent let a call time out, so the pane would disconnect from it"));
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
        return skip(Translation::tr("the agent was running already; --launch starts one"));
    context.launched->terminate();
    if (!context.waitFor([&] { return released(context) > 0; }, EndTime))
        return fail(Translation::tr("the agent released no bus name after SIGTERM"));
    if (!context.waitFor([&] { return released(context) == 2; }, TogetherTime))
        return fail(Translation::tr("the agent released only one of its two bus names"));
    const bool hasEnded = context.waitFor([&] { return !context.launched->isRunning(); }, EndTime);
    return hasEnded ? pass() : fail(Translation::tr("the program still runs after SIGTERM"));
}

Outcome checkNodeGone(CheckContext &context)
{
    if (!context.launched || context.nodeSerial == 0)
        return skip(Translation::tr("there is no video node of a launched agent"));
    const auto isGone = [&] {
        const auto nodes = platform::lookUpPipeWireNodes(platform::LookUpTimeout);
        return nodes && !platform::hasNode(*nodes, context.nodeSerial);
    };
    return context.waitFor(isGone, EndTime) ? pass() : fail(Translation::tr("the node still exists"));
}

} // namespace

Demands endDemands()
{
    return {
        {QStringLiteral("end.alive"),
         Translation::tr("After the check, the agent still runs and owns both names"), checkAlive, false},
        {QStringLiteral("end.released"), Translation::tr("An agent that ends releases both names together"),
         checkReleased},
        {QStringLiteral("end.node"), Translation::tr("The video node disappears when the agent ends"),
         checkNodeGone, false},
    };
}

} // namespace agent_check
