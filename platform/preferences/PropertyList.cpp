#include "platform/preferences/PropertyList.h"

#include <QDateTime>
#include <QLocale>
#include <QRegularExpression>
#include <QXmlStreamReader>

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <limits>

namespace platform {
namespace {

// Limits the depth of nested values, because the parser is recursive and could overflow the host's stack.
constexpr int MaximumDepth = 256;

QRegularExpression whole(const char *pattern)
{
    return QRegularExpression(QRegularExpression::anchoredPattern(QLatin1String(pattern)));
}

/// Reads a decimal number, perhaps with leading zeros, or a hexadecimal number after 0x. Clamps numbers that
/// do not fit into 64 bits.
QVariant integerFrom(const QString &text)
{
    static const QRegularExpression integer = whole("[+-]?([0-9]+|0[xX][0-9a-fA-F]+)");
    if (!integer.match(text).hasMatch())
        return {};
    const int base = text.contains(QLatin1Char('x'), Qt::CaseInsensitive) ? 16 : 10;
    bool fits = false;
    const qlonglong number = text.toLongLong(&fits, base);
    if (fits || text.startsWith(QLatin1Char('-')))
        return fits ? number : std::numeric_limits<qlonglong>::min();
    const qulonglong large = text.toULongLong(&fits, base);
    return fits ? large : std::numeric_limits<qulonglong>::max();
}

/// Uses strtod_l() with the C locale, because the host may have set a locale with a decimal comma.
QVariant realFrom(const QByteArray &text)
{
    static const locale_t plain = ::newlocale(LC_NUMERIC_MASK, "C", nullptr);
    char *end = nullptr;
    const double number = ::strtod_l(text.constData(), &end, plain);
    return text.isEmpty() || end != text.cend() ? QVariant() : number;
}

QVariant dateFrom(const QString &text)
{
    static const QRegularExpression date = whole("-?[0-9]{4,}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}Z");
    return date.match(text).hasMatch() ? QDateTime::fromString(text, Qt::ISODate) : QVariant();
}

QVariant dataFrom(const QString &text)
{
    static const QRegularExpression base64 = whole("[A-Za-z0-9+/\\s]*+(=\\s*){0,2}");
    return base64.match(text).hasMatch() ? QByteArray::fromBase64(text.toLatin1()) : QVariant();
}

/// Converts an element's text to a value; returns an invalid variant for an unknown tag or a malformed text.
QVariant scalarFrom(const QString &tag, const QString &text)
{
    const QString trimmed = text.trimmed();
    if (tag == QLatin1String("string"))
        return text;
    if (tag == QLatin1String("integer"))
        return integerFrom(trimmed);
    if (tag == QLatin1String("real"))
        return realFrom(trimmed.toLatin1());
    if (tag == QLatin1String("date"))
        return dateFrom(trimmed);
    if (tag == QLatin1String("data"))
        return dataFrom(trimmed);
    const bool isTrue = tag == QLatin1String("true");
    return trimmed.isEmpty() && (isTrue || tag == QLatin1String("false")) ? QVariant(isTrue) : QVariant();
}

/// Whether XML cannot represent the character, not even as a character reference.
bool isForbidden(QChar character)
{
    const char16_t code = character.unicode();
    return (code < 0x20 && code != u'\t' && code != u'\n' && code != u'\r') || code >= 0xFFFE;
}

/// Replaces each unpaired surrogate by U+FFFD. QString::toUtf8() would write '?' for it in Qt 6.8 and nothing
/// in Qt 6.11.
QString wellFormed(const QString &text)
{
    // The conversion removes a byte order mark at the start. Prepend one, so that the text's own one remains.
    constexpr char32_t ByteOrderMark = U'\uFEFF';
    return QString::fromStdU32String(ByteOrderMark + text.toStdU32String());
}

QString escaped(const QString &value)
{
    QString text = wellFormed(value);
    std::replace_if(text.begin(), text.end(), isForbidden, QChar(QChar::ReplacementCharacter));
    // Write a carriage return as a reference, because XML parsers turn a plain one into a line feed.
    return text.toHtmlEscaped().replace(QLatin1Char('\r'), QLatin1String("&#13;"));
}

QString element(const char *tag, const QString &content)
{
    const QLatin1String name(tag);
    return QLatin1Char('<') + name + QLatin1Char('>') + content + QLatin1String("</") + name
        + QLatin1Char('>');
}

QString keyElement(const QString &key)
{
    return element("key", escaped(key));
}

QString elementFor(const QVariant &value);

QString arrayElement(const QVariantList &list)
{
    QString content;
    for (const QVariant &item : list)
        content += elementFor(item);
    return element("array", content);
}

QString dictElement(const QVariantMap &map)
{
    QString content;
    for (auto item = map.cbegin(); item != map.cend(); ++item) {
        const QString value = elementFor(item.value());
        if (!value.isEmpty())
            content += QLatin1String("\n\t\t") + keyElement(item.key()) + QLatin1String("\n\t\t") + value;
    }
    return element("dict", content.isEmpty() ? content : content + QLatin1String("\n\t"));
}

/// Returns the XML element for the value; empty for a type that property lists cannot hold.
QString elementFor(const QVariant &value)
{
    switch (static_cast<int>(value.userType())) {
    case QMetaType::Bool:
        return value.toBool() ? QStringLiteral("<true/>") : QStringLiteral("<false/>");
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::LongLong:
        return element("integer", QString::number(value.toLongLong()));
    case QMetaType::ULong:
    case QMetaType::ULongLong:
        return element("integer", QString::number(value.toULongLong()));
    case QMetaType::Float:
    case QMetaType::Double:
        return element("real", QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest));
    case QMetaType::QString:
        return element("string", escaped(value.toString()));
    case QMetaType::QDateTime:
        return element("date", value.toDateTime().toUTC().toString(Qt::ISODate));
    case QMetaType::QByteArray:
        return element("data", QString::fromLatin1(value.toByteArray().toBase64()));
    case QMetaType::QStringList:
    case QMetaType::QVariantList:
        return arrayElement(value.toList());
    case QMetaType::QVariantMap:
        return dictElement(value.toMap());
    default:
        return {};
    }
}

} // namespace

/// Parses a whole document or a single value in one pass. Each reading function starts at its element's start
/// tag and stops at the end tag.
class PropertyListDictionary::Parser {
public:
    explicit Parser(const QString &text)
        : mText(text)
        , mXml(text)
    {
        // Turn namespaces off. A value is parsed without the surrounding document, so a prefix that is
        // declared there would be an error.
        mXml.setNamespaceProcessing(false);
    }

    bool readDocument(PropertyListDictionary *list)
    {
        return nextElement() && mXml.qualifiedName() == QLatin1String("plist") && nextElement()
            && mXml.qualifiedName() == QLatin1String("dict") && readRoot(list) && !nextElement()
            && readToEnd();
    }

    /// Reads a text with one value; returns an invalid variant if the text is malformed.
    QVariant readSingleValue() { return nextElement() ? readValue(1) : QVariant(); }

private:
    bool readRoot(PropertyListDictionary *list)
    {
        auto done = position();
        list->mHead = mText.left(done);
        const bool isRead = readEntries([&](const QString &key) {
            const auto start = mText.lastIndexOf(QLatin1Char('<'), position() - 1);
            if (!readValue(1).isValid())
                return false;
            list->mEntries.append({key, mText.mid(done, start - done), mText.mid(start, position() - start)});
            done = position();
            return true;
        });
        list->mTail = mText.mid(done);
        if (list->mHead.endsWith(QLatin1String("/>"))) {
            list->mHead.replace(list->mHead.size() - 2, 2, QLatin1Char('>'));
            list->mTail.prepend(QLatin1String("\n</dict>"));
        }
        return isRead;
    }

    template <typename ReadValue>
    bool readEntries(ReadValue readValue)
    {
        while (nextElement()) {
            if (mXml.qualifiedName() != QLatin1String("key"))
                return false;
            const QString key = readText();
            if (!nextElement() || !readValue(key))
                return false;
        }
        return !mXml.hasError();
    }

    QVariant readValue(int depth)
    {
        const QString tag = mXml.qualifiedName().toString();
        if (depth > MaximumDepth)
            return {};
        if (tag == QLatin1String("array"))
            return readArray(depth);
        if (tag == QLatin1String("dict"))
            return readDict(depth);
        const QString text = readText();
        return mXml.hasError() ? QVariant() : scalarFrom(tag, text);
    }

    QVariant readArray(int depth)
    {
        QVariantList list;
        while (nextElement()) {
            list.append(readValue(depth + 1));
            if (!list.constLast().isValid())
                return {};
        }
        return mXml.hasError() ? QVariant() : list;
    }

    QVariant readDict(int depth)
    {
        QVariantMap map;
        const bool isRead = readEntries([&](const QString &key) {
            const QVariant value = readValue(depth + 1);
            map.insert(key, value);
            return value.isValid();
        });
        return isRead ? map : QVariant();
    }

    QString readText()
    {
        QString text;
        while (next() && !mXml.isEndElement()) {
            if (mXml.isCharacters())
                text += mXml.text();
            if (mXml.isStartElement())
                mXml.raiseError();
        }
        return text;
    }

    /// Moves to the next child element; returns false at the end tag of the enclosing element.
    bool nextElement()
    {
        while (next() && !mXml.isEndElement()) {
            if (mXml.isStartElement())
                return true;
        }
        return false;
    }

    bool readToEnd()
    {
        while (next())
            continue;
        return !mXml.hasError();
    }

    /// Moves to the next token; returns false at the end of the document or after an error.
    bool next()
    {
        mXml.readNext();
        if (isForeign())
            mXml.raiseError();
        return !mXml.atEnd();
    }

    /// Whether the token must be rejected: an encoding other than UTF-8, a reference to an entity, or a
    /// declaration of entities. The text of an entity is not at the position of its reference, so the offsets
    /// of the entries would be wrong.
    [[nodiscard]] bool isForeign() const
    {
        if (mXml.isStartDocument() && !mXml.documentEncoding().isEmpty())
            return mXml.documentEncoding().compare(QLatin1String("utf-8"), Qt::CaseInsensitive) != 0;
        return mXml.isEntityReference() || (mXml.isDTD() && mXml.text().contains(QLatin1Char('[')));
    }

    /// Offset in mText, directly after the last token.
    [[nodiscard]] int position() const { return static_cast<int>(mXml.characterOffset()); }

    const QString &mText;
    QXmlStreamReader mXml;
};

PropertyListDictionary::PropertyListDictionary()
    : mHead(QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                           "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                           "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
                           "<plist version=\"1.0\">\n<dict>"))
    , mTail(QStringLiteral("\n</dict>\n</plist>\n"))
{
}

std::optional<PropertyListDictionary> PropertyListDictionary::fromXml(const QByteArray &xml)
{
    const QByteArray bytes = xml.startsWith("\xEF\xBB\xBF") ? xml.mid(3) : xml;
    const QString text = QString::fromUtf8(bytes);
    PropertyListDictionary list;
    if (text.toUtf8() != bytes || !Parser(text).readDocument(&list))
        return std::nullopt;
    return list;
}

QByteArray PropertyListDictionary::toXml() const
{
    QString text = mHead;
    for (const Entry &entry : mEntries)
        text += entry.lead + entry.element;
    return (text + mTail).toUtf8();
}

int PropertyListDictionary::indexOf(const QString &key) const
{
    const auto isKey = [&](const Entry &entry) { return entry.key == key; };
    const auto found = std::find_if(mEntries.crbegin(), mEntries.crend(), isKey);
    return static_cast<int>(mEntries.crend() - found) - 1;
}

QVariant PropertyListDictionary::value(const QString &key) const
{
    const int index = indexOf(key);
    return index < 0 ? QVariant() : Parser(mEntries[index].element).readSingleValue();
}

bool PropertyListDictionary::readsBack(const QVariant &value, const QString &element)
{
    // Do not parse plain numbers again, because parsing takes most of a change's time. Other values may
    // contain something that the parser refuses.
    const auto type = static_cast<int>(value.userType());
    const bool isPlain = type == QMetaType::Bool || type == QMetaType::Int || type == QMetaType::LongLong;
    return isPlain || Parser(element).readSingleValue().isValid();
}

void PropertyListDictionary::setValue(const QString &key, const QVariant &value)
{
    const auto isKey = [&](const Entry &entry) { return entry.key == key; };
    const QString element = elementFor(value);
    const int index = indexOf(key);
    if (!value.isValid())
        mEntries.erase(std::remove_if(mEntries.begin(), mEntries.end(), isKey), mEntries.end());
    else if (!readsBack(value, element))
        return;
    else if (index >= 0)
        mEntries[index].element = element;
    else
        mEntries.append({key, QLatin1String("\n\t") + keyElement(key) + QLatin1String("\n\t"), element});
}

QStringList PropertyListDictionary::keys() const
{
    QStringList keys;
    for (const Entry &entry : mEntries)
        keys.append(entry.key);
    keys.removeDuplicates();
    return keys;
}

} // namespace platform
