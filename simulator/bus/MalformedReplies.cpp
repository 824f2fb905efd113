#include "simulator/bus/MalformedReplies.h"

#include "agent/RemoteNames.h"
#include "agent/WireTypes.h"

#include <limits>

namespace simulator {

namespace {

constexpr int ManyCameras = 5000;
constexpr int LongText = 10'000;

QString longText()
{
    return QString(LongText, QLatin1Char('x'));
}

/// Returns a record with the right keys, but values of wrong types.
QVariantMap oddRecord()
{
    return {{RecordKeys::Status, QStringLiteral("four")},
            {RecordKeys::CameraIDString, 12},
            {RecordKeys::FriendlyName, QVariantList{1, QStringLiteral("two")}}};
}

QVariantMap hugeRecord(int number)
{
    return {{RecordKeys::Status, std::numeric_limits<int>::max()},
            {RecordKeys::CameraIDString, QString::number(number)},
            {RecordKeys::FriendlyName, number == 0 ? longText() : QString::number(number)}};
}

CameraDictionary hugeDictionary()
{
    CameraDictionary dictionary;
    for (int number = 0; number < ManyCameras; ++number)
        dictionary.insert(QString::number(number), hugeRecord(number));
    return dictionary;
}

QStringList hugeList()
{
    QStringList list{longText()};
    for (int number = 0; number < ManyCameras; ++number)
        list.append(QString::number(number));
    return list;
}

QVariant odd(const QVariant &proper)
{
    const int type = proper.userType();
    if (type == qMetaTypeId<CameraDictionary>()) {
        return QVariant::fromValue(CameraDictionary{
            {QString(), {}}, {QStringLiteral("odd"), oddRecord()}, {QStringLiteral("bare"), {}}});
    }
    if (type == qMetaTypeId<CameraRecords>())
        return QVariant::fromValue(CameraRecords{oddRecord(), {}});
    if (type == QMetaType::QVariantMap)
        return oddRecord();
    if (type == QMetaType::QStringList)
        return QStringList{QString(), QString(), QStringLiteral("nobody")};
    if (type == QMetaType::Double)
        return std::numeric_limits<double>::quiet_NaN();
    if (type == QMetaType::Int)
        return std::numeric_limits<int>::min();
    return type == QMetaType::ULongLong ? QVariant(qulonglong(1) << 40) : proper;
}

QVariant huge(const QVariant &proper)
{
    const int type = proper.userType();
    if (type == qMetaTypeId<CameraDictionary>())
        return QVariant::fromValue(hugeDictionary());
    if (type == qMetaTypeId<CameraRecords>())
        return QVariant::fromValue(hugeDictionary().values());
    if (type == QMetaType::QVariantMap)
        return hugeRecord(0);
    if (type == QMetaType::QStringList)
        return hugeList();
    if (type == QMetaType::Double)
        return std::numeric_limits<double>::max();
    if (type == QMetaType::Int)
        return std::numeric_limits<int>::max();
    return type == QMetaType::ULongLong ? QVariant(std::numeric_limits<qulonglong>::max()) : proper;
}

/// Returns a string, which has the wrong type for every result: no operation of the agent returns a string.
QVariant wrong(const QVariant & /*proper*/)
{
    return QStringLiteral("nonsense");
}

template <class Change>
QVariantList changed(const QVariantList &proper, Change change)
{
    QVariantList values;
    for (const QVariant &value : proper)
        values.append(change(value));
    return values;
}

} // namespace

QDBusMessage MalformedReplies::reply(const QDBusMessage &call, const QString &kind,
                                     const QVariantList &proper)
{
    if (kind == QStringLiteral("error"))
        return call.createErrorReply(QDBusError::Failed, QStringLiteral("as a script wanted"));
    if (kind == QStringLiteral("empty"))
        return call.createReply();
    if (kind == QStringLiteral("wrongType"))
        return call.createReply(changed(proper, wrong));
    if (kind == QStringLiteral("extra"))
        return call.createReply(QVariantList(proper) << QStringLiteral("nonsense"));
    if (kind == QStringLiteral("oddValues"))
        return call.createReply(changed(proper, odd));
    return call.createReply(kind == QStringLiteral("huge") ? changed(proper, huge) : proper);
}

} // namespace simulator
