#include "platform/preferences/PropertyListText.h"
#include "platform/preferences/UserDefaults.h"

#include <QDateTime>
#include <QHash>
#include <QVariant>

#include <plist/plist.h>

#include <cstdlib>
#include <limits>

namespace platform {
namespace {

using PlistNode = std::shared_ptr<void>;

PlistNode parse(const QByteArray &element)
{
    const QByteArray document = "<plist version=\"1.0\">" + element + "</plist>";
    plist_t node = nullptr;
    if (document.size() <= std::numeric_limits<int>::max())
        plist_from_xml(document.constData(), static_cast<std::uint32_t>(document.size()), &node);
    return {node, [](plist_t parsed) { plist_free(parsed); }};
}

/// The text between a scalar's tags. The library's own accessors drop the sign of integers and cut dates
/// to 32 bits, its writer does neither.
QByteArray scalarText(plist_t node)
{
    char *xml = nullptr;
    std::uint32_t length = 0;
    plist_to_xml(node, &xml, &length);
    if (!xml)
        return {};
    QByteArray text(xml, static_cast<int>(length));
    std::free(xml);
    text.truncate(text.lastIndexOf("</", text.lastIndexOf("</plist>") - 1));
    return text.mid(text.lastIndexOf('>') + 1);
}

QVariant integerVariant(plist_t node)
{
    const QByteArray text = scalarText(node);
    bool fits = false;
    const qlonglong value = text.toLongLong(&fits);
    return fits ? QVariant(value) : QVariant(text.toULongLong());
}

QVariant realVariant(plist_t node)
{
    double value = 0;
    plist_get_real_val(node, &value);
    return value;
}

QVariant boolVariant(plist_t node)
{
    std::uint8_t value = 0;
    plist_get_bool_val(node, &value);
    return value != 0;
}

QVariant stringVariant(plist_t node)
{
    std::uint64_t length = 0;
    const char *text = plist_get_string_ptr(node, &length);
    return QString::fromUtf8(text, static_cast<int>(length));
}

QVariant dataVariant(plist_t node)
{
    std::uint64_t length = 0;
    const char *bytes = plist_get_data_ptr(node, &length);
    return QByteArray(bytes, static_cast<int>(length));
}

QVariant dateVariant(plist_t node)
{
    return QDateTime::fromString(QString::fromLatin1(scalarText(node)), Qt::ISODate);
}

QVariant toVariant(plist_t node);

QVariant arrayVariant(plist_t node)
{
    QVariantList list;
    plist_array_iter position = nullptr;
    plist_array_new_iter(node, &position);
    plist_t item = nullptr;
    for (plist_array_next_item(node, position, &item); item; plist_array_next_item(node, position, &item))
        list.append(toVariant(item));
    std::free(position);
    return list;
}

QVariant dictVariant(plist_t node)
{
    QVariantMap map;
    plist_dict_iter position = nullptr;
    plist_dict_new_iter(node, &position);
    char *key = nullptr;
    plist_t item = nullptr;
    for (plist_dict_next_item(node, position, &key, &item); item;
         plist_dict_next_item(node, position, &key, &item)) {
        map.insert(QString::fromUtf8(key), toVariant(item));
        std::free(key);
    }
    std::free(position);
    return map;
}

QVariant toVariant(plist_t node)
{
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN:
        return boolVariant(node);
    case PLIST_UINT:
        return integerVariant(node);
    case PLIST_REAL:
        return realVariant(node);
    case PLIST_STRING:
        return stringVariant(node);
    case PLIST_DATA:
        return dataVariant(node);
    case PLIST_DATE:
        return dateVariant(node);
    case PLIST_ARRAY:
        return arrayVariant(node);
    case PLIST_DICT:
        return dictVariant(node);
    default:
        return {};
    }
}

} // namespace

/// The entries as text, and each one parsed.
struct PropertyListDictionary::Node {
    std::vector<PropertyListText::Entry> entries;
    std::vector<PlistNode> values;
    QHash<QString, std::size_t> index;

    /// A key that is there already gets the new value in its place. False when the value does not parse.
    bool put(const QString &key, const QByteArray &xml)
    {
        PlistNode parsed = parse(xml);
        if (!parsed)
            return false;
        const auto found = index.constFind(key);
        if (found != index.constEnd()) {
            entries[*found].xml = xml;
            values[*found] = std::move(parsed);
            return true;
        }
        index.insert(key, entries.size());
        entries.push_back({key, xml});
        values.push_back(std::move(parsed));
        return true;
    }

    void remove(const QString &key)
    {
        std::vector<PropertyListText::Entry> kept;
        kept.swap(entries);
        values.clear();
        index.clear();
        for (const PropertyListText::Entry &entry : kept) {
            if (entry.key != key)
                put(entry.key, entry.xml);
        }
    }
};

PropertyListDictionary::PropertyListDictionary()
    : mNode(std::make_shared<Node>())
{
}

PropertyListDictionary::~PropertyListDictionary() = default;
PropertyListDictionary::PropertyListDictionary(const PropertyListDictionary &other) = default;
PropertyListDictionary &PropertyListDictionary::operator=(const PropertyListDictionary &other) = default;

std::optional<PropertyListDictionary> PropertyListDictionary::fromXml(const QByteArray &xml)
{
    const auto entries = PropertyListText::entriesOf(xml);
    if (!entries)
        return std::nullopt;
    auto node = std::make_shared<Node>();
    for (const PropertyListText::Entry &entry : *entries) {
        if (!node->put(entry.key, entry.xml))
            return std::nullopt;
    }
    PropertyListDictionary dictionary;
    dictionary.mNode = std::move(node);
    return dictionary;
}

QByteArray PropertyListDictionary::toXml() const
{
    return PropertyListText::documentOf(mNode->entries);
}

QVariant PropertyListDictionary::value(const QString &key) const
{
    const auto found = mNode->index.constFind(key);
    return found == mNode->index.constEnd() ? QVariant() : toVariant(mNode->values[*found].get());
}

void PropertyListDictionary::setValue(const QString &key, const QVariant &value)
{
    auto changed = std::make_shared<Node>(*mNode);
    const QByteArray xml = PropertyListText::elementFor(value);
    if (!value.isValid())
        changed->remove(key);
    else if (xml.isEmpty() || !changed->put(key, xml))
        return;
    mNode = std::move(changed);
}

QStringList PropertyListDictionary::keys() const
{
    QStringList keys;
    for (const PropertyListText::Entry &entry : mNode->entries)
        keys.append(entry.key);
    return keys;
}

} // namespace platform
