#pragma once

#include "agent/KS7DeviceControllerProxy.h"

#include <QString>
#include <QStringList>

namespace agent_check {

class Agent;

/// The agent's camera list, as several calls have read it.
struct ListReading {
    /// The problem of the first improper reply; empty if all replies were proper.
    QString problem;
    CameraDictionary cameras;
    QStringList order;
    std::uint64_t index = NoPreferredCamera;
    QVariantMap preferred;
    QList<QVariantMap> records;

    /// Returns whether the pane would show the same rows for both readings.
    [[nodiscard]] bool hasSameRows(const ListReading &other) const
    {
        return cameras == other.cameras && order == other.order;
    }

    static ListReading take(Agent &agent);
    /// Calls only cameraDict and sortedDeviceList, which give the rows. The members of other calls stay
    /// empty.
    static ListReading takeRows(Agent &agent);
};

// Each function checks one part of the contract. It returns the first contradiction in the reading, or an
// empty text.
QString problemOfRecords(const ListReading &list);
QString problemOfOrder(const ListReading &list);
QString problemOfIndex(const ListReading &list);
QString problemOfPreferred(const ListReading &list);
QString problemOfCameras(const ListReading &list);

} // namespace agent_check
