#pragma once

#include <QString>
#include <QVariantMap>

#include <cstdint>

namespace platform {

/// A number from another program as 32 bits: integers are cut, reals lose their fraction and end at the
/// largest and the least integer. 0 for what is no number.
std::int32_t toInt32(const QVariant &number);
std::int32_t toInt32(const QVariantMap &dictionary, const QString &key);

} // namespace platform
