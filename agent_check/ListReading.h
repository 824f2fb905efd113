#pragma once

#include "agent/KS7DeviceControllerProxy.h"

#include <QString>
#include <QStringList>

namespace agent_check {

class Agent;

/// The agent's list at one moment.
struct ListReading {
    /// Why it cannot be judged; empty when all replies were proper.
    QString problem;
    CameraDictionary cameras;
    QStringList order;
    std::uint64_t index = NoPreferredCamera;
    QVariantMap preferred;
    QList<QVariantMap> records;

    /// What the rows of the pane depend on.
    [[nodiscard]] bool hasSameRows(const ListReading &other) const
    {
        return cameras == other.cameras && order == other.order;
    }

    static ListReading take(Agent &agent);
    /// Only cameraDict and sortedDeviceList.
    static ListReading takeRows(Agent &agent);
};

// What contradicts the contract in a reading; empty for nothing.
QString problemOfRecords(const ListReading &list);
QString problemOfOrder(const ListReading &list);
QString problemOfIndex(const ListReading &list);
QString problemOfPreferred(const ListReading &list);
QString problemOfCameras(const ListReading &list);

} // namespace agent_check
