#include "agent/NotificationNames.h"
#include "agent/RemoteNames.h"
#include "agent_check/Bench.h"
#include "agent_check/Demand.h"
#include "agent_check/Words.h"

using namespace std::chrono_literals;

namespace agent_check {

namespace {

/// "KS7AgentStarted" must arrive within this time after the agent has taken its bus names.
constexpr auto StartedTime = 1000ms;

QString withoutOwner(const Agent &agent)
{
    for (const QString &name : {RemoteNames::AgentServer, RemoteNames::AgentServerUSB}) {
        if (agent.owner(name).isEmpty())
            return RemoteNames::busName(name);
    }
    return {};
}

Outcome checkOwned(Bench &bench)
{
    const QString missing = withoutOwner(bench.agent);
    return missing.isEmpty() ? pass() : fail(Words::tr("nobody owns %1").arg(missing));
}

Outcome checkOneProcess(Bench &bench)
{
    if (!withoutOwner(bench.agent).isEmpty())
        return skip(Words::tr("not both names are owned"));
    const auto camera = bench.agent.processOf(bench.agent.owner(RemoteNames::AgentServer));
    const auto usb = bench.agent.processOf(bench.agent.owner(RemoteNames::AgentServerUSB));
    return camera == usb
        ? pass()
        : fail(Words::tr("the processes %1 and %2 do").arg(camera.value_or(0)).arg(usb.value_or(0)));
}

Outcome checkStarted(Bench &bench)
{
    if (!bench.launched)
        return skip(Words::tr("the agent ran already; --launch starts one"));
    bench.waitForPost(NotificationNames::AgentStarted, 0, StartedTime);
    const auto &heard = bench.ear.heard();
    int taken = 0;
    int started = 0;
    for (const Heard &event : heard) {
        taken += event.isOwnerChange && !event.newOwner.isEmpty() ? 1 : 0;
        if (event.name != NotificationNames::AgentStarted)
            continue;
        if (taken < 2)
            return fail(Words::tr("it was posted when %1 of the two names were owned").arg(taken));
        ++started;
    }
    return started == 1 ? pass() : fail(Words::tr("it was posted %1 times").arg(started));
}

} // namespace

Demands nameDemands()
{
    return {
        {QStringLiteral("names.owned"), Words::tr("Both bus names are owned"), checkOwned},
        {QStringLiteral("names.process"), Words::tr("One process owns both names"), checkOneProcess},
        {QStringLiteral("names.started"),
         Words::tr("KS7AgentStarted is posted once, when both names are owned"), checkStarted},
    };
}

} // namespace agent_check
