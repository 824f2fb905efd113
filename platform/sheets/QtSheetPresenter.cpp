#include "platform/sheets/QtSheetPresenter.h"

#include "platform/LogCategory.h"

#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QPushButton>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace platform {
namespace {

/// More than a person ever has to read at once. An agent that never stops complaining must not fill the
/// desktop with boxes.
constexpr std::size_t MostAlerts = 20;

bool sameWords(const AlertSheet &a, const AlertSheet &b)
{
    return a.title == b.title && a.defaultButton == b.defaultButton && a.message == b.message;
}

QWidget *widgetOf(const QWindow *window)
{
    const auto widgets = QApplication::topLevelWidgets();
    const auto found = std::find_if(widgets.begin(), widgets.end(),
                                    [window](QWidget *widget) { return widget->windowHandle() == window; });
    return found == widgets.end() ? nullptr : *found;
}

/// The host's windows, the oldest first.
QList<QWidget *> visibleWindows()
{
    QList<QWidget *> windows;
    const auto handles = QGuiApplication::topLevelWindows();
    for (const auto *handle : handles) {
        auto *widget = widgetOf(handle);
        if (widget && widget->isVisible())
            windows.append(widget);
    }
    return windows;
}

QMessageBox *makeBox(const AlertSheet &alert)
{
    auto *box = new QMessageBox;
    box->setObjectName(QStringLiteral("alertSheet"));
    box->setIcon(QMessageBox::Warning);
    box->setWindowTitle(alert.title);
    box->setText(alert.title);
    box->setInformativeText(alert.message);
    box->setAccessibleName(alert.title);
    box->setAccessibleDescription(alert.message);
    // The box sets the format of its first label only; words of strangers are never markup.
    const auto labels = box->findChildren<QLabel *>();
    for (auto *label : labels)
        label->setTextFormat(Qt::PlainText);
    auto *button = box->addButton(alert.defaultButton, QMessageBox::AcceptRole);
    box->setDefaultButton(button);
    box->setEscapeButton(button);
    return box;
}

void centreOver(QWidget *dialog, const QWidget *window)
{
    dialog->adjustSize();
    dialog->move(window->frameGeometry().center() - dialog->rect().center());
}

/// Keeps a dialog over a window that has only just come up until the window manager has put that in its
/// place.
class CentringFollower final : public QObject {
public:
    CentringFollower(QWidget *dialog, QWidget *window)
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

/// The dialog becomes the window's without becoming its child: it must outlive it.
void makeTransient(QWidget *dialog, QWidget *window)
{
    dialog->setWindowModality(Qt::WindowModal);
    dialog->winId();
    window->winId();
    dialog->windowHandle()->setTransientParent(window->windowHandle());
}

} // namespace

QtSheetPresenter::QtSheetPresenter()
{
    // Later there is no window system any more in which a box could be taken down.
    QObject::connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this,
                     &QtSheetPresenter::closeAlerts);
}

QtSheetPresenter::~QtSheetPresenter()
{
    closeAlerts();
}

QWidget *QtSheetPresenter::applicationMainWindow()
{
    auto *active = QApplication::activeWindow();
    if (active && active->isVisible() && isMainWindow(active) && !qobject_cast<QDialog *>(active))
        return active;
    const auto windows = visibleWindows();
    QWidget *dialog = nullptr;
    for (auto *window : windows) {
        if (!isMainWindow(window))
            continue;
        if (!qobject_cast<QDialog *>(window))
            return window;
        if (!dialog)
            dialog = window;
    }
    // There are hosts whose one window is a dialog.
    return dialog;
}

void QtSheetPresenter::beginAlertSheet(const AlertSheet &alert, QWidget *window, SheetDidEnd didEnd)
{
    if (!window)
        window = applicationMainWindow();
    if (auto *begun = findAlert(alert, window)) {
        if (begun->didEnds.size() < MostAlerts)
            begun->didEnds.push_back(std::move(didEnd));
        return;
    }
    if (mAlerts.size() >= MostAlerts) {
        qCWarning(KS7_PLATFORM, "too many messages wait to be read: \"%s\" is left out",
                  qUtf8Printable(alert.title));
        return;
    }
    mAlerts.push_back({alert, {nullptr, window, nullptr, nullptr}, {std::move(didEnd)}});
    if (window && window->isVisible())
        presentAlert(mAlerts.back(), window);
    else
        watchForWindows();
}

void QtSheetPresenter::beginSheet(Sheet *sheet, QWidget *modalForWindow, SheetDidEnd didEnd)
{
    const auto begun = std::find_if(mSheets.begin(), mSheets.end(), [sheet](const BegunSheet &candidate) {
        return candidate.place.dialog == sheet;
    });
    if (!sheet || begun != mSheets.end())
        return;
    mSheets.push_back({attach(sheet, modalForWindow), std::move(didEnd)});
    QObject::connect(sheet, &QObject::destroyed, this, [this] {
        std::erase_if(mSheets, [](const BegunSheet &candidate) { return candidate.place.dialog.isNull(); });
    });
    QObject::connect(sheet, &Sheet::closedByHost, this, [this, sheet] { endSheet(sheet); });
    sheet->show();
}

void QtSheetPresenter::endSheet(Sheet *sheet)
{
    const auto begun = std::find_if(mSheets.begin(), mSheets.end(), [sheet](const BegunSheet &candidate) {
        return candidate.place.dialog == sheet;
    });
    if (!sheet || begun == mSheets.end())
        return;
    const BegunSheet ended = *begun;
    mSheets.erase(begun);
    QObject::disconnect(sheet, nullptr, this, nullptr);
    if (ended.didEnd)
        ended.didEnd(sheet, 0, nullptr);
    handFocusBack(ended.place);
}

bool QtSheetPresenter::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Show && watched->isWidgetType()) {
        // Not from inside the window's own showing.
        if (isMainWindow(static_cast<QWidget *>(watched)))
            QMetaObject::invokeMethod(this, &QtSheetPresenter::presentWaitingAlerts, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

bool QtSheetPresenter::isMainWindow(const QWidget *window) const
{
    if (!window->isWindow() || isOurs(window))
        return false;
    const auto type = window->windowType();
    return type == Qt::Window || (type == Qt::Dialog && !window->parentWidget());
}

bool QtSheetPresenter::isOurs(const QWidget *window) const
{
    return qobject_cast<const Sheet *>(window)
        || std::any_of(mAlerts.begin(), mAlerts.end(),
                       [window](const BegunAlert &alert) { return alert.place.dialog == window; });
}

QtSheetPresenter::BegunAlert *QtSheetPresenter::findAlert(const AlertSheet &alert, const QWidget *window)
{
    const auto found = std::find_if(mAlerts.begin(), mAlerts.end(), [&](const BegunAlert &begun) {
        return sameWords(begun.words, alert) && begun.place.window == window;
    });
    return found == mAlerts.end() ? nullptr : &*found;
}

void QtSheetPresenter::presentAlert(BegunAlert &alert, QWidget *window)
{
    auto *box = makeBox(alert.words);
    alert.place = attach(box, window);
    QObject::connect(box, &QDialog::finished, this, [this, box] { alertEnded(box); });
    box->show();
}

void QtSheetPresenter::presentWaitingAlerts()
{
    auto *window = applicationMainWindow();
    if (!window)
        return;
    // Showing a box runs foreign code, which may begin further alerts.
    for (std::size_t i = 0; i < mAlerts.size(); ++i) {
        if (!mAlerts[i].place.dialog)
            presentAlert(mAlerts[i], window);
    }
    qApp->removeEventFilter(this);
    mWatching = false;
}

void QtSheetPresenter::alertEnded(const QDialog *box)
{
    const auto begun = std::find_if(mAlerts.begin(), mAlerts.end(), [box](const BegunAlert &candidate) {
        return candidate.place.dialog == box;
    });
    if (begun == mAlerts.end())
        return;
    const BegunAlert ended = std::move(*begun);
    mAlerts.erase(begun);
    for (const auto &didEnd : ended.didEnds) {
        if (didEnd)
            didEnd(ended.place.dialog, 0, nullptr);
    }
    handFocusBack(ended.place);
    if (ended.place.dialog)
        ended.place.dialog->deleteLater();
}

QtSheetPresenter::Attachment QtSheetPresenter::attach(QDialog *dialog, QWidget *window)
{
    if (!window)
        return {dialog, nullptr, nullptr, nullptr};
    makeTransient(dialog, window);
    centreOver(dialog, window);
    if (!window->windowHandle()->isExposed())
        new CentringFollower(dialog, window);
    QObject::connect(window, &QObject::destroyed, this, &QtSheetPresenter::forgetWindow,
                     Qt::UniqueConnection);
    return {dialog, window, window->focusWidget(), window};
}

void QtSheetPresenter::handFocusBack(const Attachment &place)
{
    if (!place.window || !place.window->isVisible())
        return;
    if (auto *other = dialogOver(place.window)) {
        other->activateWindow();
        return;
    }
    place.window->activateWindow();
    if (place.focus && place.focus->isVisible())
        place.focus->setFocus(Qt::ActiveWindowFocusReason);
}

QDialog *QtSheetPresenter::dialogOver(const QWidget *window) const
{
    const auto isOver = [window](const auto &begun) {
        return begun.place.dialog && begun.place.window == window;
    };
    const auto alert = std::find_if(mAlerts.rbegin(), mAlerts.rend(), isOver);
    if (alert != mAlerts.rend())
        return alert->place.dialog;
    const auto sheet = std::find_if(mSheets.rbegin(), mSheets.rend(), isOver);
    return sheet == mSheets.rend() ? nullptr : sheet->place.dialog.data();
}

void QtSheetPresenter::forgetWindow(const QObject *window)
{
    // Nobody is left to answer: what hung on the window goes off the screen without an end.
    const auto isGone = [window](const auto &begun) { return begun.place.windowIdentity == window; };
    for (auto &sheet : mSheets) {
        if (isGone(sheet) && sheet.place.dialog)
            sheet.place.dialog->hide();
    }
    std::erase_if(mSheets, isGone);
    for (auto &alert : mAlerts) {
        if (!isGone(alert) || !alert.place.dialog)
            continue;
        alert.place.dialog->hide();
        alert.place.dialog->deleteLater();
    }
    std::erase_if(mAlerts, isGone);
}

void QtSheetPresenter::watchForWindows()
{
    if (!std::exchange(mWatching, true))
        qApp->installEventFilter(this);
}

void QtSheetPresenter::closeAlerts()
{
    const auto alerts = std::exchange(mAlerts, {});
    for (const auto &alert : alerts)
        delete alert.place.dialog;
}

std::shared_ptr<SheetPresenter> makeQtSheetPresenter()
{
    return std::make_shared<QtSheetPresenter>();
}

} // namespace platform
