#pragma once

class QWidget;

namespace platform {

/// Whether the widget is a main window of the host: a window or a dialog without a parent, but no sheet or
/// alert.
bool isMainWindow(const QWidget *window);

/// Returns the host's active main window, or else its oldest visible one. Prefers windows to dialogs; may
/// return null.
QWidget *applicationMainWindow();

} // namespace platform
