#pragma once

#include <QDialog>
#include <QPointer>

namespace platform {

/// Position of a sheet or alert: the dialog, the window that it blocks, and the focus to restore afterwards.
struct DialogPlace {
    QPointer<QDialog> dialog;
    QPointer<QWidget> window;
    QPointer<QWidget> focus;
    /// Identifies the window, also while it is being destroyed.
    const QObject *windowIdentity = nullptr;
};

/// Makes the dialog window-modal for `window` and centres it there; call it before the dialog is shown.
/// A null window gives a dialog that blocks nothing. The dialog does not become a child of `window`.
DialogPlace placeDialog(QDialog *dialog, QWidget *window);

/// Activates the window again and restores its focus widget.
void restoreFocus(const DialogPlace &place);

} // namespace platform
