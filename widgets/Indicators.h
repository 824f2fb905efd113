#pragma once

#include <QBasicTimer>
#include <QPointer>
#include <QProgressBar>
#include <QWidget>

#include <memory>

namespace platform {

class RunLoop;
class Timer;

/// A level meter for values from 0 to 1. doubleValue() may be outside that range; the drawing and the
/// accessible value are clamped to it.
class LevelIndicator : public QWidget {
    Q_OBJECT
public:
    explicit LevelIndicator(QWidget *parent = nullptr);

    [[nodiscard]] double doubleValue() const { return mValue; }
    void setDoubleValue(double value);
    /// The lit part of the meter, from 0 to 1.
    [[nodiscard]] double fraction() const;
    /// Sets the widget whose text is the meter's accessible label. QLabel::setBuddy() is not used, because
    /// some hosts give every buddy a keyboard shortcut.
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

/// A progress bar for values from 0 to 1. It draws no animation: startAnimation() and stopAnimation() only
/// change the result of isAnimating().
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

/// A small wheel that turns while an operation of unknown length runs. Otherwise it is hidden, but the layout
/// keeps its space free.
class SpinnerIndicator : public QWidget {
    Q_OBJECT
public:
    explicit SpinnerIndicator(QWidget *parent = nullptr);

    /// Shows the wheel until stopAnimation(). The wheel turns only while it is visible on screen.
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
