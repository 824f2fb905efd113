#pragma once

#include "agent/KS7DeviceControllerProxy.h"

#include <QList>
#include <QVariantMap>

/// The reply of cameras(): records in no particular order.
using CameraRecords = QList<QVariantMap>;

/// Registers the types of the two interfaces with QtDBus. Call it before the first call or adaptor.
void registerWireTypes();

/// A record as it is sent; the null record is the empty dictionary.
QVariantMap dictionaryFromRecord(const std::optional<CameraRecord> &record);
/// The record in a dictionary: null for an empty one. A missing value, or one of another type, is 0 or empty.
std::optional<CameraRecord> recordFromDictionary(const QVariantMap &dictionary);
