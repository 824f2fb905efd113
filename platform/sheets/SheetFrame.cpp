#include "platform/sheets/SheetFrame.h"

#include <QGuiApplication>
#include <QPainter>
#include <QWidget>

namespace platform {
namespace {

bool isWayland()
{
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

/// Breeze's separator colour: a fifth of the text colour mixed into the window colour.
QColor outlineColour(const QPalette &palette)
{
    constexpr int AlphaOfAFifth = 51;
    QColor colour = palette.color(QPalette::WindowText);
    colour.setAlpha(AlphaOfAFifth);
    return colour;
}

} // namespace

Qt::WindowFlags sheetWindowFlags()
{
    // Wayland cannot request single title bar buttons: KWin gives every decorated window a minimise button.
    if (isWayland())
        return Qt::Dialog | Qt::FramelessWindowHint;
    return Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint;
}

void paintSheetOutline(QWidget *sheet)
{
    if (!sheet->windowFlags().testFlag(Qt::FramelessWindowHint))
        return;
    QPainter painter(sheet);
    painter.setPen(outlineColour(sheet->palette()));
    painter.drawRect(sheet->rect().adjusted(0, 0, -1, -1));
}

} // namespace platform
