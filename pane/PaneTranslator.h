#pragma once

#include <memory>

class QTranslator;

namespace platform {
class Bundle;
}

/// Installs the pane's translation for QLocale() next to the host's translations, and removes it in the
/// destructor. It holds only contexts of the pane's classes, so no text of the host changes. Null when the
/// bundle has no translation, as for English.
std::unique_ptr<QTranslator> makePaneTranslator(const platform::Bundle &bundle);
