#include "agent_check/demands/ListReading.h"

#include "agent/AgentContract.h"
#include "agent/RemoteNames.h"
#include "agent/WireTypes.h"
#include "agent_check/Agent.h"
#include "agent_check/Translation.h"

#include <QDBusArgument>

#include <algorithm>

namespace agent_check {

namespace {

/// Calls an operation and stores its result, unless an earlier call had a problem. Only a proper reply is
/// converted, because qdbus_cast() aborts the process on a wrong type.
template <class Value>
void read(Agent &agent, const char *operation, Value &value, QString &problem)
{
    if (!problem.isEmpty())
        return;
    const Answer answer = agent.ask(QLatin1String(operation));
    problem = answer.problem;
    if (answer.isProper())
        value = qdbus_cast<Value>(answer.values.value(0));
}

QString problemOfRecord(const QString &address, const QVariantMap &record)
{
    const QVariant status = record.value(RecordKeys::Status);
    if (status.userType() != QMetaType::Int)
        return Translation::tr("the record of %1 has no \"%2\" of type %3")
            .arg(address, RecordKeys::Status, QStringLiteral("i"));
    if (status.toInt() < kKS7CamNotFound || status.toInt() > kKS7CamError)
        return Translation::tr("%1 has the status %2").arg(address, QString::number(status.toInt()));
    for (const QString &key : {RecordKeys::CameraIDString, RecordKeys::FriendlyName}) {
        if (record.value(key).userType() != QMetaType::QString)
            return Translation::tr("the record of %1 has no \"%2\" of type %3")
                .arg(address, key, QStringLiteral("s"));
    }
    return {};
}

} // namespace

ListReading ListReading::takeRows(Agent &agent)
{
    ListReading list;
    read(agent, "cameraDict", list.cameras, list.problem);
    read(agent, "sortedDeviceList", list.order, list.problem);
    return list;
}

ListReading ListReading::take(Agent &agent)
{
    ListReading list = takeRows(agent);
    qulonglong index = NoPreferredCamera;
    read(agent, "indexOfPreferredKS7Cam", index, list.problem);
    list.index = index;
    read(agent, "getPreferredKS7Cam", list.preferred, list.problem);
    read(agent, "cameras", list.records, list.problem);
    return list;
}

QString problemOfRecords(const ListReading &list)
{
    for (auto camera = list.cameras.begin(); camera != list.cameras.end(); ++camera) {
        QString problem = problemOfRecord(camera.key(), camera.value());
        if (!problem.isEmpty())
            return problem;
    }
    return {};
}

QString problemOfOrder(const ListReading &list)
{
    QStringList sorted = list.order;
    sorted.sort();
    QStringList addresses = list.cameras.keys();
    addresses.sort();
    return sorted == addresses
        ? QString()
        : Translation::tr("cameraDict has [%1], sortedDeviceList has [%2]")
              .arg(addresses.join(QStringLiteral(", ")), sorted.join(QStringLiteral(", ")));
}

QString problemOfIndex(const ListReading &list)
{
    if (list.index == NoPreferredCamera || list.index < std::uint64_t(list.order.size()))
        return {};
    return Translation::tr("indexOfPreferredKS7Cam returned %1, but the list has %2 rows")
        .arg(list.index)
        .arg(list.order.size());
}

QString problemOfPreferred(const ListReading &list)
{
    if (list.index == NoPreferredCamera)
        return list.preferred.isEmpty()
            ? QString()
            : Translation::tr("getPreferredKS7Cam returned a record, but no row is preferred");
    if (list.preferred.isEmpty())
        return Translation::tr("a row is preferred, but getPreferredKS7Cam returned no record");
    const QVariantMap inList = list.cameras.value(list.order.value(int(list.index)));
    return list.preferred == inList
        ? QString()
        : Translation::tr(
              "getPreferredKS7Cam returned a record of \"%1\" that differs from the preferred row's, \"%2\"")
              .arg(list.preferred.value(RecordKeys::FriendlyName).toString(),
                   inList.value(RecordKeys::FriendlyName).toString());
}

QString problemOfCameras(const ListReading &list)
{
    QList<QVariantMap> records = list.records;
    for (const QVariantMap &record : list.cameras) {
        if (!records.removeOne(record))
            return Translation::tr("cameras returned no record of \"%1\", or one with other values")
                .arg(record.value(RecordKeys::FriendlyName).toString());
    }
    return records.isEmpty() ? QString()
                             : Translation::tr("cameras returned %1 records too many").arg(records.size());
}

} // namespace agent_check
