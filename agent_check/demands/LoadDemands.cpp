#include "agent_check/CheckContext.h"
#include "agent_check/Translation.h"
#include "agent_check/demands/Demand.h"

#include <algorithm>

namespace agent_check {

namespace {

constexpr int Calls = 100;

/// Returns the operations that a refresh of the pane calls. Leaves out those that have no proper reply even
/// when they are called one at a time.
QStringList properOperations(Agent &agent)
{
    QStringList names{QStringLiteral("cameraDict"), QStringLiteral("sortedDeviceList"),
                      QStringLiteral("indexOfPreferredKS7Cam"), QStringLiteral("getPreferredKS7Cam")};
    names.erase(std::remove_if(names.begin(), names.end(),
                               [&](const QString &name) { return !agent.ask(name).isProper(); }),
                names.end());
    return names;
}

Outcome checkHundred(CheckContext &context)
{
    if (context.agent.hasTimedOut())
        return skip(Translation::tr("the agent let an earlier single call time out"));
    const QStringList operations = properOperations(context.agent);
    if (operations.isEmpty())
        return context.outcomeOfImproperReply(
            Translation::tr("no operation replies properly to a single call"));
    QVector<QDBusPendingCall> calls;
    for (int call = 0; call < Calls; ++call)
        calls.append(context.agent.begin(operations.at(call % operations.size())));
    int failed = 0;
    QString first;
    for (int call = 0; call < Calls; ++call) {
        const Answer answer = context.agent.end(operations.at(call % operations.size()), calls.at(call));
        if (!answer.isProper() && failed++ == 0)
            first = answer.problem;
    }
    return failed == 0 ? pass()
                       : fail(Translation::tr("%1 of %2 calls failed; %3").arg(failed).arg(Calls).arg(first));
}

} // namespace

Demands loadDemands()
{
    return {
        {QStringLiteral("load.hundred"),
         Translation::tr("A hundred simultaneous calls get their replies within the time-out of one call"),
         checkHundred}};
}

} // namespace agent_check
