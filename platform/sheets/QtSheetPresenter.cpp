#include "platform/sheets/QtSheetPresenter.h"

#include "platform/sheets/MainWindow.h"

#include <QCoreApplication>
#include <QEvent>

#include <algorithm>
#include <utility>

namespace platform {

QtSheetPresenter::QtSheetPresenter()
{
    QObject::connect(&mAlerts, &AlertQueue::ended, this,
                     [this](const DialogPlace &place) { passFocusOn(place, true); });
    QObject::connect(&mAlerts, &AlertQueue::presented, this, &QtSheetPresenter::watchActivation);
    // End the sheets before Qt delivers the last deferred deletes, which would show a hidden sheet again.
    QObject::connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this,
                     &QtSheetPresenter::endAll);
}

QWidget *QtSheetPresenter::applicationMainWindow()
{
    return platform::applicationMainWindow();
}

void QtSheetPresenter::beginAlertSheet(const AlertSheet &alert, QWidget *window, SheetDidEnd didEnd)
{
    mAlerts.begin(alert, window ? window : applicationMainWindow(), std::move(didEnd));
}

void QtSheetPresenter::beginSheet(Sheet *sheet, QWidget *modalForWindow, SheetDidEnd didEnd)
{
    if (!sheet || find(sheet) != mSheets.end())
        return;
    sheet->fitInto(modalForWindow);
    mSheets.push_back({placeDialog(sheet, modalForWindow), std::move(didEnd)});
    if (modalForWindow) {
        QObject::connect(modalForWindow, &QObject::destroyed, this, &QtSheetPresenter::forgetWindow,
                         Qt::UniqueConnection);
        watchActivation(modalForWindow);
    }
    QObject::connect(sheet, &QObject::destroyed, this, [this] {
        std::erase_if(mSheets, [](const BegunSheet &candidate) { return candidate.place.dialog.isNull(); });
    });
    QObject::connect(sheet, &Sheet::closedBySession, this, [this, sheet] { endSheet(sheet); });
    QObject::connect(sheet, &Sheet::quitDelivered, this, [this, sheet] { showAgainOrEnd(sheet); });
    sheet->show();
}

void QtSheetPresenter::endSheet(Sheet *sheet)
{
    const auto begun = find(sheet);
    if (!sheet || begun == mSheets.end())
        return;
    const BegunSheet ended = std::move(*begun);
    mSheets.erase(begun);
    QObject::disconnect(sheet, nullptr, this, nullptr);
    // The agent ends sheets too, while the person may work elsewhere. Ask this before the end handler,
    // because it hides the sheet.
    const bool wasActive = sheet->isActiveWindow();
    if (ended.didEnd)
        ended.didEnd(sheet, 0, nullptr);
    passFocusOn(ended.place, wasActive);
}

void QtSheetPresenter::showAgainOrEnd(Sheet *sheet)
{
    const auto begun = find(sheet);
    if (begun == mSheets.end() || sheet->isVisible())
        return;
    // A visible window refused to close, so the quit was cancelled.
    if (begun->place.window && begun->place.window->isVisible())
        sheet->show();
    else
        endSheet(sheet);
}

void QtSheetPresenter::endAll()
{
    const auto begun = mSheets;
    for (const auto &sheet : begun)
        endSheet(qobject_cast<Sheet *>(sheet.place.dialog));
}

QtSheetPresenter::BegunSheets::iterator QtSheetPresenter::find(const Sheet *sheet)
{
    return std::find_if(mSheets.begin(), mSheets.end(),
                        [sheet](const BegunSheet &begun) { return begun.place.dialog == sheet; });
}

QDialog *QtSheetPresenter::newestSheetOver(const QWidget *window) const
{
    const auto sheet = std::find_if(mSheets.rbegin(), mSheets.rend(), [window](const BegunSheet &begun) {
        const auto &dialog = begun.place.dialog;
        return dialog && dialog->isVisible() && begun.place.window == window;
    });
    return sheet == mSheets.rend() ? nullptr : sheet->place.dialog.data();
}

QDialog *QtSheetPresenter::newestOver(const QWidget *window) const
{
    auto *alert = mAlerts.newestOver(window);
    return alert ? alert : newestSheetOver(window);
}

void QtSheetPresenter::passFocusOn(const DialogPlace &place, bool wasActive)
{
    if (!place.window || !place.window->isVisible())
        return;
    auto *other = newestOver(place.window);
    if (wasActive)
        (other ? other : place.window.data())->activateWindow();
    if (!other)
        restoreFocus(place);
}

void QtSheetPresenter::watchActivation(QWidget *window)
{
    window->installEventFilter(this);
}

bool QtSheetPresenter::eventFilter(QObject *watched, QEvent *event)
{
    // Some window managers activate a new window only after its dialog was shown. Activate the dialog,
    // because a blocked window drops all keys.
    if (event->type() == QEvent::WindowActivate && watched->isWidgetType()) {
        if (auto *dialog = newestOver(static_cast<QWidget *>(watched)))
            QMetaObject::invokeMethod(dialog, &QWidget::activateWindow, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

void QtSheetPresenter::forgetWindow(const QObject *window)
{
    const auto isGone = [window](const BegunSheet &begun) { return begun.place.windowIdentity == window; };
    // Close the window's sheets without calling their end handlers, because the caller's window is gone.
    for (auto &sheet : mSheets) {
        if (isGone(sheet) && sheet.place.dialog)
            sheet.place.dialog->hide();
    }
    std::erase_if(mSheets, isGone);
}

std::shared_ptr<SheetPresenter> makeQtSheetPresenter()
{
    return std::make_shared<QtSheetPresenter>();
}

} // namespace platform
