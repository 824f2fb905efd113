#pragma once

#include "tests/support/Timeout.h"

#include <QPaintEvent>
#include <QTest>
#include <QWidget>

#include <functional>

/// Watches a widget being painted.
class PaintWatch final : public QObject {
public:
    explicit PaintWatch(QWidget *widget)
        : QObject(widget)
        , mWidget(widget)
    {
        widget->installEventFilter(this);
    }
    /// Lets all be painted that is due, and counts from there. False when the widget is not painted at all.
    [[nodiscard]] bool begin()
    {
        mWidget->update();
        const int before = count;
        const bool isPainted = QTest::qWaitFor([&] { return count > before; }, Timeout);
        // What has become due meanwhile would be painted together with what follows.
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
    /// Runs at the beginning of each paint.
    std::function<void()> onPaint;

private:
    QWidget *mWidget;
};
