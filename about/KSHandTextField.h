#pragma once

#include "widgets/LinkLabel.h"

#include <chrono>
#include <cstdint>
#include <functional>

/// A line of text that opens a web page on a click, Return or the space bar.
class KSHandTextField : public LinkLabel {
    Q_OBJECT
public:
    explicit KSHandTextField(QWidget *parent = nullptr);

    /// Sets the function that opens the page. It is called once for each click and each performClick().
    void setAction(std::function<void()> action) { mAction = std::move(action); }
    /// Does the same as a click. The keyboard handler and assistive programs call it.
    void performClick();
    [[nodiscard]] bool acceptsFirstMouse() const { return false; }
    void resetCursorRects();

protected:
    bool event(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] bool activatedWindow(const QMouseEvent *press) const;

    [[maybe_unused]] std::int64_t mMyTag = 0;
    std::function<void()> mAction;
    bool mPressed = false;
    std::chrono::steady_clock::time_point mWindowActivated;
};
