#include "simulator/picture/TestPicture.h"

#include <QMutexLocker>
#include <QPainter>

#include <cstring>

namespace simulator {
namespace {

constexpr int Hues = 12;
constexpr int NanosecondsPerMillisecond = 1'000'000;
/// The time in which the bar crosses the picture and returns.
constexpr int BarPeriod = 4000; // ms

/// Returns a colour for the name of a camera. Different names mostly have different colours.
QColor colorFor(const QString &caption)
{
    int sum = 0;
    for (const QChar each : caption)
        sum += each.unicode();
    return QColor::fromHsv(sum % Hues * (360 / Hues), 160, 130);
}

QFont captionFont(const QString &caption, const QRect &space)
{
    QFont font;
    font.setBold(true);
    font.setPixelSize(qMax(1, space.height() / 3));
    const int width = QFontMetrics(font).horizontalAdvance(caption);
    if (width > space.width())
        font.setPixelSize(qMax(1, font.pixelSize() * space.width() / width));
    return font;
}

/// Returns the position of the moving bar: 0 at the left edge, 1 at the right edge.
double barPosition(std::int64_t time)
{
    const auto now = double(time / NanosecondsPerMillisecond % BarPeriod) / (double(BarPeriod) / 2);
    return now < 1 ? now : 2 - now;
}

} // namespace

void TestPicture::setCaption(const QString &caption)
{
    const QMutexLocker lock(&mMutex);
    mCaption = caption;
}

QString TestPicture::caption() const
{
    const QMutexLocker lock(&mMutex);
    return mCaption;
}

void TestPicture::drawBackground(const QString &caption)
{
    mDrawn = caption;
    mBackground = QImage(mSize, QImage::Format_RGB32);
    mBackground.fill(caption.isEmpty() ? QColor(Qt::black) : colorFor(caption));
    if (caption.isEmpty())
        return;
    QPainter painter(&mBackground);
    const QRect space = QRect({}, QSize(mSize.width(), mSize.height() / 2)).marginsRemoved({8, 8, 8, 8});
    painter.setFont(captionFont(caption, space));
    painter.setPen(Qt::white);
    painter.drawText(space, Qt::AlignCenter, caption);
}

void TestPicture::paint(std::uint8_t *pixels, std::int64_t time)
{
    const QString wanted = caption();
    if (mBackground.isNull() || wanted != mDrawn)
        drawBackground(wanted);
    std::memcpy(pixels, mBackground.constBits(), std::size_t(mBackground.sizeInBytes()));
    if (wanted.isEmpty())
        return;
    QImage frame(pixels, mSize.width(), mSize.height(), mSize.width() * 4, QImage::Format_RGB32);
    const int width = qMax(2, mSize.width() / 16);
    const int x = int(barPosition(time) * (mSize.width() - width));
    QPainter(&frame).fillRect(x, mSize.height() / 2, width, mSize.height() / 2, Qt::white);
}

} // namespace simulator
