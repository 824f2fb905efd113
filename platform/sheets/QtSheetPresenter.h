#pragma once

#include "platform/sheets/AlertQueue.h"
#include "platform/sheets/DialogPlace.h"
#include "platform/sheets/Sheets.h"

#include <QObject>

#include <vector>

namespace platform {

/// Shows sheets as window-modal dialogs, and alerts one at a time. When an active dialog ends, the newest
/// other dialog over its window gets the focus, or else the window.
class QtSheetPresenter final : public QObject, public SheetPresenter {
    Q_OBJECT
public:
    QtSheetPresenter();

    QWidget *applicationMainWindow() override;
    void beginAlertSheet(const AlertSheet &alert, QWidget *window, SheetDidEnd didEnd) override;
    void beginSheet(Sheet *sheet, QWidget *modalForWindow, SheetDidEnd didEnd) override;
    void endSheet(Sheet *sheet) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct BegunSheet {
        DialogPlace place;
        SheetDidEnd didEnd;
    };
    using BegunSheets = std::vector<BegunSheet>;

    BegunSheets::iterator find(const Sheet *sheet);
    /// Shows a sheet again that a quit event has hidden. If its window was closed meanwhile, ends the sheet.
    void showAgainOrEnd(Sheet *sheet);
    void endAll();
    [[nodiscard]] QDialog *newestSheetOver(const QWidget *window) const;
    [[nodiscard]] QDialog *newestOver(const QWidget *window) const;
    /// From now on, activates the newest dialog over the window whenever the window becomes active.
    void watchActivation(QWidget *window);
    /// Activates the window only if the dialog that has ended was active.
    void passFocusOn(const DialogPlace &place, bool wasActive);
    void forgetWindow(const QObject *window);

    BegunSheets mSheets;
    AlertQueue mAlerts;
};

} // namespace platform
