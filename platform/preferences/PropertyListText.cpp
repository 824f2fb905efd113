#include "platform/preferences/PropertyListText.h"

#include <QDateTime>
#include <QLocale>
#include <QRegularExpression>
#include <QStringList>
#include <QXmlStreamReader>

#include <cmath>

namespace platform::PropertyListText {
namespace {

const QString PlistTag = QStringLiteral("plist");
const QString DictTag = QStringLiteral("dict");
const QString ArrayTag = QStringLiteral("array");
const QString KeyTag = QStringLiteral("key");
const QString StringTag = QStringLiteral("string");
const QString IntegerTag = QStringLiteral("integer");
const QString RealTag = QStringLiteral("real");
const QString DateTag = QStringLiteral("date");
const QString DataTag = QStringLiteral("data");
const QString TrueTag = QStringLiteral("true");
const QString FalseTag = QStringLiteral("false");

// Whoever frees or walks the parsed tree does so recursively, on the host's stack.
constexpr int MaximumDepth = 256;

/// XML has no way to write these characters, not even as a reference.
bool isForbidden(QChar character)
{
    const char16_t code = character.unicode();
    return (code < 0x20 && code != u'\t' && code != u'\n' && code != u'\r') || code >= 0xFFFE;
}

QByteArray escaped(const QString &text)
{
    QString out;
    out.reserve(text.size());
    for (const QChar character : text) {
        if (character == QLatin1Char('&'))
            out += QLatin1String("&amp;");
        else if (character == QLatin1Char('<'))
            out += QLatin1String("&lt;");
        else if (character == QLatin1Char('>'))
            out += QLatin1String("&gt;");
        else if (character == QLatin1Char('\r')) // A bare one is read as a line feed.
            out += QLatin1String("&#13;");
        else
            out += isForbidden(character) ? QChar(QChar::ReplacementCharacter) : character;
    }
    return out.toUtf8();
}

QByteArray element(const QString &tag, const QByteArray &content)
{
    const QByteArray name = tag.toLatin1();
    if (content.isEmpty())
        return '<' + name + "/>";
    return '<' + name + '>' + content + "</" + name + '>';
}

bool matches(const char *pattern, const QString &text)
{
    return QRegularExpression(QRegularExpression::anchoredPattern(QLatin1String(pattern)))
        .match(text)
        .hasMatch();
}

bool isReal(const QString &text)
{
    bool ok = false;
    text.toDouble(&ok);
    // Beyond the range of a double is still a number as written.
    return ok || matches("[+-]?(inf(inity)?|nan|[0-9]*\\.?[0-9]+([eE][+-]?[0-9]+)?)", text.toLower());
}

bool isContentOf(const QString &tag, const QString &content)
{
    const QString text = content.trimmed();
    if (tag == IntegerTag)
        return matches("[+-]?([0-9]+|0[xX][0-9a-fA-F]+)", text);
    if (tag == RealTag)
        return isReal(text);
    if (tag == DateTag)
        return matches("-?[0-9]{4,}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}Z", text);
    if (tag == DataTag)
        return matches("[A-Za-z0-9+/\\s]*(=\\s*){0,2}", text);
    return tag == StringTag || ((tag == TrueTag || tag == FalseTag) && text.isEmpty());
}

/// Walks a document once. Every function is called on an element's start and leaves at its end.
class Walker {
public:
    explicit Walker(const QByteArray &xml)
        : mReader(xml)
    {
    }

    bool walk()
    {
        if (!mReader.readNextStartElement() || mReader.name() != PlistTag)
            return false;
        if (!mReader.readNextStartElement() || mReader.name() != DictTag || !walkRoot())
            return false;
        return !mReader.readNextStartElement() && readToEnd();
    }

    std::vector<Entry> entries;

private:
    bool walkRoot()
    {
        while (mReader.readNextStartElement()) {
            QString key;
            if (!readKey(&key) || !mReader.readNextStartElement())
                return false;
            QByteArray xml;
            if (!readValue(&xml, 1))
                return false;
            entries.push_back({key, xml});
        }
        return !mReader.hasError();
    }

    bool readToEnd()
    {
        while (!mReader.atEnd())
            mReader.readNext();
        return !mReader.hasError();
    }

    bool readKey(QString *key)
    {
        if (mReader.name() != KeyTag)
            return false;
        *key = mReader.readElementText();
        return !mReader.hasError();
    }

    bool readValue(QByteArray *xml, int depth)
    {
        const QString tag = mReader.name().toString();
        if (tag == DictTag || tag == ArrayTag)
            return readContainer(tag, xml, depth);
        const QString content = mReader.readElementText();
        *xml += tag == StringTag && content.isEmpty() ? QByteArray("<string></string>")
                                                      : element(tag, escaped(content));
        return !mReader.hasError() && isContentOf(tag, content);
    }

    bool readContainer(const QString &tag, QByteArray *xml, int depth)
    {
        if (depth >= MaximumDepth)
            return false;
        QByteArray content;
        while (mReader.readNextStartElement()) {
            content += '\n' + QByteArray(depth + 1, '\t');
            if (!readItem(tag, &content, depth + 1))
                return false;
        }
        if (!content.isEmpty())
            content += '\n' + QByteArray(depth, '\t');
        *xml += element(tag, content);
        return !mReader.hasError();
    }

    bool readItem(const QString &container, QByteArray *xml, int depth)
    {
        if (container == ArrayTag)
            return readValue(xml, depth);
        QString key;
        if (!readKey(&key) || !mReader.readNextStartElement())
            return false;
        *xml += "<key>" + escaped(key) + "</key>\n" + QByteArray(depth, '\t');
        return readValue(xml, depth);
    }

    QXmlStreamReader mReader;
};

QByteArray realText(double value)
{
    if (std::isnan(value))
        return "nan";
    if (std::isinf(value))
        return value < 0 ? "-inf" : "inf";
    return QString::number(value, 'g', QLocale::FloatingPointShortest).toLatin1();
}

QByteArray listElement(const QVariantList &list)
{
    QByteArray content;
    for (const QVariant &item : list)
        content += elementFor(item);
    return element(ArrayTag, content);
}

QByteArray mapElement(const QVariantMap &map)
{
    QByteArray content;
    for (auto item = map.cbegin(); item != map.cend(); ++item) {
        const QByteArray value = elementFor(item.value());
        if (!value.isEmpty())
            content += "\n\t\t<key>" + escaped(item.key()) + "</key>\n\t\t" + value;
    }
    return element(DictTag, content.isEmpty() ? content : content + "\n\t");
}

} // namespace

std::optional<std::vector<Entry>> entriesOf(const QByteArray &xml)
{
    Walker walker(xml);
    if (!walker.walk())
        return std::nullopt;
    return std::move(walker.entries);
}

QByteArray documentOf(const std::vector<Entry> &entries)
{
    QByteArray out = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                     "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                     "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
                     "<plist version=\"1.0\">\n<dict>\n";
    for (const Entry &entry : entries)
        out += "\t<key>" + escaped(entry.key) + "</key>\n\t" + entry.xml + '\n';
    return out + "</dict>\n</plist>\n";
}

QByteArray elementFor(const QVariant &value)
{
    switch (static_cast<QMetaType::Type>(value.userType())) {
    case QMetaType::Bool:
        return element(value.toBool() ? TrueTag : FalseTag, {});
    case QMetaType::Int:
    case QMetaType::Long:
    case QMetaType::Short:
    case QMetaType::LongLong:
        return element(IntegerTag, QByteArray::number(value.toLongLong()));
    case QMetaType::UInt:
    case QMetaType::ULong:
    case QMetaType::UShort:
    case QMetaType::ULongLong:
        return element(IntegerTag, QByteArray::number(value.toULongLong()));
    case QMetaType::Float:
    case QMetaType::Double:
        return element(RealTag, realText(value.toDouble()));
    case QMetaType::QString:
        return "<string>" + escaped(value.toString()) + "</string>";
    case QMetaType::QDateTime:
        return element(DateTag, value.toDateTime().toUTC().toString(Qt::ISODate).toLatin1());
    case QMetaType::QByteArray:
        return "<data>" + value.toByteArray().toBase64() + "</data>";
    case QMetaType::QStringList:
    case QMetaType::QVariantList:
        return listElement(value.toList());
    case QMetaType::QVariantMap:
        return mapElement(value.toMap());
    default:
        return {};
    }
}

} // namespace platform::PropertyListText
