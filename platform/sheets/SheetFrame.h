#pragma once

#include <Qt>

class QWidget;

namespace platform {

/// Window flags of sheets and alerts: no minimise or maximise button, and on Wayland no title bar.
Qt::WindowFlags sheetWindowFlags();

/// Draws the outline of a sheet or alert without a title bar. Call it at the end of paintEvent().
void paintSheetOutline(QWidget *sheet);

} // namespace platform
