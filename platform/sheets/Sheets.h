#pragma once

#include <QDialog>
#include <QPointer>
#include <QString>

#include <functional>
#include <memory>

namespace platform {

/// Called when a sheet has ended: the sheet, which is still visible, its return code and the context given at
/// its begin.
using SheetDidEnd = std::function<void(QWidget *sheet, int returnCode, void *contextInfo)>;

/// Selects the icon of an alert.
enum class AlertKind { Error, Information };

/// Texts of an alert; plain text, never interpreted as markup.
struct AlertSheet {
    QString title;
    QString defaultButton;
    QString message;
    AlertKind kind = AlertKind::Error;
};

/// A dialog from an interface file that blocks one window. Escape and the close button run the cancel action.
/// Without a cancel action, or when it does not end the sheet, they do nothing. A host that quits or a
/// session that ends closes the sheet in any case.
class Sheet : public QDialog {
    Q_OBJECT
public:
    explicit Sheet(QWidget *parent = nullptr);

    /// The sheet's width in pixels, where window and screen are as wide.
    void setWantedWidth(int width);
    /// Settles the width before the sheet is shown over `window`, which may be null.
    void fitInto(const QWidget *window);
    void setCancelAction(std::function<void()> action);
    void reject() override;
    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    /// The host has closed the sheet; the presenter has to end it.
    void closedByHost();

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] bool isClosedByHost() const;

    int mWantedWidth = 0;
    std::function<void()> mCancelAction;
    /// Not null while a QEvent::Quit is being delivered.
    QPointer<QObject> mQuitInDelivery;
};

/// Begins and ends window-modal sheets; none of its operations waits for the user.
class SheetPresenter {
public:
    virtual ~SheetPresenter() = default;

    /// The host's main window, for messages that concern the whole application; may be null.
    virtual QWidget *applicationMainWindow() = 0;
    /// Shows the alert over `window`; a null window means the next main window that is shown. When very many
    /// alerts are open, the alert is dropped and `didEnd` never runs.
    virtual void beginAlertSheet(const AlertSheet &alert, QWidget *window, SheetDidEnd didEnd) = 0;
    virtual void beginSheet(Sheet *sheet, QWidget *modalForWindow, SheetDidEnd didEnd) = 0;
    /// Ends the sheet with return code 0. Ignored for a sheet that is not open.
    virtual void endSheet(Sheet *sheet) = 0;
};

std::shared_ptr<SheetPresenter> makeQtSheetPresenter();

} // namespace platform
