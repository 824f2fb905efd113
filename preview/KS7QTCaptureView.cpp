#include "preview/KS7QTCaptureView.h"

#include <QPainter>

KS7QTCaptureView::KS7QTCaptureView(QWidget *parent)
    : platform::CaptureView(parent)
{
    setVisible(false);
}

void KS7QTCaptureView::drawRect(const QRect &rect)
{
    if (captureSession() && captureSession()->isRunning())
        platform::CaptureView::drawRect(rect);
    else
        QPainter(this).fillRect(rect, Qt::black);
}
