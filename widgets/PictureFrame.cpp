#include "widgets/PictureFrame.h"

#include <QPainter>

namespace {

constexpr QSize Ratio(4, 3);

} // namespace

PictureFrame::PictureFrame(QWidget *parent)
    : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

int PictureFrame::widthForHeight(int height)
{
    return height * Ratio.width() / Ratio.height();
}

QRect PictureFrame::pictureRect() const
{
    QRect picture({}, Ratio.scaled(size(), Qt::KeepAspectRatio));
    picture.moveCenter(rect().center());
    return picture;
}

void PictureFrame::paintEvent(QPaintEvent *)
{
    QPainter(this).fillRect(rect(), Qt::black);
}

void PictureFrame::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    for (auto *view : findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly))
        view->setGeometry(pictureRect());
}
