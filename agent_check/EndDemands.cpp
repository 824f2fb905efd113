#include "agent/AgentContract.h"
#include "agent/RemoteNames.h"
#include "agent_check/Bench.h"
#include "agent_check/Demand.h"
#include "agent_check/Words.h"
#include "platform/bus/BusNames.h"
#include "platform/capture/PipeWireNodes.h"

using namespace std::chrono_literals;

namespace agent_check {

namespace {

constexpr auto EndTime = 5000ms;
/// After the agent has released one of its two bus names, it must release the other within this time.
constexpr auto TogetherTime = 1000ms;

Outcome checkAlive(Bench &bench)
{
    if (!bench.agent.isThere())
        return fail(Words::tr("the agent has gone, or its names have changed hands"));
    const auto &heard = bench.ear.heard();
    for (const Heard &event : heard) {
        if (event.isOwnerChange && !event.sender.isEmpty())
            return fail(Words::tr("%1 has changed hands").arg(event.name));
    }
    if (bench.agent.hasTimedOut())
        return fail(Words::tr("it has let a call time out, so the pane takes it as dead"));
    return judged(bench.agent.ask(QStringLiteral("flush")).problem);
}

int released(const Bench &bench)
{
    int names = 0;
    const auto &heard = bench.ear.heard();
    for (const Heard &event : heard)
        names += event.isOwnerChange && event.newOwner.isEmpty() ? 1 : 0;
    return names;
}

Outcome checkReleased(Bench &bench)
{
    if (!bench.launched)
        return skip(Words::tr("the agent ran already; --launch starts one"));
    bench.launched->terminate();
    if (!bench.waitFor([&] { return released(bench) > 0; }, EndTime))
        return fail(Words::tr("it has not released them on SIGTERM"));
    if (!bench.waitFor([&] { return released(bench) == 2; }, TogetherTime))
        return fail(Words::tr("it has released one of them only"));
    const bool hasEnded = bench.waitFor([&] { return !bench.launched->isRunning(); }, EndTime);
    return hasEnded ? pass() : fail(Words::tr("the program still runs"));
}

Outcome checkNodeGone(Bench &bench)
{
    if (!bench.launched || bench.nodeSerial == 0)
        return skip(Words::tr("there is no picture of a launched agent"));
    const auto isGone = [&] {
        const auto nodes = platform::lookUpPipeWireNodes(platform::LookUpTimeout);
        return nodes && !platform::hasNode(*nodes, bench.nodeSerial);
    };
    return bench.waitFor(isGone, EndTime) ? pass() : fail(Words::tr("it is still there"));
}

} // namespace

Demands endDemands()
{
    return {
        {QStringLiteral("end.alive"), Words::tr("The agent outlives the check with both names"), checkAlive,
         false},
        {QStringLiteral("end.released"), Words::tr("Both names are released together at the end"),
         checkReleased},
        {QStringLiteral("end.node"), Words::tr("The picture's node ends with the agent"), checkNodeGone,
         false},
    };
}

} // namespace agent_check
