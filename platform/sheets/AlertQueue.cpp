#include "platform/sheets/AlertQueue.h"

#include "platform/base/LogCategory.h"
#include "platform/sheets/AlertBox.h"
#include "platform/sheets/MainWindow.h"

#include <QApplication>
#include <QEvent>

#include <algorithm>
#include <utility>

namespace platform {
namespace {

/// Largest number of alerts that are open or wait, in case an agent reports errors without end.
constexpr std::size_t MostAlerts = 20;

bool sameWords(const AlertSheet &a, const AlertSheet &b)
{
    return a.title == b.title && a.defaultButton == b.defaultButton && a.message == b.message;
}

} // namespace

AlertQueue::AlertQueue()
{
    // Close all boxes on aboutToQuit: later the platform plug-in may be gone, and deleting them would crash.
    QObject::connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this,
                     &AlertQueue::closeAll);
}

AlertQueue::~AlertQueue()
{
    closeAll();
}

void AlertQueue::begin(const AlertSheet &alert, QWidget *window, SheetDidEnd didEnd)
{
    if (auto *begun = find(alert, window)) {
        if (begun->didEnds.size() < MostAlerts)
            begun->didEnds.push_back(std::move(didEnd));
        return;
    }
    if (mAlerts.size() >= MostAlerts) {
        qCWarning(PLATFORM_LOG, "too many alerts are open: \"%s\" is dropped", qUtf8Printable(alert.title));
        return;
    }
    const bool isShown = window && window->isVisible();
    mAlerts.push_back({alert, {nullptr, window, nullptr, isShown ? window : nullptr}, {std::move(didEnd)}});
    if (isShown)
        presentNext(window);
    else
        watchForWindows();
}

QDialog *AlertQueue::newestOver(const QWidget *window) const
{
    const auto alert = std::find_if(mAlerts.rbegin(), mAlerts.rend(), [window](const Begun &begun) {
        return begun.place.dialog && begun.place.window == window;
    });
    return alert == mAlerts.rend() ? nullptr : alert->place.dialog.data();
}

bool AlertQueue::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Show && watched->isWidgetType()) {
        // Queue the call, because no box can be shown over a window that is still being shown.
        if (isMainWindow(static_cast<QWidget *>(watched)))
            QMetaObject::invokeMethod(this, &AlertQueue::presentWaiting, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

AlertQueue::Begun *AlertQueue::find(const AlertSheet &alert, const QWidget *window)
{
    const auto found = std::find_if(mAlerts.begin(), mAlerts.end(), [&](const Begun &begun) {
        // An alert with the same words over the same window is a repetition. An alert that waits for a window
        // will appear over the next one, so for it any window counts as the same.
        return sameWords(begun.words, alert) && (!begun.place.window || begun.place.window == window);
    });
    return found == mAlerts.end() ? nullptr : &*found;
}

void AlertQueue::presentNext(QWidget *window)
{
    // Show one box at a time. Of two boxes over one window, the box on top might be the blocked one.
    if (!window || newestOver(window))
        return;
    const auto next = std::find_if(mAlerts.begin(), mAlerts.end(),
                                   [window](const Begun &begun) { return begun.place.window == window; });
    if (next != mAlerts.end())
        present(*next, window);
}

void AlertQueue::present(Begun &alert, QWidget *window)
{
    auto *box = new AlertBox(alert.words, window);
    alert.place = placeDialog(box, window);
    QObject::connect(window, &QObject::destroyed, this, &AlertQueue::forgetWindow, Qt::UniqueConnection);
    QObject::connect(box, &QDialog::finished, this, [this, box] { finish(box); });
    box->show();
    Q_EMIT presented(window);
}

void AlertQueue::presentWaiting()
{
    auto *window = applicationMainWindow();
    if (!window)
        return;
    // Collect the windows first, because presentNext() may let alerts begin or end.
    std::vector<QPointer<QWidget>> windows;
    for (auto &alert : mAlerts) {
        if (alert.place.dialog)
            continue;
        if (!alert.place.window || !alert.place.window->isVisible())
            alert.place = {nullptr, window, nullptr, window};
        windows.push_back(alert.place.window);
    }
    qApp->removeEventFilter(this);
    mWatching = false;
    for (const auto &waitedFor : windows)
        presentNext(waitedFor);
}

void AlertQueue::finish(const QDialog *box)
{
    const auto begun = std::find_if(mAlerts.begin(), mAlerts.end(),
                                    [box](const Begun &candidate) { return candidate.place.dialog == box; });
    if (begun == mAlerts.end())
        return;
    const Begun done = std::move(*begun);
    mAlerts.erase(begun);
    for (const auto &didEnd : done.didEnds) {
        if (didEnd)
            didEnd(done.place.dialog, 0, nullptr);
    }
    presentNext(done.place.window);
    Q_EMIT ended(done.place);
    if (done.place.dialog)
        done.place.dialog->deleteLater();
}

void AlertQueue::forgetWindow(const QObject *window)
{
    const auto isGone = [window](const Begun &begun) { return begun.place.windowIdentity == window; };
    // The window is being destroyed, so close its alerts. Do not call their end handlers, because the user
    // has not confirmed the alerts.
    for (auto &alert : mAlerts) {
        if (!isGone(alert) || !alert.place.dialog)
            continue;
        alert.place.dialog->hide();
        alert.place.dialog->deleteLater();
    }
    std::erase_if(mAlerts, isGone);
}

void AlertQueue::watchForWindows()
{
    if (!std::exchange(mWatching, true))
        qApp->installEventFilter(this);
}

void AlertQueue::closeAll()
{
    const auto alerts = std::exchange(mAlerts, {});
    for (const auto &alert : alerts)
        delete alert.place.dialog;
}

} // namespace platform
