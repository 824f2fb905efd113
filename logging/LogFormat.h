#pragma once

#include <QByteArray>
#include <QString>

#include <cstdarg>

/// Formats text. Unknown conversions are copied unchanged.
namespace LogFormat {

/// Supports `%@` for a `const QString *` and these conversions of printf: integers and reals of each length,
/// `%c`, UTF-8 `%s`, `%p` and `%%`, with flags, width and precision. Stops at the first unknown conversion,
/// because the types of the arguments after it are unknown.
QString format(const char16_t *format, va_list arguments);

/// The output of printf() for the format `text` without arguments: `%%` becomes a percent sign and `%m` the
/// text of `error`. Every other conversion is copied unchanged.
QByteArray withoutArguments(const QByteArray &text, int error);

} // namespace LogFormat
