#pragma once

#include <QString>

class KSPreferencesPanePref;

/// The process's one pane on the real desktop, created on the first call and never destroyed.
KSPreferencesPanePref *sharedPane();

/// For a process of our own, before its QApplication: Qt's platform theme and accessibility bridge open the
/// session bus without a time-out. When the bus keeps silent, Qt gets none until the process ends.
void keepToolkitOffSilentBus();

/// What the pane would find on the real desktop, as plain text for a bug report; makes no pane and needs no
/// display.
QString diagnosis();
