#include "platform/sheets/Sheets.h"

#include "platform/sheets/SheetFrame.h"

#include <QApplication>
#include <QCloseEvent>
#include <QScreen>

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
    const int room = std::min(window->width(), window->screen()->availableSize().width());
    setFixedWidth(std::min(mWantedWidth, room));
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
    // Qt 6 closes every window during a quit event, and a window that refuses to close cancels the quit. So a
    // sheet may close while mQuitInDelivery exists. deleteLater() destroys that object after the event, even
    // if another window runs a nested event loop while it closes.
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
