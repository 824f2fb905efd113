#pragma once

#include <QApplication>

/// Makes a window active at once. activateWindow() only sends a request, which the offscreen platform may
/// ignore. Qt 6.8 deprecates setActiveWindow(), but tests have no replacement for it.
inline void makeActive(QWidget *window)
{
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    QApplication::setActiveWindow(window);
    QT_WARNING_POP
}
