#include "platform/sheets/Sheets.h"

#include "platform/sheets/SheetFrame.h"

#include <QApplication>
#include <QCloseEvent>

namespace platform {

Sheet::Sheet(QWidget *parent)
    : QDialog(parent, sheetWindowFlags())
{
    setWindowModality(Qt::WindowModal);
}

void Sheet::setCancelAction(std::function<void()> action)
{
    mCancelAction = std::move(action);
}

void Sheet::reject()
{
    if (mCancelAction)
        mCancelAction();
}

void Sheet::showEvent(QShowEvent *event)
{
    qApp->installEventFilter(this);
    QDialog::showEvent(event);
}

void Sheet::hideEvent(QHideEvent *event)
{
    qApp->removeEventFilter(this);
    QDialog::hideEvent(event);
}

bool Sheet::eventFilter(QObject *watched, QEvent *event)
{
    // Qt 6 closes every window while it delivers a quit, and a window that refuses cancels the quit.
    // deleteLater() marks the end of the delivery: event loops that a window nests in its closing do not
    // delete the object.
    if (watched == qApp && event->type() == QEvent::Quit && !mQuitInDelivery) {
        mQuitInDelivery = new QObject(this);
        mQuitInDelivery->deleteLater();
    }
    return QDialog::eventFilter(watched, event);
}

bool Sheet::isClosedByHost() const
{
    return mQuitInDelivery || qApp->isSavingSession();
}

void Sheet::closeEvent(QCloseEvent *event)
{
    reject();
    const bool byHost = isClosedByHost();
    event->setAccepted(byHost || !isVisible());
    if (byHost && isVisible())
        Q_EMIT closedByHost();
}

void Sheet::paintEvent(QPaintEvent *event)
{
    QDialog::paintEvent(event);
    paintSheetOutline(this);
}

} // namespace platform
