#include "agent/WireTypes.h"

#include "agent/RemoteNames.h"

#include <QDBusMetaType>

namespace {

/// Any integer, cut to 32 bits.
int integerAt(const QVariantMap &dictionary, const QString &key)
{
    const QVariant value = dictionary.value(key);
    switch (static_cast<int>(value.userType())) {
    case QMetaType::UChar:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return static_cast<int>(value.toLongLong());
    default:
        return 0;
    }
}

QString stringAt(const QVariantMap &dictionary, const QString &key)
{
    const QVariant value = dictionary.value(key);
    return value.userType() == QMetaType::QString ? value.toString() : QString();
}

} // namespace

void registerWireTypes()
{
    qRegisterMetaType<CameraDictionary>("CameraDictionary");
    qRegisterMetaType<CameraRecords>("CameraRecords");
    qDBusRegisterMetaType<CameraDictionary>();
    qDBusRegisterMetaType<CameraRecords>();
}

QVariantMap dictionaryFromRecord(const std::optional<CameraRecord> &record)
{
    if (!record)
        return {};
    return {{RecordKeys::Status, record->status},
            {RecordKeys::CameraIDString, record->cameraIDString},
            {RecordKeys::FriendlyName, record->friendlyName}};
}

std::optional<CameraRecord> recordFromDictionary(const QVariantMap &dictionary)
{
    if (dictionary.isEmpty())
        return {};
    return CameraRecord{integerAt(dictionary, RecordKeys::Status),
                        stringAt(dictionary, RecordKeys::CameraIDString),
                        stringAt(dictionary, RecordKeys::FriendlyName)};
}
