#include "widgets/PictureFrame.h"

#include <QPainter>

#include <algorithm>

namespace {

constexpr QSize Ratio(4, 3);

} // namespace

PictureFrame::PictureFrame(QWidget *parent)
    : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QRect PictureFrame::pictureRect() const
{
    QRect picture({}, Ratio.scaled(size(), Qt::KeepAspectRatio));
    picture.moveCenter(rect().center());
    return picture;
}

void PictureFrame::paintEvent(QPaintEvent *)
{
    QPainter(this).fillRect(pictureRect(), Qt::black);
}

void PictureFrame::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    // No higher than its width can fill, so that what stands below stays close.
    setMaximumHeight(std::max(minimumSizeHint().height(), width() * Ratio.height() / Ratio.width()));
    for (auto *view : findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly))
        view->setGeometry(pictureRect());
}
