#include "platform/sheets/Sheets.h"

#include <QApplication>
#include <QCloseEvent>

namespace platform {

Sheet::Sheet(QWidget *parent)
    : QDialog(parent)
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
    mHostQuits = false;
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
    // A quit may close every window first (Qt 6 does), and one that refuses keeps the host alive.
    if (watched == qApp && event->type() == QEvent::Quit)
        mHostQuits = true;
    return QDialog::eventFilter(watched, event);
}

bool Sheet::isClosedByHost() const
{
    return mHostQuits || qApp->isSavingSession();
}

void Sheet::closeEvent(QCloseEvent *event)
{
    reject();
    const bool byHost = isClosedByHost();
    event->setAccepted(byHost || !isVisible());
    if (byHost && isVisible())
        Q_EMIT closedByHost();
}

} // namespace platform
