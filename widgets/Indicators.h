#pragma once

#include <QBasicTimer>
#include <QPointer>
#include <QProgressBar>
#include <QWidget>

#include <memory>

namespace platform {

class RunLoop;
class Timer;

/// A bar for a value from 0 to 1. value() may lie outside that range; the drawing and the accessible value
/// are clamped.
class LevelIndicator : public QWidget {
    Q_OBJECT
public:
    explicit LevelIndicator(QWidget *parent = nullptr);

    [[nodiscard]] double doubleValue() const { return mValue; }
    void setDoubleValue(double value);
    /// The filled part of the range, 0 to 1.
    [[nodiscard]] double fraction() const;
    /// Widget whose text is the accessible label. As a QLabel buddy the meter would get a keyboard shortcut
    /// in some hosts.
    void setLabel(QWidget *label) { mLabel = label; }
    [[nodiscard]] QWidget *label() const { return mLabel; }
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] int segmentCount() const;
    [[nodiscard]] int litCount() const;
    [[nodiscard]] QRect segmentRect(int segment) const;

    double mValue = 0.0;
    QPointer<QWidget> mLabel;
};

/// A determinate progress bar with the range 0 to 1, and the state of its animation.
class ProgressIndicator : public QProgressBar {
    Q_OBJECT
public:
    explicit ProgressIndicator(QWidget *parent = nullptr);

    [[nodiscard]] double doubleValue() const { return mValue; }
    void setDoubleValue(double value);
    void startAnimation() { mAnimating = true; }
    void stopAnimation() { mAnimating = false; }
    [[nodiscard]] bool isAnimating() const { return mAnimating; }

private:
    double mValue = 0.0;
    bool mAnimating = false;
};

/// A small wheel that turns while an operation of unknown length runs. It is hidden otherwise and keeps its
/// space.
class SpinnerIndicator : public QWidget {
    Q_OBJECT
public:
    explicit SpinnerIndicator(QWidget *parent = nullptr);

    /// Visible while started. The animation runs only while the widget is visible.
    void startAnimation();
    void stopAnimation();
    [[nodiscard]] bool isAnimating() const { return !isHidden(); }
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void timerEvent(QTimerEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    QBasicTimer mTimer;
    int mStep = 0;
};

} // namespace platform
