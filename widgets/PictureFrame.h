#pragma once

#include <QWidget>

/// Keeps the place of the live picture, black and 4:3, whether or not the view in it is shown.
class PictureFrame : public QWidget {
    Q_OBJECT
public:
    explicit PictureFrame(QWidget *parent = nullptr);

    /// The largest 4:3 area, in the middle.
    [[nodiscard]] QRect pictureRect() const;
    [[nodiscard]] QSize sizeHint() const override { return {480, 360}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {160, 120}; }

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
};
