#include "agent_check/demands/Demand.h"

namespace agent_check {

Demands allDemands()
{
    return nameDemands() + operationDemands() + loadDemands() + listDemands() + invalidArgumentDemands()
        + postDemands() + fileDemands() + pictureDemands() + changeDemands() + endDemands();
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
