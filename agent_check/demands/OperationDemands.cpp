#include "agent/RemoteNames.h"
#include "agent_check/CheckContext.h"
#include "agent_check/Translation.h"
#include "agent_check/demands/Demand.h"

#include <QHash>

#include <algorithm>

namespace agent_check {

namespace {

const QString Nobody = QStringLiteral("ff-ff-ff-ff-ff-ff");

/// The operations that only read, with arguments for a call. They are called even without --allow-changes.
const QHash<QString, QVariantList> &readingCalls()
{
    static const QHash<QString, QVariantList> calls{
        {QStringLiteral("flush"), {}},
        {QStringLiteral("cameraDict"), {}},
        {QStringLiteral("getAudioLevel_l"), {}},
        {QStringLiteral("indexOfPreferredKS7Cam"), {}},
        {QStringLiteral("validateName"), {QStringLiteral("Kitchen")}},
        {QStringLiteral("getKnownZephraDevices"), {}},
        {QStringLiteral("sortedDeviceList"), {}},
        {QStringLiteral("cameras"), {}},
        {QStringLiteral("getPreferredKS7Cam"), {}},
        {QStringLiteral("isPreferredDeviceAddress"), {Nobody}},
        {QStringLiteral("connectedCamNeedsFirmwareUpdate"), {}},
        {QStringLiteral("connectedCamHasBTAddress"), {Nobody}},
    };
    return calls;
}

Outcome checkByCalling(CheckContext &context, const Operation &operation)
{
    return judged(context.agent.ask(operation.name, readingCalls().value(operation.name)).problem);
}

/// Checks an operation that changes something without calling it: compares its declaration with the agent's
/// introspection data.
Outcome checkByDeclaration(CheckContext &context, const Operation &operation)
{
    const auto served = operationsIn(context.agent.introspection(operation.registeredName));
    if (served.isEmpty())
        return skip(
            Translation::tr("the operation changes something, and the agent gives no introspection data"));
    const auto found = std::find_if(served.begin(), served.end(), [&](const Operation &each) {
        return each.name == operation.name && each.interface == operation.interface;
    });
    if (found == served.end())
        return fail(Translation::tr("the agent does not declare %1").arg(operation.call()));
    if (found->in == operation.in && found->out == operation.out)
        return pass();
    return fail(
        Translation::tr("the agent declares %1 with the reply \"%2\"").arg(found->call(), found->out));
}

Outcome checkOperation(CheckContext &context, const Operation &operation)
{
    if (context.agent.owner(operation.registeredName).isEmpty())
        return fail(withoutOwner(RemoteNames::busName(operation.registeredName)));
    return readingCalls().contains(operation.name) ? checkByCalling(context, operation)
                                                   : checkByDeclaration(context, operation);
}

} // namespace

Demands operationDemands()
{
    Demands demands;
    for (const Operation &operation : declaredOperations())
        demands.append({QStringLiteral("operation.") + operation.name,
                        Translation::tr("%1 replies \"%2\"").arg(operation.call(), operation.out),
                        [operation](CheckContext &context) { return checkOperation(context, operation); }});
    return demands;
}

} // namespace agent_check
