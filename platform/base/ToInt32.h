#pragma once

#include <QString>
#include <QVariantMap>

#include <cstdint>

namespace platform {

/// Converts a number from another program to 32 bits. Integers keep their low 32 bits; reals lose their
/// fraction and are clamped. Returns 0 for a value that is not a number.
std::int32_t toInt32(const QVariant &number);
std::int32_t toInt32(const QVariantMap &dictionary, const QString &key);

} // namespace platform
