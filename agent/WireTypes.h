#pragma once

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <cstdint>
#include <optional>

/// The reply of indexOfPreferredKS7Cam() when no camera is preferred.
inline constexpr std::uint64_t NoPreferredCamera = 0x7FFFFFFFFFFFFFFF;

/// A camera's record, as the agent and the pane send it.
struct CameraRecord {
    int status = 0;
    QString cameraIDString;
    QString friendlyName;
};

/// Maps camera addresses to records. Each record is a dictionary with the keys of RecordKeys.
using CameraDictionary = QMap<QString, QVariantMap>;

/// The reply of cameras(): the records in no particular order.
using CameraRecords = QList<QVariantMap>;

/// Registers the types of the two interfaces with QtDBus. Call it before any remote call or adaptor.
void registerWireTypes();

/// Converts a record to the dictionary that is sent. A null record gives an empty dictionary.
QVariantMap dictionaryFromRecord(const std::optional<CameraRecord> &record);
/// Converts a received dictionary to a record. An empty dictionary gives null. A missing or wrongly typed
/// value becomes 0 or empty.
std::optional<CameraRecord> recordFromDictionary(const QVariantMap &dictionary);
