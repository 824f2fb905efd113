#pragma once

#include "platform/sheets/Sheets.h"

#include <QMessageBox>
#include <QObject>
#include <QPointer>

#include <vector>

namespace platform {

/// Sheets as window-modal dialogs. Alerts that have no window on screen to hang on wait for the next main
/// window that appears; the application's events are looked at only while one waits.
class QtSheetPresenter final : public QObject, public SheetPresenter {
    Q_OBJECT
public:
    QtSheetPresenter();
    ~QtSheetPresenter() override;

    QWidget *applicationMainWindow() override;
    void beginAlertSheet(const AlertSheet &alert, QWidget *window, SheetDidEnd didEnd) override;
    void beginSheet(Sheet *sheet, QWidget *modalForWindow, SheetDidEnd didEnd) override;
    void endSheet(Sheet *sheet) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// One dialog over one window, and who had the keyboard before.
    struct Attachment {
        QPointer<QDialog> dialog;
        QPointer<QWidget> window;
        QPointer<QWidget> focus;
        /// The window's identity, still known while it is being destroyed.
        const QObject *windowIdentity = nullptr;
    };
    struct BegunSheet {
        Attachment place;
        SheetDidEnd didEnd;
    };
    struct BegunAlert {
        AlertSheet words;
        /// Null dialog: still waiting.
        Attachment place;
        std::vector<SheetDidEnd> didEnds;
    };

    [[nodiscard]] bool isMainWindow(const QWidget *window) const;
    [[nodiscard]] bool isOurs(const QWidget *window) const;
    BegunAlert *findAlert(const AlertSheet &alert, const QWidget *window);
    void presentAlert(BegunAlert &alert, QWidget *window);
    void presentWaitingAlerts();
    void alertEnded(const QDialog *box);
    Attachment attach(QDialog *dialog, QWidget *window);
    /// What else is up over the window, the newest alert before the newest sheet.
    [[nodiscard]] QDialog *dialogOver(const QWidget *window) const;
    void handFocusBack(const Attachment &place);
    void forgetWindow(const QObject *window);
    void watchForWindows();
    void closeAlerts();

    std::vector<BegunSheet> mSheets;
    std::vector<BegunAlert> mAlerts;
    bool mWatching = false;
};

} // namespace platform
