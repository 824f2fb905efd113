#pragma once

class QWidget;

namespace platform {

/// Whether the window is a main window of the host: a window or an unowned dialog, but no sheet or alert.
bool isMainWindow(const QWidget *window);

/// The host's active main window, else its oldest visible one. Prefers windows to dialogs; may be null.
QWidget *applicationMainWindow();

} // namespace platform
