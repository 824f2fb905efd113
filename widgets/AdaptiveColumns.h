#pragma once

#include <QWidget>

class PictureFrame;
class QBoxLayout;

/// Arranges its parts side by side if there is room, otherwise one above the other.
class AdaptiveColumns : public QWidget {
    Q_OBJECT
    /// Width in pixels below which the parts are stacked even if they would fit side by side.
    Q_PROPERTY(int narrowWidth READ narrowWidth WRITE setNarrowWidth)
public:
    using QWidget::QWidget;

    [[nodiscard]] int narrowWidth() const { return mNarrowWidth; }
    void setNarrowWidth(int width) { mNarrowWidth = width; }
    [[nodiscard]] bool isStacked() const;
    /// Minimum size of the stacked parts, so that a window can become that narrow.
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;

private:
    [[nodiscard]] QBoxLayout *box() const;
    [[nodiscard]] int widthSideBySide() const;
    void arrange();
    /// Gives the second part, which contains the picture, the width that the picture can fill. The first
    /// keeps 35 to 40 %.
    void share(const PictureFrame &picture);

    int mNarrowWidth = 0;
};
