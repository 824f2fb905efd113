#pragma once

#include <QString>

class KSPreferencesPanePref;

/// The process's one pane with the real desktop services. The first call creates it; it is never destroyed.
KSPreferencesPanePref *sharedPane();

/// Call before the QApplication is constructed, in a process of our own. Qt's platform theme and
/// accessibility bridge open the session bus without a timeout. If the bus does not reply, Qt runs without it
/// until the process ends.
void keepToolkitOffSilentBus();

/// The diagnosis of this machine as plain text. Creates no pane and needs no display.
QString diagnosis();
