#pragma once

#include "agent/KS7DeviceControllerProxy.h"

#include <QString>
#include <QStringList>

namespace agent_check {

class Agent;

/// The agent's list at one moment.
struct ListReading {
    /// The first problem of a reply; empty if all replies were proper.
    QString problem;
    CameraDictionary cameras;
    QStringList order;
    std::uint64_t index = NoPreferredCamera;
    QVariantMap preferred;
    QList<QVariantMap> records;

    /// Whether both readings give the pane the same rows.
    [[nodiscard]] bool hasSameRows(const ListReading &other) const
    {
        return cameras == other.cameras && order == other.order;
    }

    static ListReading take(Agent &agent);
    /// Reads cameraDict and sortedDeviceList alone; the other members stay empty.
    static ListReading takeRows(Agent &agent);
};

// Each returns the first contradiction to the contract in a reading, or an empty text.
QString problemOfRecords(const ListReading &list);
QString problemOfOrder(const ListReading &list);
QString problemOfIndex(const ListReading &list);
QString problemOfPreferred(const ListReading &list);
QString problemOfCameras(const ListReading &list);

} // namespace agent_check
