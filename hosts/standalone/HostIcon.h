#pragma once

class QIcon;

/// The program's icon. Loads its file and Qt's SVG plug-in only when it is first drawn. On Wayland that may
/// never happen, because the compositor takes the window's icon from the desktop file.
QIcon hostIcon();
