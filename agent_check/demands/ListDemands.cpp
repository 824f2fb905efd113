#include "agent_check/CheckContext.h"
#include "agent_check/Translation.h"
#include "agent_check/demands/Demand.h"

#include <algorithm>
#include <array>

using namespace std::chrono_literals;

namespace agent_check {

namespace {

using Judge = QString (*)(const ListReading &);

constexpr int MostReadings = 5;
/// The list can change during its reading. After this time it is read again.
constexpr auto Settling = 300ms;

bool isConsistent(const ListReading &list)
{
    const std::array<Judge, 4> judges{problemOfOrder, problemOfIndex, problemOfPreferred, problemOfCameras};
    return list.problem.isEmpty()
        && std::all_of(judges.begin(), judges.end(), [&](Judge judge) { return judge(list).isEmpty(); });
}

/// Reads the list with several calls. The list may change between two of the calls, so an inconsistent list
/// is read again, up to MostReadings times.
const ListReading &consistentList(CheckContext &context)
{
    if (context.list)
        return *context.list;
    for (int reading = 0; reading < MostReadings; ++reading) {
        context.list = ListReading::take(context.agent);
        if (isConsistent(*context.list) || !context.list->problem.isEmpty())
            break;
        context.listenFor(Settling);
    }
    return *context.list;
}

Demand listDemand(const char *id, const QString &text, Judge judge)
{
    return {QLatin1String(id), text, [judge](CheckContext &context) {
                const ListReading &list = consistentList(context);
                return list.problem.isEmpty() ? judged(judge(list))
                                              : context.outcomeOfImproperReply(list.problem);
            }};
}

Outcome checkIsPreferred(CheckContext &context)
{
    const ListReading &list = consistentList(context);
    if (!list.problem.isEmpty())
        return context.outcomeOfImproperReply(list.problem);
    for (int row = 0; row < list.order.size(); ++row) {
        const Answer answer =
            context.agent.ask(QStringLiteral("isPreferredDeviceAddress"), {list.order.at(row)});
        if (!answer.isProper())
            return fail(answer.problem);
        const bool expected = std::uint64_t(row) == list.index;
        if (answer.values.value(0).toBool() != expected)
            return fail(preferredReturned(list.order.at(row), !expected));
    }
    return pass();
}

Outcome checkLevels(CheckContext &context)
{
    const Answer answer = context.agent.ask(QStringLiteral("getAudioLevel_l"));
    if (!answer.isProper())
        return fail(answer.problem);
    const double left = answer.values.value(0).toDouble();
    const double right = answer.values.value(1).toDouble();
    const bool isInRange = left >= 0 && left <= 1 && right >= 0 && right <= 1;
    return isInRange ? pass() : fail(Translation::tr("the levels are %1 and %2").arg(left).arg(right));
}

} // namespace

Demands listDemands()
{
    return {
        listDemand("list.records", Translation::tr("Each camera has a status from 0 to 5, an ID and a name"),
                   problemOfRecords),
        listDemand("list.order", Translation::tr("sortedDeviceList has each address of cameraDict once"),
                   problemOfOrder),
        listDemand("list.index", Translation::tr("indexOfPreferredKS7Cam is a row or 0x7FFFFFFFFFFFFFFF"),
                   problemOfIndex),
        listDemand("list.preferred",
                   Translation::tr("getPreferredKS7Cam is the record of the preferred row, or empty"),
                   problemOfPreferred),
        {QStringLiteral("list.isPreferred"),
         Translation::tr("isPreferredDeviceAddress is true for the preferred row only"), checkIsPreferred},
        listDemand("list.cameras", Translation::tr("cameras has the records of cameraDict"),
                   problemOfCameras),
        {QStringLiteral("list.levels"), Translation::tr("The sound levels are between 0 and 1"), checkLevels},
    };
}

} // namespace agent_check
