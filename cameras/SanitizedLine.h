#pragma once

#include <QString>

/// The text as one line of a list or a report, in which it cannot pass for another text:
/// - A character that breaks the line or is invisible is written as its code, "⟨U+000A⟩".
/// - Direction marks and paired isolates are kept, since Hebrew and Arabic names need them. A text with
///   overrides or embeddings is isolated as a whole, so that they end with it.
/// - The middle of a text longer than any screen is wide is replaced by a digest of the whole text.
QString sanitizedLine(const QString &text);
