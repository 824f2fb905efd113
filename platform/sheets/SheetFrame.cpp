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

/// Mixes a fifth of the text colour into the window colour, like the separators of the style Breeze.
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
    // A Wayland client cannot choose single title bar buttons, and KWin gives every decorated window a
    // minimise button. So use no title bar there.
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
