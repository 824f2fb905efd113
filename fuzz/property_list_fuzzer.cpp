#include "platform/preferences/UserDefaults.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

void require(bool condition)
{
    if (!condition)
        std::abort();
}

} // namespace

/// What parses keeps its keys and their types through a rewrite, and takes a new value beside them.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using platform::PropertyListDictionary;
    const QByteArray xml(reinterpret_cast<const char *>(data), static_cast<int>(size));
    auto domain = PropertyListDictionary::fromXml(xml);
    if (!domain)
        return 0;
    const QStringList keys = domain->keys();
    const QString added = QStringLiteral("VideoSize2");
    domain->setValue(added, 1);
    const QByteArray rewritten = domain->toXml();
    const auto again = PropertyListDictionary::fromXml(rewritten);
    require(again.has_value());
    require(again->value(added).toInt() == 1);
    for (const QString &key : keys) {
        require(again->keys().contains(key));
        require(key == added || again->value(key).userType() == domain->value(key).userType());
    }
    require(again->toXml() == rewritten);
    return 0;
}
