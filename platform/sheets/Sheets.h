#pragma once

#include <QDialog>
#include <QPointer>
#include <QString>

#include <functional>
#include <memory>

namespace platform {

/// Called when a sheet or an alert has ended. A sheet is still visible then. The return code is always 0 and
/// `contextInfo` always null.
using SheetDidEnd = std::function<void(QWidget *sheet, int returnCode, void *contextInfo)>;

/// Selects the icon of an alert.
enum class AlertKind { Error, Information };

/// The texts of an alert. They are plain text, never markup.
struct AlertSheet {
    QString title;
    QString defaultButton;
    QString message;
    AlertKind kind = AlertKind::Error;
};

/// A dialog from an interface file that blocks one window. Escape and the close button run the cancel action.
/// If there is none, or if it does not end the sheet, the sheet stays open. When the host quits or the
/// session ends, the sheet closes in any case. A quit only hides the sheet, because another window may still
/// cancel the quit.
class Sheet : public QDialog {
    Q_OBJECT
public:
    explicit Sheet(QWidget *parent = nullptr);

    /// Sets the sheet's width in pixels. fitInto() makes it narrower if the window or the screen is narrower.
    void setWantedWidth(int width);
    /// Limits the sheet's width to that of `window` and its screen. Call it before the sheet is shown;
    /// `window` may be null.
    void fitInto(const QWidget *window);
    void setCancelAction(std::function<void()> action);
    void reject() override;
    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    /// Emitted when the sheet has to close because the session ends. The presenter must then end the sheet.
    void closedBySession();
    /// Emitted when a quit event has been delivered that the sheet has seen. If the event has hidden the
    /// sheet, the presenter must show the sheet again or end it.
    void quitDelivered();

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    int mWantedWidth = 0;
    std::function<void()> mCancelAction;
    /// An object that exists only while a QEvent::Quit is being delivered.
    QPointer<QObject> mQuitInDelivery;
};

/// Begins and ends sheets and alerts, which block one window. No operation waits for the user.
class SheetPresenter {
public:
    virtual ~SheetPresenter() = default;

    /// The host's main window, for messages that concern the whole application; may be null.
    virtual QWidget *applicationMainWindow() = 0;
    /// Shows the alert over `window`. If that is null, shows it over the host's main window or, without one,
    /// over the next that appears. If too many alerts are open, the alert is dropped and `didEnd` is never
    /// called.
    virtual void beginAlertSheet(const AlertSheet &alert, QWidget *window, SheetDidEnd didEnd) = 0;
    virtual void beginSheet(Sheet *sheet, QWidget *modalForWindow, SheetDidEnd didEnd) = 0;
    /// Ends the sheet with return code 0. Does nothing if the sheet is not open.
    virtual void endSheet(Sheet *sheet) = 0;
};

std::shared_ptr<SheetPresenter> makeQtSheetPresenter();

} // namespace platform
