#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>

#include <optional>

namespace platform {

/// The root dictionary of an XML property list in UTF-8. Copies are cheap and independent. It keeps the
/// original text, so that writing it again changes only the bytes of changed values.
class PropertyListDictionary {
public:
    PropertyListDictionary();

    /// Parses a property list. Returns nothing if the text is malformed, is not UTF-8 or has a root other
    /// than a dictionary.
    static std::optional<PropertyListDictionary> fromXml(const QByteArray &xml);
    [[nodiscard]] QByteArray toXml() const;

    /// Returns the value as bool, qlonglong, qulonglong, double, QString, QDateTime, QByteArray, QVariantList
    /// or QVariantMap. Returns an invalid variant if the key is absent. The last of several equal keys
    /// counts.
    [[nodiscard]] QVariant value(const QString &key) const;
    /// Sets the value of a key. An invalid variant removes the key; a value that property lists cannot hold
    /// changes nothing.
    void setValue(const QString &key, const QVariant &value);
    [[nodiscard]] QStringList keys() const;

private:
    struct Entry {
        QString key;
        /// The text between the previous entry's end and the value's start, including the `key` element.
        QString lead;
        QString element;
    };
    class Parser;

    static bool readsBack(const QVariant &value, const QString &element);
    [[nodiscard]] int indexOf(const QString &key) const;

    QString mHead;
    QVector<Entry> mEntries;
    QString mTail;
};

} // namespace platform
