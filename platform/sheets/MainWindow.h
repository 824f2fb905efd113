#pragma once

class QWidget;

namespace platform {

/// Whether the widget is a window of the host or a dialog without a parent, but no sheet or alert.
bool isMainWindow(const QWidget *window);

/// The host's active main window, or else its oldest visible one. Prefers windows to dialogs; may be null.
QWidget *applicationMainWindow();

} // namespace platform
