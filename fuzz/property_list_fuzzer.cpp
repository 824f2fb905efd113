#include "platform/preferences/UserDefaults.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

using platform::PropertyListDictionary;

const QString Added = QStringLiteral("VideoSize2");

void require(bool condition)
{
    if (!condition)
        std::abort();
}

/// The value as text, which can also compare values that differ from themselves, such as NaN.
QByteArray textOf(const QVariant &value)
{
    PropertyListDictionary list;
    list.setValue(QStringLiteral("key"), value);
    return list.toXml();
}

/// A rewrite with one new value keeps all other bytes and values, and parses to the same dictionary.
void requireRewriteKeepsTheRest(const PropertyListDictionary &before)
{
    auto changed = before;
    changed.setValue(Added, 1);
    const auto again = PropertyListDictionary::fromXml(changed.toXml());
    require(again.has_value());
    require(again->toXml() == changed.toXml());
    require(again->value(Added) == QVariant(qlonglong(1)));
    require(again->keys() == changed.keys());
    for (const QString &key : before.keys()) {
        require(before.value(key).isValid());
        require(key == Added || textOf(again->value(key)) == textOf(before.value(key)));
    }
    if (before.value(Added).isValid())
        return;
    changed.setValue(Added, QVariant());
    require(changed.toXml() == before.toXml());
}

/// A written value parses to the same value. An impossible date is not written.
void requireValuesComeBack(const PropertyListDictionary &before)
{
    PropertyListDictionary written;
    for (const QString &key : before.keys())
        written.setValue(key, before.value(key));
    const auto again = PropertyListDictionary::fromXml(written.toXml());
    require(again.has_value());
    for (const QString &key : written.keys())
        require(textOf(again->value(key)) == textOf(before.value(key)));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray xml(reinterpret_cast<const char *>(data), static_cast<int>(size));
    const auto list = PropertyListDictionary::fromXml(xml);
    if (!list)
        return 0;
    const bool hasMark = xml.startsWith("\xEF\xBB\xBF");
    require(list->keys().isEmpty() || list->toXml() == (hasMark ? xml.mid(3) : xml));
    requireRewriteKeepsTheRest(*list);
    requireValuesComeBack(*list);
    return 0;
}
