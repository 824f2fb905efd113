#pragma once

#include "tests/support/Timeout.h"

#include <QPaintEvent>
#include <QTest>
#include <QWidget>

#include <functional>

/// Counts the paint events of a widget.
class PaintWatch final : public QObject {
public:
    explicit PaintWatch(QWidget *widget)
        : QObject(widget)
        , mWidget(widget)
    {
        widget->installEventFilter(this);
    }
    /// Waits until pending paint events are delivered, then restarts the count. Returns false if the widget
    /// receives no paint event.
    [[nodiscard]] bool begin()
    {
        mWidget->update();
        const int before = count;
        const bool isPainted = QTest::qWaitFor([&] { return count > before; }, Timeout);
        // Deliver pending updates now, because Qt would merge them with the updates that the test counts.
        mWidget->window()->repaint();
        count = 0;
        all = {};
        return isPainted;
    }
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() != QEvent::Paint)
            return false;
        ++count;
        last = static_cast<QPaintEvent *>(event)->region();
        all += last;
        if (onPaint)
            onPaint();
        return false;
    }

    int count = 0;
    QRegion last;
    QRegion all;
    /// Hook that runs at the beginning of each paint event.
    std::function<void()> onPaint;

private:
    QWidget *mWidget;
};
