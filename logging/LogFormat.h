#pragma once

#include <QByteArray>
#include <QString>

#include <cstdarg>

/// Formats text. Anything but a known conversion is copied as it stands.
namespace LogFormat {

/// Knows `%@` for a `const QString *`, and of printf the integers and reals of each length, `%c`, UTF-8 `%s`,
/// `%p` and `%%` with flags, width and precision. Stops converting at the first unknown conversion, since the
/// types of the arguments from there on are unknown.
QString format(const char16_t *format, va_list arguments);

/// What printf() prints for the format `text` without arguments: `%%` becomes a percent sign, `%m` the text
/// of `error`. Every other conversion is copied as it stands.
QByteArray withoutArguments(const QByteArray &text, int error);

} // namespace LogFormat
