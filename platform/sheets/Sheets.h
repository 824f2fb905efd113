#pragma once

#include <QDialog>
#include <QString>

#include <functional>
#include <memory>

namespace platform {

/// Called when a sheet has ended: the sheet, still on screen, its code, and the context it was begun with.
using SheetDidEnd = std::function<void(QWidget *sheet, int returnCode, void *contextInfo)>;

/// The words of an alert; plain text, never interpreted.
struct AlertSheet {
    QString title;
    QString defaultButton;
    QString message;
};

/// A window from an interface file that hangs on another one. The host's window keys for "cancel" (Escape,
/// the close button) do what `cancelAction` says; without one, or while it is refused, they do nothing.
/// A host that quits, or a session that ends, closes it in any case.
class Sheet : public QDialog {
    Q_OBJECT
public:
    explicit Sheet(QWidget *parent = nullptr);

    void setCancelAction(std::function<void()> action);
    void reject() override;
    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    /// The host has closed the sheet; whoever has begun it has to end it.
    void closedByHost();

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    [[nodiscard]] bool isClosedByHost() const;

    std::function<void()> mCancelAction;
    bool mHostQuits = false;
};

/// Begins and ends window-modal sheets; none of its operations waits for the user.
class SheetPresenter {
public:
    virtual ~SheetPresenter() = default;

    /// The window of the host that a message about the whole application hangs on; may be null.
    virtual QWidget *applicationMainWindow() = 0;
    /// Shows the alert over `window`; a null window means the one that comes next. Where very many have not
    /// been read yet, a further one is left out, and nobody is told of its end.
    virtual void beginAlertSheet(const AlertSheet &alert, QWidget *window, SheetDidEnd didEnd) = 0;
    virtual void beginSheet(Sheet *sheet, QWidget *modalForWindow, SheetDidEnd didEnd) = 0;
    /// Ends the sheet with return code 0; nothing when it is not begun.
    virtual void endSheet(Sheet *sheet) = 0;
};

std::shared_ptr<SheetPresenter> makeQtSheetPresenter();

} // namespace platform
