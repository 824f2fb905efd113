#pragma once

#include <QByteArray>
#include <QString>

#include <cstdarg>

/// Turns formats into text without trusting them: what is no conversion stands as it was written.
namespace LogFormat {

/// printf's conversions and `%@` for a `const QString *`; `%S` and `%C` are UTF-16. Nothing is converted
/// after the first unknown conversion, because nobody knows which arguments belong to it.
QString format(const char16_t *format, va_list arguments);

/// What printf makes of `text` as its format when it has no arguments: `%%` is a percent sign, `%m` the text
/// of `error`, every other conversion stands as it was written.
QByteArray withoutArguments(const QByteArray &text, int error);

} // namespace LogFormat
