#pragma once

#include <QString>

class KSPreferencesPanePref;

/// Returns the process's only pane, which uses the real desktop services. The first call creates it. It is
/// never destroyed.
KSPreferencesPanePref *sharedPane();

/// Keeps Qt from opening a session bus that does not reply, because Qt opens it without a timeout. Only a
/// host with a process of its own may call this, before it constructs the QApplication.
/// If the bus does not reply, Qt's platform theme and accessibility bridge run without it until the process
/// ends.
void keepToolkitOffSilentBus();

/// Returns a description of this machine as plain text. Creates no pane and needs no display.
QString diagnosis();
