#pragma once

#include "agent/KS7DeviceControllerProxy.h"

#include <QList>
#include <QVariantMap>

/// The answer of cameras(): records in no particular order.
using CameraRecords = QList<QVariantMap>;

/// Makes the types of the two interfaces known to the bus; call before the first call or adaptor.
void registerWireTypes();

/// A record as it travels; the null record is the empty dictionary.
QVariantMap dictionaryFromRecord(const std::optional<CameraRecord> &record);
/// The record in a dictionary: null for an empty one, 0 or empty for what is missing or of another type.
std::optional<CameraRecord> recordFromDictionary(const QVariantMap &dictionary);
