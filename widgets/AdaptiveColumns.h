#pragma once

#include <QWidget>

class PictureFrame;
class QBoxLayout;

/// Arranges its parts side by side if there is room, otherwise one above the other. Also stacks two parts if
/// that makes the picture in the second one larger.
class AdaptiveColumns : public QWidget {
    Q_OBJECT
public:
    using QWidget::QWidget;

    [[nodiscard]] bool isStacked() const;
    /// The minimum size of the parts when they are stacked, so that the window can be made narrow enough to
    /// stack them.
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;

private:
    [[nodiscard]] QBoxLayout *box() const;
    [[nodiscard]] int widthSideBySide() const;
    void arrange();
    [[nodiscard]] int heightUnderPicture(const PictureFrame &picture) const;
    /// Width of the first part if it stands beside the picture. It gets the width that the picture does not
    /// need: 35 to 40 % of the total, at most WidestFirst characters.
    [[nodiscard]] int firstWidth(const PictureFrame &picture) const;
    [[nodiscard]] bool isLargerBelow(const PictureFrame &picture) const;
    void share(const PictureFrame &picture);
};
