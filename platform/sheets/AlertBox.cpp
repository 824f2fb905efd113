#include "platform/sheets/AlertBox.h"

#include "platform/sheets/SentenceLabel.h"
#include "platform/sheets/SheetFrame.h"
#include "platform/sheets/Sheets.h"

#include <QLabel>
#include <QPushButton>

namespace platform {

AlertBox::AlertBox(const AlertSheet &alert, const QWidget *window)
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
    auto *button = addButton(alert.defaultButton, QMessageBox::AcceptRole);
    setDefaultButton(button);
    setEscapeButton(button);
    // QMessageBox wraps its informative text at the width of its title, unless the label has a minimum width.
    if (auto *message = findChild<QLabel *>(QStringLiteral("qt_msgbox_informativelabel")))
        fitSentence(message, window);
}

void AlertBox::paintEvent(QPaintEvent *event)
{
    QMessageBox::paintEvent(event);
    paintSheetOutline(this);
}

} // namespace platform
