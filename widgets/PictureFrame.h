#pragma once

#include <QWidget>

/// Black place of the live picture, whether or not the view in it is shown. The view is 4:3, in the middle.
class PictureFrame : public QWidget {
    Q_OBJECT
public:
    explicit PictureFrame(QWidget *parent = nullptr);

    /// Width of a picture of that height, in pixels.
    [[nodiscard]] static int widthForHeight(int height);
    /// The largest 4:3 area, in the middle.
    [[nodiscard]] QRect pictureRect() const;
    [[nodiscard]] QSize sizeHint() const override { return {480, 360}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {160, 120}; }

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
};
