#pragma once

#include <QByteArray>
#include <QString>

#include <cstdarg>

/// Formats the texts of log messages. Unknown conversions are copied unchanged.
namespace LogFormat {

/// Supports `%@` for a `const QString *`, and these conversions of printf(): integers of each length, reals
/// of type double, `%c`, UTF-8 `%s`, `%p` and `%%`. Flags, width and precision work as in printf(). Stops at
/// the first unknown conversion, because the types of the arguments after it are unknown.
QString format(const char16_t *format, va_list arguments);

/// The output of printf() for the format `text` without arguments: `%%` becomes a percent sign and `%m` the
/// text of `error`. Every other conversion is copied unchanged.
QByteArray withoutArguments(const QByteArray &text, int error);

} // namespace LogFormat
