#include "platform/sheets/AlertBox.h"

#include "platform/sheets/SheetFrame.h"
#include "platform/sheets/Sheets.h"

#include <QLabel>
#include <QPushButton>

#include <algorithm>

namespace platform {
namespace {

/// The length of the longest readable line, in characters of average width.
constexpr int LongestLine = 68;

/// Widens the label to the length of its text, up to LongestLine. Otherwise QMessageBox wraps its informative
/// text at the width of its title.
void giveSentencesALine(QLabel *label)
{
    if (!label)
        return;
    label->setWordWrap(false);
    const int unwrapped = label->sizeHint().width();
    label->setWordWrap(true);
    label->setMinimumWidth(std::min(unwrapped, label->fontMetrics().averageCharWidth() * LongestLine));
}

} // namespace

AlertBox::AlertBox(const AlertSheet &alert)
{
    setObjectName(QStringLiteral("alertSheet"));
    setWindowFlags(sheetWindowFlags());
    setIcon(alert.kind == AlertKind::Error ? QMessageBox::Warning : QMessageBox::Information);
    setWindowTitle(alert.title);
    setText(alert.title);
    setInformativeText(alert.message);
    setAccessibleName(alert.title);
    setAccessibleDescription(alert.message);
    // Alert texts are never markup, but QMessageBox::setTextFormat() applies to its first label only. So set
    // the format of every label.
    const auto labels = findChildren<QLabel *>();
    for (auto *label : labels)
        label->setTextFormat(Qt::PlainText);
    giveSentencesALine(findChild<QLabel *>(QStringLiteral("qt_msgbox_informativelabel")));
    auto *button = addButton(alert.defaultButton, QMessageBox::AcceptRole);
    setDefaultButton(button);
    setEscapeButton(button);
}

void AlertBox::paintEvent(QPaintEvent *event)
{
    QMessageBox::paintEvent(event);
    paintSheetOutline(this);
}

} // namespace platform
