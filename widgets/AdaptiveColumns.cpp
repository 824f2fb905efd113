#include "widgets/AdaptiveColumns.h"

#include "widgets/PictureFrame.h"

#include <QBoxLayout>
#include <QEvent>

#include <algorithm>

namespace {

/// Heights of two stacked parts: the first gets two fifths, the second three fifths.
constexpr int StackedFirst = 2;
constexpr int StackedSecond = 3;
/// Largest width of the first part beside a picture, in characters of average width. Its texts are short and
/// need no more.
constexpr int WidestFirst = 48;

} // namespace

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
    const auto *picture = findChild<PictureFrame *>();
    const bool stacks = width() < widthSideBySide() || (picture && isLargerBelow(*picture));
    if (stacks != isStacked()) {
        box()->setDirection(stacks ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
        updateGeometry();
    }
    if (picture)
        share(*picture);
}

int AdaptiveColumns::heightUnderPicture(const PictureFrame &picture) const
{
    return box()->itemAt(1)->sizeHint().height() - picture.sizeHint().height();
}

int AdaptiveColumns::firstWidth(const PictureFrame &picture) const
{
    const int room = width() - box()->spacing();
    const int cap = fontMetrics().averageCharWidth() * WidestFirst;
    const int least = std::max(std::min(room * 7 / 20, cap), box()->itemAt(0)->minimumSize().width());
    const int wanted = room - PictureFrame::widthForHeight(height() - heightUnderPicture(picture));
    return std::clamp(wanted, least, std::max(least, std::min(room * 2 / 5, cap)));
}

bool AdaptiveColumns::isLargerBelow(const PictureFrame &picture) const
{
    const auto pictureWidth = [](int width, int height) {
        return std::min(width, PictureFrame::widthForHeight(height));
    };
    const int under = heightUnderPicture(picture);
    const int room = height() - box()->spacing();
    const int first = std::max(room * StackedFirst / (StackedFirst + StackedSecond),
                               box()->itemAt(0)->minimumSize().height());
    return pictureWidth(width(), room - first - under)
        > pictureWidth(width() - box()->spacing() - firstWidth(picture), height() - under);
}

void AdaptiveColumns::share(const PictureFrame &picture)
{
    const int first = isStacked() ? StackedFirst : firstWidth(picture);
    box()->setStretch(0, first);
    box()->setStretch(1, isStacked() ? StackedSecond : width() - box()->spacing() - first);
}
