#include "logging/LogFormat.h"

#include <algorithm>
#include <array>
#include <clocale>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <locale.h>
#include <optional>
#include <string>

namespace LogFormat {
namespace {

// Longer fields are of use to nobody but an attacker.
constexpr int LongestField = 4096;
constexpr int NotGiven = -1;

/// Arguments that several functions take from, in turn.
class Arguments {
public:
    explicit Arguments(va_list source) { va_copy(mList, source); }
    ~Arguments() { va_end(mList); }
    Arguments(const Arguments &) = delete;
    Arguments &operator=(const Arguments &) = delete;

    /// The next one, which must have been given as this type.
    template <typename Type>
    Type take()
    {
        // Copied into by the constructor, which the analyzer does not see.
        return va_arg(mList, Type); // NOLINT(clang-analyzer-valist.Uninitialized)
    }

private:
    va_list mList;
};

enum class Length { None, Char, Short, Long, LongLong, IntMax, Size, PtrDiff, LongDouble };

/// One conversion, taken apart.
struct Directive {
    std::string flags;
    int width = NotGiven;
    int precision = NotGiven;
    Length length = Length::None;
    char16_t conversion = 0;

    [[nodiscard]] bool isPlain() const { return flags.empty() && width == NotGiven && precision == NotGiven; }
    [[nodiscard]] bool leftAligned() const { return flags.find('-') != std::string::npos; }
};

/// Reads the parts of a directive behind its percent sign.
class Parser {
public:
    Parser(const char16_t *text, Arguments &arguments)
        : mText(text)
        , mArguments(arguments)
    {
    }

    Directive parse()
    {
        Directive directive;
        while (*mText != 0 && *mText < 0x80 && std::strchr("-+ #0'", static_cast<char>(*mText)))
            directive.flags += static_cast<char>(*mText++);
        readWidth(&directive);
        readPrecision(&directive);
        directive.length = length();
        directive.conversion = *mText;
        return directive;
    }

    /// Where the conversion stands.
    [[nodiscard]] const char16_t *position() const { return mText; }

private:
    void readWidth(Directive *directive)
    {
        if (*mText != u'*') {
            directive->width = number(NotGiven);
            return;
        }
        ++mText;
        const std::int64_t given = mArguments.take<int>();
        if (given < 0)
            directive->flags += '-';
        directive->width = static_cast<int>(std::min<std::int64_t>(std::abs(given), INT32_MAX));
    }

    void readPrecision(Directive *directive)
    {
        if (*mText != u'.')
            return;
        ++mText;
        if (*mText != u'*') {
            directive->precision = number(0);
            return;
        }
        ++mText;
        directive->precision = std::max(mArguments.take<int>(), NotGiven);
    }

    int number(int otherwise)
    {
        if (*mText < u'0' || *mText > u'9')
            return otherwise;
        std::int64_t value = 0;
        for (; *mText >= u'0' && *mText <= u'9'; ++mText)
            value = std::min<std::int64_t>(value * 10 + (*mText - u'0'), INT32_MAX);
        return static_cast<int>(value);
    }

    Length length()
    {
        switch (*mText) {
        case u'h':
            return doubled(u'h', Length::Short, Length::Char);
        case u'l':
            return doubled(u'l', Length::Long, Length::LongLong);
        case u'q':
            return taken(Length::LongLong);
        case u'j':
            return taken(Length::IntMax);
        case u'z':
            return taken(Length::Size);
        case u't':
            return taken(Length::PtrDiff);
        case u'L':
            return taken(Length::LongDouble);
        default:
            return Length::None;
        }
    }

    Length taken(Length length)
    {
        ++mText;
        return length;
    }

    Length doubled(char16_t letter, Length single, Length twice)
    {
        ++mText;
        return *mText == letter ? taken(twice) : single;
    }

    const char16_t *mText;
    Arguments &mArguments;
};

/// Numbers are written the same in every country while this is alive; for this thread only.
class PlainNumbers {
public:
    PlainNumbers()
        : mBefore(::uselocale(plain()))
    {
    }
    ~PlainNumbers() { ::uselocale(mBefore); }
    PlainNumbers(const PlainNumbers &) = delete;
    PlainNumbers &operator=(const PlainNumbers &) = delete;

private:
    static locale_t plain()
    {
        static const locale_t locale = ::newlocale(LC_ALL_MASK, "C", nullptr);
        return locale;
    }

    locale_t mBefore;
};

/// The directive for the C library, with a length of our choice and fields of bounded size.
std::string libraryDirective(const Directive &directive, const char *length)
{
    std::string text = "%" + directive.flags;
    if (directive.width != NotGiven)
        text += std::to_string(std::min(directive.width, LongestField));
    if (directive.precision != NotGiven)
        text += '.' + std::to_string(std::min(directive.precision, LongestField));
    return text + length + static_cast<char>(directive.conversion);
}

template <typename Number>
QString printed(const Directive &directive, const char *length, Number number)
{
    const PlainNumbers plain;
    const std::string text = libraryDirective(directive, length);
    std::array<char, 128> small;
    const int size = std::snprintf(small.data(), small.size(), text.c_str(), number);
    if (size < static_cast<int>(small.size()))
        return QString::fromLatin1(small.data(), std::max(size, 0));
    std::string large(static_cast<std::size_t>(size) + 1, '\0');
    std::snprintf(large.data(), large.size(), text.c_str(), number);
    return QString::fromLatin1(large.data(), size);
}

std::intmax_t signedArgument(Length length, Arguments &arguments)
{
    switch (length) {
    case Length::Char:
        return static_cast<signed char>(arguments.take<int>());
    case Length::Long:
        return arguments.take<long>();
    case Length::Short:
        return static_cast<short>(arguments.take<int>());
    case Length::IntMax:
        return arguments.take<std::intmax_t>();
    case Length::LongLong:
    case Length::LongDouble:
        return arguments.take<long long>();
    case Length::Size:
    case Length::PtrDiff:
        return arguments.take<std::ptrdiff_t>();
    case Length::None:
        break;
    }
    return arguments.take<int>();
}

std::uintmax_t unsignedArgument(Length length, Arguments &arguments)
{
    switch (length) {
    case Length::Char:
        return static_cast<unsigned char>(arguments.take<unsigned>());
    case Length::Long:
        return arguments.take<unsigned long>();
    case Length::Short:
        return static_cast<unsigned short>(arguments.take<unsigned>());
    case Length::IntMax:
        return arguments.take<std::uintmax_t>();
    case Length::LongLong:
    case Length::LongDouble:
        return arguments.take<unsigned long long>();
    case Length::Size:
    case Length::PtrDiff:
        return arguments.take<std::size_t>();
    case Length::None:
        break;
    }
    return arguments.take<unsigned>();
}

QString signedInteger(const Directive &directive, Arguments &arguments)
{
    const std::intmax_t number = signedArgument(directive.length, arguments);
    // By far the most usual conversion, which needs no help from the C library.
    return directive.isPlain() ? QString::number(static_cast<qlonglong>(number))
                               : printed(directive, "j", number);
}

QString real(const Directive &directive, Arguments &arguments)
{
    if (directive.length == Length::LongDouble)
        return printed(directive, "L", arguments.take<long double>());
    return printed(directive, "", arguments.take<double>());
}

QString padded(const Directive &directive, const QString &text)
{
    const int width = std::min(directive.width, LongestField);
    return directive.leftAligned() ? text.leftJustified(width) : text.rightJustified(width);
}

const QString Null = QStringLiteral("(null)");

/// Characters up to a zero, and no further than the precision: the text need not end within it.
template <typename Character>
int lengthOf(const Directive &directive, const Character *text)
{
    const int most = directive.precision == NotGiven ? INT32_MAX : directive.precision;
    int length = 0;
    while (length < most && text[length] != 0)
        ++length;
    return length;
}

QString object(const Directive &directive, Arguments &arguments)
{
    const auto *text = arguments.take<const QString *>();
    if (!text)
        return padded(directive, Null);
    return padded(directive, directive.precision == NotGiven ? *text : text->left(directive.precision));
}

QString string(const Directive &directive, Arguments &arguments)
{
    if (directive.length == Length::Long) {
        const auto *text = arguments.take<const wchar_t *>();
        return padded(directive, text ? QString::fromWCharArray(text, lengthOf(directive, text)) : Null);
    }
    const auto *text = arguments.take<const char *>();
    return padded(directive, text ? QString::fromUtf8(text, lengthOf(directive, text)) : Null);
}

QString wideString(const Directive &directive, Arguments &arguments)
{
    const auto *text = arguments.take<const char16_t *>();
    return padded(directive, text ? QString::fromUtf16(text, lengthOf(directive, text)) : Null);
}

QString character(const Directive &directive, Arguments &arguments)
{
    if (directive.length == Length::Long) {
        const auto code = static_cast<char32_t>(arguments.take<wint_t>());
        return padded(directive, QString::fromUcs4(&code, 1));
    }
    const int code = arguments.take<int>();
    if (directive.conversion == u'C')
        return padded(directive, QString(QChar(static_cast<char16_t>(code))));
    return padded(directive, QString(QLatin1Char(static_cast<char>(code))));
}

/// Nothing for a conversion that is unknown.
std::optional<QString> converted(const Directive &directive, Arguments &arguments)
{
    switch (directive.conversion) {
    case u'd':
    case u'i':
        return signedInteger(directive, arguments);
    case u'u':
    case u'o':
    case u'x':
    case u'X':
        return printed(directive, "j", unsignedArgument(directive.length, arguments));
    case u'e':
    case u'E':
    case u'f':
    case u'F':
    case u'g':
    case u'G':
    case u'a':
    case u'A':
        return real(directive, arguments);
    case u'c':
    case u'C':
        return character(directive, arguments);
    case u's':
        return string(directive, arguments);
    case u'S':
        return wideString(directive, arguments);
    case u'@':
        return object(directive, arguments);
    case u'p':
        return printed(directive, "", arguments.take<void *>());
    case u'%':
        return QStringLiteral("%");
    default:
        return std::nullopt;
    }
}

QString fromFormat(const char16_t *begin, const char16_t *end)
{
    return QString(reinterpret_cast<const QChar *>(begin), static_cast<int>(end - begin));
}

const char16_t *endOf(const char16_t *text)
{
    return text + std::char_traits<char16_t>::length(text);
}

const char16_t *percentIn(const char16_t *text)
{
    while (*text != 0 && *text != u'%')
        ++text;
    return text;
}

} // namespace

QString format(const char16_t *format, va_list arguments)
{
    if (!format)
        return Null;
    const char16_t *percent = percentIn(format);
    QString out = fromFormat(format, percent);
    Arguments remaining(arguments);
    while (*percent != 0) {
        Parser parser(percent + 1, remaining);
        const Directive directive = parser.parse();
        const auto text = converted(directive, remaining);
        if (!text)
            return out + fromFormat(percent, endOf(percent));
        out += *text;
        const char16_t *next = percentIn(parser.position() + 1);
        out += fromFormat(parser.position() + 1, next);
        percent = next;
    }
    return out;
}

QByteArray withoutArguments(const QByteArray &text, int error)
{
    if (!text.contains('%'))
        return text;
    QByteArray out;
    out.reserve(text.size());
    for (int at = 0; at < text.size(); ++at) {
        const char next = text[at] == '%' && at + 1 < text.size() ? text[at + 1] : '\0';
        if (next == '%')
            out += '%';
        else if (next == 'm')
            out += strerrordesc_np(error) ? strerrordesc_np(error) : "Unknown error";
        else
            out += text[at];
        if (next == '%' || next == 'm')
            ++at;
    }
    return out;
}

} // namespace LogFormat
