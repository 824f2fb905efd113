#pragma once

class QWidget;

namespace platform {

/// Whether the window belongs to the host: a window or an unowned dialog that is neither a sheet nor an
/// alert.
bool isMainWindow(const QWidget *window);

/// The host's active main window, else its oldest visible one. Prefers windows to dialogs; may be null.
QWidget *applicationMainWindow();

} // namespace platform
