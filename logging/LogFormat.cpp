#include "logging/LogFormat.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <locale.h>
#include <optional>

namespace LogFormat {
namespace {

// Larger widths and precisions are clamped, because a format could otherwise demand any amount of memory.
constexpr int LongestField = 4096;
constexpr int NotGiven = -1;
const QString Null = QStringLiteral("(null)");

/// A copy of a va_list, from which several functions take arguments in turn.
class Arguments {
public:
    explicit Arguments(va_list source) { va_copy(mList, source); }
    ~Arguments() { va_end(mList); }
    Arguments(const Arguments &) = delete;
    Arguments &operator=(const Arguments &) = delete;

    /// Returns the next argument. `Type` must be the type with which the caller passed it.
    template <typename Type>
    Type take()
    {
        // The constructor initialises mList with va_copy(), which clang's analyzer does not recognise.
        return va_arg(mList, Type); // NOLINT(clang-analyzer-valist.Uninitialized)
    }

private:
    va_list mList;
};

/// One parsed conversion of a format: flags, width, precision, length ("", "l", "ll", …) and letter.
struct Directive {
    QByteArray flags;
    int width = NotGiven;
    int precision = NotGiven;
    QByteArray length;
    char16_t conversion = 0;

    /// The conversion as text for snprintf(), with its percent sign.
    [[nodiscard]] QByteArray text() const
    {
        QByteArray all = '%' + flags;
        if (width != NotGiven)
            all += QByteArray::number(width);
        if (precision != NotGiven)
            all += '.' + QByteArray::number(precision);
        return all + length + static_cast<char>(conversion);
    }
};

/// Returns the characters at the start of `*text` that are in `set`, and advances `*text` past them.
QByteArray run(const char16_t **text, const char *set)
{
    QByteArray found;
    while (**text != 0 && **text < 0x80 && std::strchr(set, static_cast<char>(**text)))
        found += static_cast<char>(*(*text)++);
    return found;
}

int number(const char16_t **text, int otherwise)
{
    const QByteArray digits = run(text, "0123456789");
    if (digits.isEmpty())
        return otherwise;
    bool fits = false;
    const int value = digits.toInt(&fits);
    return fits ? std::min(value, LongestField) : LongestField;
}

/// Parses the directive after a percent sign. Afterwards `*text` points to the directive's last letter, the
/// conversion.
Directive parse(const char16_t **text)
{
    Directive directive;
    directive.flags = run(text, "-+ #0");
    directive.width = number(text, NotGiven);
    if (**text == u'.') {
        ++*text;
        directive.precision = number(text, 0);
    }
    directive.length = run(text, "hljzt");
    directive.conversion = **text;
    return directive;
}

/// While an object of this class exists, its thread uses the C locale, so that snprintf() writes a decimal
/// point.
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

template <typename Type>
QString printed(const Directive &directive, Arguments &arguments)
{
    constexpr int LongestReal = 320; // The largest double has 309 digits before its decimal point.
    std::array<char, LongestField + LongestReal> text = {};
    const PlainNumbers plain;
    std::snprintf(text.data(), text.size(), directive.text().constData(), arguments.take<Type>());
    return QString::fromLatin1(text.data());
}

/// Signed and unsigned arguments of one size have the same representation, so one C++ type reads both.
std::optional<QString> integer(const Directive &directive, Arguments &arguments)
{
    if (directive.length.isEmpty() || directive.length == "h" || directive.length == "hh")
        return printed<int>(directive, arguments);
    if (directive.length == "l")
        return printed<long>(directive, arguments);
    if (directive.length == "ll")
        return printed<long long>(directive, arguments);
    if (directive.length == "j")
        return printed<std::intmax_t>(directive, arguments);
    if (directive.length == "z")
        return printed<std::size_t>(directive, arguments);
    if (directive.length == "t")
        return printed<std::ptrdiff_t>(directive, arguments);
    return std::nullopt;
}

QString padded(const Directive &directive, const QString &text)
{
    return directive.flags.contains('-') ? text.leftJustified(directive.width)
                                         : text.rightJustified(directive.width);
}

/// Reads at most `precision` bytes, because a text of that length may lack its terminating zero.
QString string(const Directive &directive, const char *text)
{
    if (!text)
        return Null;
    return directive.precision == NotGiven
        ? QString::fromUtf8(text)
        : QString::fromUtf8(text, static_cast<int>(qstrnlen(text, static_cast<uint>(directive.precision))));
}

QString object(const Directive &directive, const QString *text)
{
    return text ? text->left(directive.precision) : Null;
}

/// Returns the converted argument, or nothing for an unknown conversion.
std::optional<QString> converted(const Directive &directive, Arguments &arguments)
{
    if (directive.conversion != 0 && directive.conversion < 0x80
        && std::strchr("diuoxX", static_cast<char>(directive.conversion)))
        return integer(directive, arguments);
    if (!directive.length.isEmpty())
        return std::nullopt;
    switch (directive.conversion) {
    case u'e':
    case u'E':
    case u'f':
    case u'F':
    case u'g':
    case u'G':
        return printed<double>(directive, arguments);
    case u'c':
        return padded(directive, QString(QLatin1Char(static_cast<char>(arguments.take<int>()))));
    case u'p':
        return printed<void *>(directive, arguments);
    case u's':
        return padded(directive, string(directive, arguments.take<const char *>()));
    case u'@':
        return padded(directive, object(directive, arguments.take<const QString *>()));
    case u'%':
        return QStringLiteral("%");
    default:
        return std::nullopt;
    }
}

QString between(const char16_t *begin, const char16_t *end)
{
    return QString::fromUtf16(begin, static_cast<int>(end - begin));
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
    QString out = between(format, percent);
    Arguments remaining(arguments);
    while (*percent != 0) {
        const char16_t *at = percent + 1;
        const Directive directive = parse(&at);
        const auto text = converted(directive, remaining);
        if (!text)
            return out + QString::fromUtf16(percent);
        const char16_t *next = percentIn(at + 1);
        out += *text + between(at + 1, next);
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
