#pragma once

#include <Qt>

class QWidget;

namespace platform {

/// Window flags of sheets and alerts: no buttons that minimise or maximise. On Wayland there is no title bar.
Qt::WindowFlags sheetWindowFlags();

/// Draws the outline of a sheet or alert that has no title bar; call it from paintEvent(), last.
void paintSheetOutline(QWidget *sheet);

} // namespace platform
