#include "agent_check/CheckContext.h"
#include "agent_check/Translation.h"
#include "agent_check/demands/Demand.h"

#include <limits>

namespace agent_check {

namespace {

const QString Nobody = QStringLiteral("ff-ff-ff-ff-ff-ff");

QStringList oddTexts()
{
    return {QString(),
            QStringLiteral("   "),
            QString(10000, QLatin1Char('x')),
            QStringLiteral("two\nlines\a"),
            QStringLiteral("%s %n {0} <b>"),
            QString::fromUtf8("\xf0\x9d\x9f\x8f\xe2\x80\xae")};
}

Outcome checkNames(CheckContext &context)
{
    const QStringList texts = oddTexts();
    for (const QString &text : texts) {
        const Answer answer = context.agent.ask(QStringLiteral("validateName"), {text});
        if (!answer.isProper())
            return fail(answer.problem);
    }
    return pass();
}

Outcome checkAddresses(CheckContext &context)
{
    for (const char *operation : {"isPreferredDeviceAddress", "connectedCamHasBTAddress"}) {
        const QStringList texts = oddTexts() + QStringList(Nobody);
        for (const QString &text : texts) {
            const Answer answer = context.agent.ask(QLatin1String(operation), {text});
            if (!answer.isProper())
                return fail(answer.problem);
            if (answer.values.value(0).toBool())
                return fail(Translation::tr("%1 returned true for \"%2\"")
                                .arg(QLatin1String(operation), text.left(40)));
        }
    }
    return pass();
}

struct Call {
    const char *operation;
    QVariantList arguments;
};

/// Calls with unknown addresses or empty arguments. The agent must accept them and change nothing.
QVector<Call> callsForNothing()
{
    return {{"setName", {QStringLiteral("Kitchen"), Nobody}},
            {"setName", {QString(), QString()}},
            {"setPreferredDeviceAddress", {Nobody}},
            {"removeCameraAtIndex", {-1, true}},
            {"removeCameraAtIndex", {-1, false}},
            {"removeCameraAtIndex", {std::numeric_limits<int>::max(), true}},
            {"removeCameraAtIndex", {std::numeric_limits<int>::min(), true}},
            {"checkRemoveCurrentCam", {QVariantMap()}},
            {"setIgnore", {false, QVariantMap()}},
            {"setIgnore", {true, QVariantMap{{QStringLiteral("Status"), QStringLiteral("odd")}}}}};
}

Outcome checkChanges(CheckContext &context)
{
    if (!context.mayChange())
        return skipForChanges();
    ListReading before = ListReading::take(context.agent);
    const auto calls = callsForNothing();
    for (const Call &call : calls) {
        const Answer answer = context.agent.ask(QLatin1String(call.operation), call.arguments);
        if (!answer.isProper())
            return fail(answer.problem);
        const ListReading after = ListReading::take(context.agent);
        if (!after.problem.isEmpty())
            return fail(after.problem);
        if (after.order != before.order || after.index != before.index)
            return fail(Translation::tr("%1 has changed the list or the preferred camera")
                            .arg(QLatin1String(call.operation)));
        before = after;
    }
    return pass();
}

} // namespace

Demands invalidArgumentDemands()
{
    return {
        {QStringLiteral("odd.names"), Translation::tr("validateName replies for any text"), checkNames},
        {QStringLiteral("odd.addresses"),
         Translation::tr("An unknown address is neither preferred nor on the USB cable"), checkAddresses},
        {QStringLiteral("odd.changes"), Translation::tr("Unknown addresses, rows and records change nothing"),
         checkChanges},
    };
}

} // namespace agent_check
