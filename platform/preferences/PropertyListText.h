#pragma once

#include <QByteArray>
#include <QString>
#include <QVariant>

#include <optional>
#include <vector>

/// The text of property lists. Values that nobody changes are carried as text, because a number, a date or a
/// line end that goes through a parsed form does not always come out as it went in.
namespace platform::PropertyListText {

/// One key of the root dictionary and its value, an XML element.
struct Entry {
    QString key;
    QByteArray xml;
};

/// The root dictionary's entries in their order; nothing when the text is no property list of that shape.
std::optional<std::vector<Entry>> entriesOf(const QByteArray &xml);

/// A whole document of these entries.
QByteArray documentOf(const std::vector<Entry> &entries);

/// The element for a value; empty for a value that no property list can hold.
QByteArray elementFor(const QVariant &value);

} // namespace platform::PropertyListText
