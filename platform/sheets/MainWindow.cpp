#include "platform/sheets/MainWindow.h"

#include "platform/sheets/AlertBox.h"
#include "platform/sheets/Sheets.h"

#include <QApplication>
#include <QWindow>

#include <algorithm>

namespace platform {
namespace {

QWidget *widgetOf(const QWindow *window)
{
    const auto widgets = QApplication::topLevelWidgets();
    const auto found = std::find_if(widgets.begin(), widgets.end(),
                                    [window](QWidget *widget) { return widget->windowHandle() == window; });
    return found == widgets.end() ? nullptr : *found;
}

/// The host's visible main windows, the oldest first.
QList<QWidget *> visibleMainWindows()
{
    QList<QWidget *> windows;
    const auto handles = QGuiApplication::topLevelWindows();
    for (const auto *handle : handles) {
        auto *widget = widgetOf(handle);
        if (widget && widget->isVisible() && isMainWindow(widget))
            windows.append(widget);
    }
    return windows;
}

bool isDialog(const QWidget *window)
{
    return qobject_cast<const QDialog *>(window);
}

} // namespace

bool isMainWindow(const QWidget *window)
{
    if (!window->isWindow() || qobject_cast<const Sheet *>(window) || qobject_cast<const AlertBox *>(window))
        return false;
    const auto type = window->windowType();
    return type == Qt::Window || (type == Qt::Dialog && !window->parentWidget());
}

QWidget *applicationMainWindow()
{
    auto *active = QApplication::activeWindow();
    if (active && active->isVisible() && isMainWindow(active) && !isDialog(active))
        return active;
    const auto windows = visibleMainWindows();
    const auto window = std::find_if_not(windows.begin(), windows.end(), isDialog);
    if (window != windows.end())
        return *window;
    // Accept a dialog as well, because it is the only window of some hosts.
    return windows.isEmpty() ? nullptr : windows.constFirst();
}

} // namespace platform
