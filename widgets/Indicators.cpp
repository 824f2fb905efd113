#include "widgets/Indicators.h"

#include "widgets/Accessible.h"

#include <QPaintEvent>
#include <QPainter>
#include <QPair>
#include <QTimerEvent>
#include <QVector>

#include <algorithm>
#include <cmath>

namespace platform {
namespace {

// Number of integer steps of a ProgressIndicator, which is fine enough for any width on screen.
constexpr int Steps = 10000;
constexpr int SpinnerSpokes = 12;
constexpr int SpinnerInterval = 80;

// Width of the meter's segments in pixels, and the levels from 0 to 1 at which its warning colours begin.
constexpr int SegmentWidth = 5;
constexpr int SegmentGap = 2;
constexpr int SegmentStep = SegmentWidth + SegmentGap;
constexpr double LoudFrom = 0.75;
constexpr double TooLoudFrom = 0.9;

double boundedFraction(double value)
{
    return std::isnan(value) ? 0.0 : std::clamp(value, 0.0, 1.0);
}

double fractionOf(const LevelIndicator &meter)
{
    return meter.fraction();
}

double fractionOf(const ProgressIndicator &bar)
{
    return boundedFraction(bar.doubleValue());
}

/// Accessible object of an indicator: a read-only value from 0 to 1.
template <class Indicator>
class FractionAccessible final : public QAccessibleWidget, public QAccessibleValueInterface {
    using Relations = QVector<QPair<QAccessibleInterface *, QAccessible::Relation>>;

public:
    explicit FractionAccessible(Indicator *indicator)
        : QAccessibleWidget(indicator, QAccessible::ProgressBar)
    {
    }

    [[nodiscard]] QVariant currentValue() const override
    {
        return fractionOf(*static_cast<const Indicator *>(object()));
    }
    void setCurrentValue(const QVariant &) override { }
    [[nodiscard]] QVariant minimumValue() const override { return 0.0; }
    [[nodiscard]] QVariant maximumValue() const override { return 1.0; }
    [[nodiscard]] QVariant minimumStepSize() const override { return 0.0; }
    [[nodiscard]] QAccessible::State state() const override
    {
        auto state = QAccessibleWidget::state();
        state.readOnly = true;
        return state;
    }
    [[nodiscard]] Relations relations(QAccessible::Relation match) const override
    {
        auto relations = QAccessibleWidget::relations(match);
        auto *meter = qobject_cast<LevelIndicator *>(object());
        if (meter && meter->label() && match.testFlag(QAccessible::Label))
            relations.append({QAccessible::queryAccessibleInterface(meter->label()), QAccessible::Label});
        return relations;
    }

protected:
    void *interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface *>(this);
        return QAccessibleWidget::interface_cast(type);
    }
};

QColor segmentColor(double place)
{
    if (place >= TooLoudFrom)
        return {218, 54, 51};
    return place >= LoudFrom ? QColor(224, 157, 0) : QColor(46, 160, 67);
}

/// Colour of an unlit segment. It is visible on any background and clearly differs from a lit segment.
QColor unlitColor(const QPalette &palette)
{
    QColor color = palette.color(QPalette::WindowText);
    color.setAlphaF(0.18F);
    return color;
}

} // namespace

LevelIndicator::LevelIndicator(QWidget *parent)
    : QWidget(parent)
{
    installAccessible<LevelIndicator, FractionAccessible<LevelIndicator>>();
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void LevelIndicator::setDoubleValue(double value)
{
    const int before = litCount();
    mValue = value;
    const int now = litCount();
    // Repaint only the segments that have changed, because the level is set ten times a second.
    if (now != before)
        update(segmentRect(std::min(before, now)) | segmentRect(std::max(before, now) - 1));
}

double LevelIndicator::fraction() const
{
    return boundedFraction(mValue);
}

QSize LevelIndicator::sizeHint() const
{
    return {120, 12};
}

int LevelIndicator::segmentCount() const
{
    return std::max(1, (width() + SegmentGap) / SegmentStep);
}

int LevelIndicator::litCount() const
{
    return static_cast<int>(std::lround(fraction() * segmentCount()));
}

QRect LevelIndicator::segmentRect(int segment) const
{
    // The lit part of the meter grows in the reading direction.
    const int place = segment * SegmentStep;
    return {layoutDirection() == Qt::RightToLeft ? width() - place - SegmentWidth : place, 0, SegmentWidth,
            height()};
}

void LevelIndicator::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    const int count = segmentCount();
    const int lit = litCount();
    const QColor unlit = unlitColor(palette());
    for (int segment = 0; segment < count; ++segment) {
        const QRect place = segmentRect(segment);
        if (event->rect().intersects(place))
            painter.fillRect(place, segment < lit ? segmentColor(double(segment) / count) : unlit);
    }
}

ProgressIndicator::ProgressIndicator(QWidget *parent)
    : QProgressBar(parent)
{
    installAccessible<ProgressIndicator, FractionAccessible<ProgressIndicator>>();
    setRange(0, Steps);
    setValue(0);
}

void ProgressIndicator::setDoubleValue(double value)
{
    mValue = value;
    setValue(static_cast<int>(std::lround(boundedFraction(value) * Steps)));
}

SpinnerIndicator::SpinnerIndicator(QWidget *parent)
    : QWidget(parent)
{
    installAccessible<SpinnerIndicator, AccessibleOfRole<QAccessible::Animation>>();
    QSizePolicy policy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    policy.setRetainSizeWhenHidden(true);
    setSizePolicy(policy);
    setVisible(false);
}

void SpinnerIndicator::startAnimation()
{
    setVisible(true);
}

void SpinnerIndicator::stopAnimation()
{
    setVisible(false);
}

QSize SpinnerIndicator::sizeHint() const
{
    return {16, 16};
}

void SpinnerIndicator::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(rect().center() + QPointF(0.5, 0.5));
    const double radius = std::min(width(), height()) / 2.0;
    QColor color = palette().color(QPalette::WindowText);
    for (int spoke = 0; spoke < SpinnerSpokes; ++spoke) {
        color.setAlphaF(static_cast<float>((spoke + SpinnerSpokes - mStep) % SpinnerSpokes + 1)
                        / SpinnerSpokes);
        painter.setPen(QPen(color, radius / 5.0, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(QPointF(0.0, -radius * 0.5), QPointF(0.0, -radius * 0.85));
        painter.rotate(360.0 / SpinnerSpokes);
    }
}

void SpinnerIndicator::showEvent(QShowEvent *)
{
    mTimer.start(SpinnerInterval, this);
}

void SpinnerIndicator::hideEvent(QHideEvent *)
{
    mTimer.stop();
}

void SpinnerIndicator::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != mTimer.timerId())
        return;
    mStep = (mStep + 1) % SpinnerSpokes;
    update();
}

} // namespace platform
