#pragma once

#include <memory>

class QTranslator;

namespace platform {
class Bundle;
}

/// Puts the pane's words in the language of QLocale() beside those that the host has: it holds contexts of
/// the pane's classes only, so no text of the host changes, and it is taken away when it is destroyed. Null
/// when the bundle has no translation, as for English.
std::unique_ptr<QTranslator> makePaneTranslator(const platform::Bundle &bundle);
