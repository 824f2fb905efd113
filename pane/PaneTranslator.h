#pragma once

#include <memory>

class QTranslator;

namespace platform {
class Bundle;
}

/// Installs the pane's translation for QLocale() beside those of the host. Returns null when the bundle has
/// no such translation, as for English. Deleting the translator uninstalls it.
/// The translation contains only the pane's contexts, so the host's texts stay unchanged.
std::unique_ptr<QTranslator> makePaneTranslator(const platform::Bundle &bundle);
