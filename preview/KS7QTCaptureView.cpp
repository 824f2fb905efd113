#include "preview/KS7QTCaptureView.h"

#include <QAccessibleWidget>
#include <QPainter>

namespace {

/// Assistive programs pass over what they take for a mere container.
QAccessibleInterface *makeInterface(const QString &className, QObject *object)
{
    return className == QLatin1String(KS7QTCaptureView::staticMetaObject.className())
        ? new QAccessibleWidget(static_cast<QWidget *>(object), QAccessible::Graphic)
        : nullptr;
}

} // namespace

KS7QTCaptureView::KS7QTCaptureView(QWidget *parent)
    : platform::CaptureView(parent)
{
    QAccessible::installFactory(makeInterface);
    setVisible(false);
}

void KS7QTCaptureView::drawRect(const QRect &rect)
{
    if (captureSession() && captureSession()->isRunning())
        platform::CaptureView::drawRect(rect);
    else
        QPainter(this).fillRect(rect, Qt::black);
}
