#include "agent/NotificationNames.h"
#include "agent/RemoteNames.h"
#include "agent_check/CheckContext.h"
#include "agent_check/Translation.h"
#include "agent_check/demands/Demand.h"

using namespace std::chrono_literals;

namespace agent_check {

namespace {

/// "KS7AgentStarted" must arrive within this time after the agent has taken its bus names.
constexpr auto StartedTime = 1000ms;

/// Returns the first bus name without an owner; empty if both have one.
QString freeName(const Agent &agent)
{
    for (const QString &name : {RemoteNames::AgentServer, RemoteNames::AgentServerUSB}) {
        if (agent.owner(name).isEmpty())
            return RemoteNames::busName(name);
    }
    return {};
}

Outcome checkOwned(CheckContext &context)
{
    const QString missing = freeName(context.agent);
    return missing.isEmpty() ? pass() : fail(withoutOwner(missing));
}

Outcome checkOneProcess(CheckContext &context)
{
    if (!freeName(context.agent).isEmpty())
        return skip(Translation::tr("a bus name has no owner"));
    const auto camera = context.agent.processOf(context.agent.owner(RemoteNames::AgentServer));
    const auto usb = context.agent.processOf(context.agent.owner(RemoteNames::AgentServerUSB));
    return camera == usb ? pass()
                         : fail(Translation::tr("process %1 owns one name, process %2 the other")
                                    .arg(camera.value_or(0))
                                    .arg(usb.value_or(0)));
}

Outcome checkStarted(CheckContext &context)
{
    if (!context.launched)
        return skip(Translation::tr("the agent was running already; --launch starts one"));
    context.waitForPost(NotificationNames::AgentStarted, 0, StartedTime);
    const auto &events = context.recorder.events();
    int taken = 0;
    int started = 0;
    for (const RecordedEvent &event : events) {
        taken += event.isOwnerChange && !event.newOwner.isEmpty() ? 1 : 0;
        if (event.name != NotificationNames::AgentStarted)
            continue;
        if (taken < 2)
            return fail(Translation::tr("KS7AgentStarted was posted when %1 of the two names had an owner")
                            .arg(taken));
        ++started;
    }
    return started == 1 ? pass() : fail(postedTimes(NotificationNames::AgentStarted, started));
}

} // namespace

Demands nameDemands()
{
    return {
        {QStringLiteral("names.owned"), Translation::tr("Both bus names are owned"), checkOwned},
        {QStringLiteral("names.process"), Translation::tr("One process owns both names"), checkOneProcess},
        {QStringLiteral("names.started"),
         Translation::tr("KS7AgentStarted is posted once, when both names are owned"), checkStarted},
    };
}

} // namespace agent_check
