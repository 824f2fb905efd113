#include "preview/KS7QTCaptureView.h"

#include "widgets/Accessible.h"

#include <QPainter>

KS7QTCaptureView::KS7QTCaptureView(QWidget *parent)
    : platform::CaptureView(parent)
{
    platform::installAccessible<KS7QTCaptureView, platform::AccessibleOfRole<QAccessible::Graphic>>();
    setVisible(false);
}

void KS7QTCaptureView::drawRect(const QRect &rect)
{
    if (captureSession() && captureSession()->isRunning())
        platform::CaptureView::drawRect(rect);
    else
        QPainter(this).fillRect(rect, Qt::black);
}
