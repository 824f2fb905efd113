#include "platform/sheets/Sheets.h"

#include "platform/sheets/SentenceLabel.h"
#include "platform/sheets/SheetFrame.h"

#include <QApplication>
#include <QCloseEvent>

#include <algorithm>

namespace platform {

Sheet::Sheet(QWidget *parent)
    : QDialog(parent, sheetWindowFlags())
{
    setWindowModality(Qt::WindowModal);
}

void Sheet::setWantedWidth(int width)
{
    mWantedWidth = width;
    setFixedWidth(width);
}

void Sheet::fitInto(const QWidget *window)
{
    if (mWantedWidth == 0 || !window)
        return;
    setFixedWidth(std::min(mWantedWidth, roomOver(window)));
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
    // Qt closes every window during a quit event, and a window that refuses to close cancels the quit. So a
    // sheet may close while mQuitInDelivery exists. deleteLater() destroys that object after the event, even
    // if another window runs a nested event loop while it closes. The sheet is not the owner, because
    // ~QWidget would destroy the object and so emit quitDelivered() from a sheet that no longer exists.
    if (watched == qApp && event->type() == QEvent::Quit && !mQuitInDelivery) {
        mQuitInDelivery = new QObject(qApp);
        QObject::connect(mQuitInDelivery, &QObject::destroyed, this, &Sheet::quitDelivered);
        mQuitInDelivery->deleteLater();
    }
    return QDialog::eventFilter(watched, event);
}

void Sheet::closeEvent(QCloseEvent *event)
{
    if (mQuitInDelivery) {
        event->accept();
        return;
    }
    reject();
    const bool bySession = qApp->isSavingSession();
    event->setAccepted(bySession || !isVisible());
    if (bySession && isVisible())
        Q_EMIT closedBySession();
}

void Sheet::paintEvent(QPaintEvent *event)
{
    QDialog::paintEvent(event);
    paintSheetOutline(this);
}

} // namespace platform
