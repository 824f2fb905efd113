#include "platform/sheets/DialogPlace.h"

#include <QEvent>
#include <QWindow>

namespace platform {
namespace {

void centreOver(QWidget *dialog, const QWidget *window)
{
    dialog->adjustSize();
    dialog->move(window->frameGeometry().center() - dialog->rect().center());
}

/// Centres a dialog again when its parent window is exposed: window managers place new windows late.
class Recentring final : public QObject {
public:
    Recentring(QWidget *dialog, QWidget *window)
        : QObject(dialog)
        , mDialog(dialog)
        , mWindow(window)
    {
        window->windowHandle()->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Expose && static_cast<QWindow *>(watched)->isExposed()) {
            watched->removeEventFilter(this);
            if (mWindow)
                centreOver(mDialog, mWindow);
            deleteLater();
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QWidget *mDialog;
    QPointer<QWidget> mWindow;
};

/// Sets the dialog's transient parent when it is shown. Before its QShowEvent, the dialog has no QWindow.
/// QWidget::winId() would create the QWindow earlier, but would also give every sibling of the dialog a
/// native window. On Wayland these are subsurfaces, which the compositor draws at wrong places.
class TransientOnShow final : public QObject {
public:
    TransientOnShow(QWidget *dialog, QWidget *window)
        : QObject(dialog)
        , mDialog(dialog)
        , mWindow(window)
    {
        dialog->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Show && !event->spontaneous()) {
            if (mWindow && mDialog->windowHandle())
                mDialog->windowHandle()->setTransientParent(mWindow->windowHandle());
            watched->removeEventFilter(this);
            deleteLater();
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QWidget *mDialog;
    QPointer<QWidget> mWindow;
};

} // namespace

DialogPlace placeDialog(QDialog *dialog, QWidget *window)
{
    if (!window)
        return {dialog, nullptr, nullptr, nullptr};
    dialog->setWindowModality(Qt::WindowModal);
    new TransientOnShow(dialog, window);
    centreOver(dialog, window);
    if (window->windowHandle() && !window->windowHandle()->isExposed())
        new Recentring(dialog, window);
    return {dialog, window, window->focusWidget(), window};
}

void restoreFocus(const DialogPlace &place)
{
    // Code may have moved the focus behind the dialog, such as to a list that is enabled again. Keep that.
    const auto *focus = place.window ? place.window->focusWidget() : nullptr;
    if (focus && focus != place.focus)
        return;
    if (place.focus && place.focus->isVisible())
        place.focus->setFocus(Qt::ActiveWindowFocusReason);
}

} // namespace platform
