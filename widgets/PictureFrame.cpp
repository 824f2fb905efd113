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
    // Leave one pixel free on each side for the outline.
    QRect picture({}, Ratio.scaled(size() - QSize(2, 2), Qt::KeepAspectRatio));
    picture.moveCenter(rect().center());
    return picture;
}

void PictureFrame::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), Qt::black);
    // Draw a grey outline, because a black frame has no visible edge in a black theme.
    painter.setPen(Qt::gray);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void PictureFrame::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    for (auto *view : findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly))
        view->setGeometry(pictureRect());
}
