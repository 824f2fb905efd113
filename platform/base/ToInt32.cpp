#include "platform/base/ToInt32.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace platform {
namespace {

std::int32_t withoutFraction(double number)
{
    using Limits = std::numeric_limits<std::int32_t>;
    return std::isnan(number)
        ? 0
        : static_cast<std::int32_t>(std::clamp<double>(number, Limits::min(), Limits::max()));
}

} // namespace

std::int32_t toInt32(const QVariant &number)
{
    switch (static_cast<int>(number.userType())) {
    case QMetaType::Float:
    case QMetaType::Double:
        return withoutFraction(number.toDouble());
    case QMetaType::Bool:
    case QMetaType::SChar:
    case QMetaType::UChar:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return static_cast<std::int32_t>(number.toLongLong());
    default:
        return 0;
    }
}

std::int32_t toInt32(const QVariantMap &dictionary, const QString &key)
{
    return toInt32(dictionary.value(key));
}

} // namespace platform
