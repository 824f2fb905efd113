#pragma once

#include <QApplication>

/// Makes a window the active one at once. activateWindow() only asks the window system, and the off-screen
/// platform does not always answer; Qt 6.8 deprecates setActiveWindow() without a replacement for tests.
inline void makeActive(QWidget *window)
{
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    QApplication::setActiveWindow(window);
    QT_WARNING_POP
}
