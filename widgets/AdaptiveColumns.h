#pragma once

#include <QWidget>

class PictureFrame;
class QBoxLayout;

/// Lays its parts out side by side where there is room, one under the other where there is not.
class AdaptiveColumns : public QWidget {
    Q_OBJECT
    /// Below this width, in pixels, the parts stand one under the other even if they would fit.
    Q_PROPERTY(int narrowWidth READ narrowWidth WRITE setNarrowWidth)
public:
    using QWidget::QWidget;

    [[nodiscard]] int narrowWidth() const { return mNarrowWidth; }
    void setNarrowWidth(int width) { mNarrowWidth = width; }
    [[nodiscard]] bool isStacked() const;
    /// What the parts need one under the other, so that a window may become that narrow.
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;

private:
    [[nodiscard]] QBoxLayout *box() const;
    [[nodiscard]] int widthSideBySide() const;
    void arrange();
    /// Gives the picture, which is in the second of two parts, the width that it can fill; the first keeps 35
    /// to 40 %.
    void share(const PictureFrame &picture);

    int mNarrowWidth = 0;
};
