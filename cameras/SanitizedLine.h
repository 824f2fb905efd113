#pragma once

#include <QString>

/// Converts a text to one line of a list or a report, so that it cannot imitate another text:
/// - A line break or an invisible character is replaced by its code, such as "⟨U+000A⟩".
/// - Direction marks and paired isolates stay, because Hebrew and Arabic names need them.
/// - A text with overrides or embeddings is put into an isolate, so that they do not reorder later text.
/// - If the text is wider than a screen, a digest of the whole text replaces its middle.
QString sanitizedLine(const QString &text);
