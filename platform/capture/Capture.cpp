#include "platform/capture/Capture.h"

#include <QPaintEvent>
#include <QPainter>

namespace platform {
namespace {

constexpr QSize UsualPicture{640, 480};

/// The logical pixels that `picture` covers completely. At a fractional scale it covers its outermost pixels
/// only in part.
QRect coveredRect(const QRectF &picture)
{
    const QRect whole = picture.toAlignedRect();
    return QRectF(whole) == picture ? whole : whole.adjusted(1, 1, -1, -1);
}

} // namespace

CaptureView::CaptureView(QWidget *parent)
    : QWidget(parent)
{
    // WA_OpaquePaintEvent: drawRect() paints every pixel, so Qt need not draw the background.
    setAttribute(Qt::WA_OpaquePaintEvent);
}

CaptureView::~CaptureView()
{
    if (mSession)
        mSession->setFrameHandler({});
}

void CaptureView::setCaptureSession(const std::shared_ptr<CaptureSession> &session)
{
    if (mSession)
        mSession->setFrameHandler({});
    mSession = session;
    mAskedFor = {};
    showFrame({});
    if (mSession)
        mSession->setFrameHandler([this](const QImage &frame) { showFrame(frame); });
}

void CaptureView::showFrame(const QImage &frame)
{
    mFrame = frame;
    askForFittingFrames();
    if (isVisible())
        update();
}

void CaptureView::askForFittingFrames()
{
    if (!mSession || mAskedFor == pixels())
        return;
    mAskedFor = pixels();
    mSession->setLargestFrame(mAskedFor);
}

QSize CaptureView::pixels() const
{
    return (QSizeF(size()) * devicePixelRatioF()).toSize();
}

QSize CaptureView::sizeHint() const
{
    return UsualPicture;
}

QRectF CaptureView::pictureRect() const
{
    // The rectangle has whole device pixels, so that a frame of the same size is copied without scaling.
    const qreal ratio = devicePixelRatioF();
    const QSize place = pixels();
    const QSize picture = mFrame.size().scaled(place, Qt::KeepAspectRatio);
    const QPoint corner((place.width() - picture.width()) / 2, (place.height() - picture.height()) / 2);
    return {QPointF(corner) / ratio, QSizeF(picture) / ratio};
}

void CaptureView::drawRect(const QRect &rect)
{
    QPainter painter(this);
    painter.setClipRect(rect);
    const QRectF picture = mFrame.isNull() ? QRectF() : pictureRect();
    const QRegion border = QRegion(rect) - QRegion(coveredRect(picture));
    for (const QRect &strip : border)
        painter.fillRect(strip, Qt::black);
    if (picture.isEmpty())
        return;
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(picture, mFrame);
}

void CaptureView::paintEvent(QPaintEvent *event)
{
    drawRect(event->rect());
}

} // namespace platform
