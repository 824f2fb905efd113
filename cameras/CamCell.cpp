#include "cameras/CamCell.h"

#include "cameras/KS7AnimatingStatusTableView.h"
#include "cameras/PrefsBundle.h"
#include "cameras/SanitizedLine.h"
#include "platform/QtCompat.h"

#include <QPainter>

#include <algorithm>

namespace {

constexpr int NameFontSize = 12;
constexpr int StatusFontSize = 10;
constexpr QSize DotSize{8, 8};
constexpr QColor DarkGray{85, 85, 85};

/// Default text size: 12 points at 96 DPI. Desktops use 9 to 12 points unless the user changes the size. Only
/// a larger size enlarges the rows.
constexpr double DefaultPixels = 16.0;
constexpr double DefaultDpi = 96.0;
constexpr double PointsPerInch = 72.0;
/// The smallest font DPI that enlarges the rows: 125 %, the first step that desktops offer. A smaller one is
/// not the user's choice. Qt 5 computes it from the size of the screen.
constexpr double SmallestLargeDpi = 120.0;

double fontDpi(const QWidget *view)
{
    return view->logicalDpiY() < SmallestLargeDpi ? DefaultDpi : view->logicalDpiY();
}

QFont fontOfPixelSize(const QWidget *view, int size)
{
    QFont font = view->font();
    font.setPixelSize(qRound(size * textScale(view)));
    return font;
}

/// Draws a white rim around the dot, because the row's highlight may have the colour of the dot.
void drawRim(QPainter *painter, const QRect &dot)
{
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(Qt::white);
    constexpr double Roundness = 3.0;
    painter->drawRoundedRect(QRectF(dot).adjusted(-1, -1, 1, 1), Roundness, Roundness);
}

} // namespace

struct CamCell::Dots {
    QIcon green;
    QIcon red;
    QIcon orange;
    QIcon gray;
};

CamCell::Dots *CamCell::mDots = nullptr;

double textScale(const QWidget *view)
{
    const QFont font = view->font();
    const double pixels =
        font.pixelSize() > 0 ? font.pixelSize() : font.pointSizeF() * fontDpi(view) / PointsPerInch;
    return std::max(1.0, pixels / DefaultPixels);
}

CamCellLayout camCellLayout(const QRect &frame, const QSize &dotSize, double scale)
{
    const QPoint origin = frame.topLeft();
    const QSize dot = dotSize * scale;
    CamCellLayout layout;
    layout.name = QRect(origin + QPoint(3, 3) * scale,
                        QSize(std::max(0, frame.width() - qRound(10 * scale)), qRound(20 * scale)));
    layout.status = origin + QPoint(13, 19) * scale;
    layout.dot = QRect(origin + QPoint(qRound(3 * scale), qRound(30 * scale) - dot.height()), dot);
    return layout;
}

CamCell *CamCell::initTextCell(const QString &, std::shared_ptr<const platform::Bundle> bundle)
{
    mBundle = std::move(bundle);
    cacheImages(*mBundle);
    return this;
}

void CamCell::cacheImages(const platform::Bundle &bundle)
{
    if (mDots && !mDots->green.isNull())
        return;
    if (!mDots)
        mDots = new Dots;
    mDots->green = imageNamedFromOurBundle(bundle, QStringLiteral("greendot"));
    mDots->red = imageNamedFromOurBundle(bundle, QStringLiteral("reddot"));
    mDots->orange = imageNamedFromOurBundle(bundle, QStringLiteral("orangedot"));
    mDots->gray = imageNamedFromOurBundle(bundle, QStringLiteral("graydot"));
}

std::unique_ptr<CamCell> CamCell::copy() const
{
    auto cell = std::make_unique<CamCell>();
    cell->initTextCell(QStringLiteral("foo"), mBundle);
    return cell;
}

std::int32_t CamCell::status() const
{
    return mDevice ? mDevice->status() : kKS7CamNotFound;
}

void CamCell::drawWithFrame(QPainter *painter, const QRect &frame, KS7AnimatingStatusTableView *inView) const
{
    const auto layout = camCellLayout(frame, DotSize, textScale(inView));
    painter->save();
    drawName(painter, layout, inView);
    drawStatus(painter, layout, inView);
    drawDot(painter, layout, inView);
    painter->restore();
    if (status() == kKS7CamPairing || status() == kKS7CamStarting)
        inView->startAnimatingStatus();
}

namespace {

QColor textColor(bool highlighted, bool enabled, const QColor &plain, const QWidget *view)
{
    if (highlighted)
        return Qt::white;
    return enabled ? plain : view->palette().color(QPalette::Disabled, QPalette::Text);
}

} // namespace

void CamCell::drawName(QPainter *painter, const CamCellLayout &layout, const QWidget *view) const
{
    painter->setFont(fontOfPixelSize(view, NameFontSize));
    painter->setPen(textColor(mHighlighted, mEnabled, Qt::black, view));
    const auto name = mDevice ? sanitizedLine(mDevice->friendlyName()) : QString();
    const auto shown = painter->fontMetrics().elidedText(name, Qt::ElideMiddle, layout.name.width());
    painter->drawText(layout.name, Qt::AlignLeft | Qt::AlignAbsolute | Qt::AlignTop | Qt::TextSingleLine,
                      shown);
}

void CamCell::drawStatus(QPainter *painter, const CamCellLayout &layout, const QWidget *view) const
{
    painter->setFont(fontOfPixelSize(view, StatusFontSize));
    painter->setPen(textColor(mHighlighted, mEnabled, DarkGray, view));
    const auto text = mDevice ? mDevice->statusString() : QString();
    painter->drawText(layout.status + QPoint(0, painter->fontMetrics().ascent()), text);
}

void CamCell::drawDot(QPainter *painter, const CamCellLayout &layout, KS7AnimatingStatusTableView *view) const
{
    if (!mDots)
        return;
    const auto dot = [this, view]() -> const QIcon & {
        switch (status()) {
        case kKS7CamStreaming:
            return mDots->green;
        case kKS7CamNotFound:
            return mDots->red;
        case kKS7CamPairing:
        case kKS7CamStarting:
            return view->cycle() == 0 ? mDots->orange : mDots->gray;
        default:
            return mDots->gray;
        }
    };
    // Request the image in device pixels, so that it is sharp at every scale of the screen.
    const qreal scale = painter->device()->devicePixelRatioF();
    const QPixmap image = platform::pixmapOf(dot(), layout.dot.size(), scale);
    if (mHighlighted)
        drawRim(painter, layout.dot);
    painter->setRenderHint(QPainter::SmoothPixmapTransform, image.size() != layout.dot.size() * scale);
    painter->drawPixmap(layout.dot, image);
}
