#include "widgets/LinkLabel.h"

#include <QEvent>

#include <algorithm>

namespace {

constexpr int DarkestLightBackground = 128;
// Link colour on dark windows, where pure blue is unreadable.
constexpr QRgb BlueOnDark = 0xff6ea8ff;

QString span(const QString &text, const QString &style)
{
    return QStringLiteral("<span style=\"white-space:pre;%1\">%2</span>").arg(style, text.toHtmlEscaped());
}

} // namespace

LinkLabel::LinkLabel(QWidget *parent)
    : QLabel(parent)
{
    setTextFormat(Qt::RichText);
    setTextInteractionFlags(Qt::NoTextInteraction);
}

void LinkLabel::setTextWithLink(const QString &text, int linkLength)
{
    mPlainText = text;
    mLinkLength = std::clamp(linkLength, 0, static_cast<int>(text.size()));
    setAccessibleName(text);
    render();
}

void LinkLabel::changeEvent(QEvent *event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        render();
}

QColor LinkLabel::linkColor() const
{
    const bool isDark = palette().color(QPalette::Window).lightness() < DarkestLightBackground;
    return isDark ? QColor(BlueOnDark) : QColor(Qt::blue);
}

void LinkLabel::render()
{
    const int plainLength = static_cast<int>(mPlainText.size()) - mLinkLength;
    const QString style = QStringLiteral("color:%1;text-decoration:underline").arg(linkColor().name());
    setText(span(mPlainText.left(plainLength), {}) + span(mPlainText.mid(plainLength), style));
}
