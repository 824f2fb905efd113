#include "cameras/SanitizedLine.h"

#include <QCryptographicHash>

#include <algorithm>
#include <string>
#include <vector>

namespace {

// A longer line is shortened. 1000 characters are wider than any screen and still quick to measure.
constexpr int LongestLine = 1000;
constexpr int DigestBytes = 8;

constexpr char32_t OpeningBracket = U'\u27E8';
constexpr QChar ClosingBracket{0x27E9};
constexpr QChar FirstStrongIsolate{0x2068};
constexpr char32_t PopIsolate = U'\u2069';

bool isOverride(char32_t code)
{
    return code >= U'\u202A' && code <= U'\u202E';
}

bool opensIsolate(char32_t code)
{
    return code >= U'\u2066' && code <= U'\u2068';
}

/// Invisible format characters that no name needs, such as soft hyphen, zero-width space and word joiner.
/// Joiners and tags are not among them, because some scripts and emoji need them.
bool isInvisible(char32_t code)
{
    return code == 0xAD || code == 0x180E || code == 0x200B || (code >= 0x2060 && code <= 0x2064)
        || (code >= 0x206A && code <= 0x206F) || code == 0xFEFF || (code >= 0xFFF9 && code <= 0xFFFB);
}

bool breaksLine(char32_t code)
{
    const auto category = QChar::category(code);
    return category == QChar::Other_Control || category == QChar::Other_Surrogate
        || category == QChar::Separator_Line || category == QChar::Separator_Paragraph;
}

/// Whether the character is replaced by a code such as "⟨U+000A⟩". This includes the bracket that begins a
/// code, because a name could otherwise contain a text that looks like a code.
bool needsCode(char32_t code)
{
    return breaksLine(code) || isInvisible(code) || code == OpeningBracket;
}

/// Converts to UTF-32 and keeps lone surrogates. QString::toUcs4() would replace all of them by the same
/// character.
std::u32string codePoints(QStringView text)
{
    std::u32string codes;
    for (int at = 0; at < text.size(); ++at) {
        const bool isPair =
            text[at].isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate();
        codes += isPair ? QChar::surrogateToUcs4(text[at], text[at + 1]) : char32_t(text[at].unicode());
        at += isPair ? 1 : 0;
    }
    return codes;
}

/// Returns for each character whether it begins or ends a paired isolate (Unicode's bidirectional text).
std::vector<bool> pairedIsolates(const std::u32string &codes)
{
    std::vector<bool> isPaired(codes.size());
    std::vector<std::size_t> open;
    for (std::size_t at = 0; at < codes.size(); ++at) {
        if (opensIsolate(codes[at]))
            open.push_back(at);
        if (codes[at] != PopIsolate || open.empty())
            continue;
        isPaired[at] = isPaired[open.back()] = true;
        open.pop_back();
    }
    return isPaired;
}

QString bracketed(const QString &text)
{
    return QChar(static_cast<char16_t>(OpeningBracket)) + text + ClosingBracket;
}

QString codeOf(char32_t code)
{
    constexpr int Hexadecimal = 16;
    const QString digits = QString::number(static_cast<uint>(code), Hexadecimal).toUpper();
    return bracketed(QStringLiteral("U+") + digits.rightJustified(4, QLatin1Char('0')));
}

QString withCodes(QStringView text)
{
    const auto codes = codePoints(text);
    const auto isPaired = pairedIsolates(codes);
    QString line;
    for (std::size_t at = 0; at < codes.size(); ++at) {
        const bool isLoneIsolate = (opensIsolate(codes[at]) || codes[at] == PopIsolate) && !isPaired[at];
        line += isLoneIsolate || needsCode(codes[at]) ? codeOf(codes[at]) : QString::fromUcs4(&codes[at], 1);
    }
    return line;
}

QString digestOf(const QString &text)
{
    const auto digest = QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Sha1);
    return bracketed(QString::fromLatin1(digest.left(DigestBytes).toHex()));
}

QString withoutMiddle(const QString &text)
{
    int head = LongestLine / 2;
    int tail = text.size() - LongestLine / 2;
    head -= text[head - 1].isHighSurrogate() ? 1 : 0;
    tail += text[tail].isLowSurrogate() ? 1 : 0;
    return withCodes(QStringView(text).left(head)) + digestOf(text) + withCodes(QStringView(text).mid(tail));
}

} // namespace

QString sanitizedLine(const QString &text)
{
    const QString line = text.size() <= LongestLine ? withCodes(text) : withoutMiddle(text);
    const bool hasOverride =
        std::any_of(line.begin(), line.end(), [](QChar c) { return isOverride(c.unicode()); });
    return hasOverride ? FirstStrongIsolate + line + QChar(static_cast<char16_t>(PopIsolate)) : line;
}
