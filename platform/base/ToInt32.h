#pragma once

#include <QString>
#include <QVariantMap>

#include <cstdint>

namespace platform {

/// Converts a number from another program to 32 bits: integers are truncated to their low bits; reals lose
/// their fraction and are clamped. 0 for a value that is not a number.
std::int32_t toInt32(const QVariant &number);
std::int32_t toInt32(const QVariantMap &dictionary, const QString &key);

} // namespace platform
