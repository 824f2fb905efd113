#include "agent_check/Demand.h"

namespace agent_check {

Demands allDemands()
{
    return nameDemands() + operationDemands() + loadDemands() + listDemands() + oddDemands() + postDemands()
        + fileDemands() + pictureDemands() + changeDemands() + endDemands();
}

QStringList groupNames()
{
    QStringList names;
    const Demands demands = allDemands();
    for (const Demand &demand : demands)
        names.append(demand.group());
    names.removeDuplicates();
    return names;
}

} // namespace agent_check
