#include "agent/WireTypes.h"

#include "agent/RemoteNames.h"
#include "platform/base/ToInt32.h"

#include <QDBusMetaType>

namespace {

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
    return CameraRecord{platform::toInt32(dictionary, RecordKeys::Status),
                        stringAt(dictionary, RecordKeys::CameraIDString),
                        stringAt(dictionary, RecordKeys::FriendlyName)};
}
