#pragma once

#include <QWidget>

/// The black frame of the live picture, visible even without a view in it. Its view is 4:3 and centred.
class PictureFrame : public QWidget {
    Q_OBJECT
public:
    explicit PictureFrame(QWidget *parent = nullptr);

    /// Width of a 4:3 picture with this height, in pixels.
    [[nodiscard]] static int widthForHeight(int height);
    /// The largest centred 4:3 area inside the outline.
    [[nodiscard]] QRect pictureRect() const;
    [[nodiscard]] QSize sizeHint() const override { return {480, 360}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {160, 120}; }

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
};
