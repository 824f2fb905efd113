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

/// A camera as agent and pane send it.
struct CameraRecord {
    int status = 0;
    QString cameraIDString;
    QString friendlyName;
};

/// Camera address to the camera's entry: "Status", "CameraIDString", "FriendlyName".
using CameraDictionary = QMap<QString, QVariantMap>;

/// The reply of cameras(): records in no particular order.
using CameraRecords = QList<QVariantMap>;

/// Registers the types of the two interfaces with QtDBus. Call it before the first call or adaptor.
void registerWireTypes();

/// A record as it is sent; the null record is the empty dictionary.
QVariantMap dictionaryFromRecord(const std::optional<CameraRecord> &record);
/// Reads the record of a reply's dictionary; null for an empty one. A missing or wrongly typed value is 0 or
/// empty.
std::optional<CameraRecord> recordFromDictionary(const QVariantMap &dictionary);
