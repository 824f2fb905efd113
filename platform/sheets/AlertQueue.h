#pragma once

#include "platform/sheets/DialogPlace.h"
#include "platform/sheets/Sheets.h"

#include <QObject>

#include <vector>

namespace platform {

/// The alerts that are on screen or wait. A window shows one alert at a time. An alert without a visible
/// window waits for the next main window that is shown. An event filter on the application finds that window;
/// it is installed only while an alert waits.
class AlertQueue final : public QObject {
    Q_OBJECT
public:
    AlertQueue();
    ~AlertQueue() override;

    void begin(const AlertSheet &alert, QWidget *window, SheetDidEnd didEnd);
    /// The alert on screen over the window, or null.
    [[nodiscard]] QDialog *newestOver(const QWidget *window) const;
    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    /// Emitted when an alert has been shown over the window.
    void presented(QWidget *window);
    /// Emitted when an alert has ended and its end handlers have returned.
    void ended(const platform::DialogPlace &place);

private:
    struct Begun {
        AlertSheet words;
        /// `place.dialog` is null while the alert waits.
        DialogPlace place;
        std::vector<SheetDidEnd> didEnds;
    };

    Begun *find(const AlertSheet &alert, const QWidget *window);
    void presentNext(QWidget *window);
    void present(Begun &alert, QWidget *window);
    void presentWaiting();
    void finish(const QDialog *box);
    void forgetWindow(const QObject *window);
    void watchForWindows();
    void closeAll();

    std::vector<Begun> mAlerts;
    bool mWatching = false;
};

} // namespace platform
