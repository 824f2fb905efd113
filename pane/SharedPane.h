#pragma once

#include <QString>

class KSPreferencesPanePref;

/// The process's one pane on the real desktop, created on the first call and never destroyed.
KSPreferencesPanePref *sharedPane();

/// The same for the stand-alone host, where a silent session bus must not block Qt's accessibility bridge
/// either.
KSPreferencesPanePref *sharedPaneOfOwnProcess();

/// What the pane would find on the real desktop, as plain text for a bug report; makes no pane and needs no
/// display.
QString diagnosis();
