#pragma once

#include <QDialog>
#include <QPointer>

namespace platform {

/// A sheet or alert, the window that it blocks, and the widget that had the focus before.
struct DialogPlace {
    QPointer<QDialog> dialog;
    QPointer<QWidget> window;
    QPointer<QWidget> focus;
    /// The window's address, for comparison only: `window` is null already in the window's destructor.
    const QObject *windowIdentity = nullptr;
};

/// Makes the dialog window-modal for `window` and centres it there; call this before the dialog is shown.
/// With a null `window`, the dialog blocks nothing. The dialog never becomes a child of `window`.
DialogPlace placeDialog(QDialog *dialog, QWidget *window);

/// Gives the focus inside the window back to the widget that had it before, unless another widget has got it
/// meanwhile. Does not activate the window.
void restoreFocus(const DialogPlace &place);

} // namespace platform
