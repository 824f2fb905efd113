#pragma once

class QIcon;

/// The program's icon. Its file and Qt's SVG plug-in are loaded when it is first drawn: on Wayland the
/// compositor takes the window's icon from the desktop file.
QIcon hostIcon();
