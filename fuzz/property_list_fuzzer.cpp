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

/// Converts a value to text. Texts can be compared even for NaN, which is unequal to itself.
QByteArray textOf(const QVariant &value)
{
    PropertyListDictionary list;
    list.setValue(QStringLiteral("key"), value);
    return list.toXml();
}

/// Checks that a dictionary with a new key can be parsed and keeps its other values. Removing the key must
/// restore the old text.
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

/// Checks that each value is the same after writing and parsing. An impossible date is left out by the
/// writer.
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
