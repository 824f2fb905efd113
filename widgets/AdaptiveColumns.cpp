#include "widgets/AdaptiveColumns.h"

#include "widgets/PictureFrame.h"

#include <QBoxLayout>
#include <QEvent>

#include <algorithm>

QBoxLayout *AdaptiveColumns::box() const
{
    return qobject_cast<QBoxLayout *>(layout());
}

bool AdaptiveColumns::isStacked() const
{
    return box() && box()->direction() == QBoxLayout::TopToBottom;
}

int AdaptiveColumns::widthSideBySide() const
{
    const auto margins = box()->contentsMargins();
    int width = margins.left() + margins.right();
    int parts = 0;
    for (int index = 0; index < box()->count(); ++index) {
        const auto *part = box()->itemAt(index);
        if (part->isEmpty())
            continue;
        width += part->minimumSize().width();
        ++parts;
    }
    return width + std::max(0, parts - 1) * box()->spacing();
}

QSize AdaptiveColumns::minimumSizeHint() const
{
    if (!box())
        return QWidget::minimumSizeHint();
    const auto margins = box()->contentsMargins();
    int widest = 0;
    for (int index = 0; index < box()->count(); ++index)
        widest = std::max(widest, box()->itemAt(index)->minimumSize().width());
    return {widest + margins.left() + margins.right(), box()->totalMinimumSize().height()};
}

bool AdaptiveColumns::event(QEvent *event)
{
    const bool handled = QWidget::event(event);
    if (event->type() == QEvent::Resize || event->type() == QEvent::LayoutRequest)
        arrange();
    return handled;
}

void AdaptiveColumns::arrange()
{
    if (!box())
        return;
    const bool stacks = width() < std::max(mNarrowWidth, widthSideBySide());
    if (stacks != isStacked()) {
        box()->setDirection(stacks ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
        updateGeometry();
    }
    if (const auto *picture = findChild<PictureFrame *>())
        share(*picture);
}

void AdaptiveColumns::share(const PictureFrame &picture)
{
    int first = 2;
    int second = 3;
    if (!isStacked()) {
        const int below = box()->itemAt(1)->sizeHint().height() - picture.sizeHint().height();
        const int room = width() - box()->spacing();
        const int least = std::max(room * 7 / 20, box()->itemAt(0)->minimumSize().width());
        first = std::clamp(room - PictureFrame::widthForHeight(height() - below), least,
                           std::max(least, room * 2 / 5));
        second = room - first;
    }
    box()->setStretch(0, first);
    box()->setStretch(1, second);
}
