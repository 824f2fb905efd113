#include "about/KSHandTextField.h"

#include "platform/QtCompat.h"
#include "widgets/Accessible.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyleOptionFocusRect>
#include <QStylePainter>

#include <utility>

using namespace std::chrono_literals;
using std::chrono::steady_clock;

namespace {

/// The accessible object of the field: a link that can be pressed.
class AccessibleLink final : public QAccessibleWidget {
public:
    explicit AccessibleLink(KSHandTextField *field)
        : QAccessibleWidget(field, QAccessible::Link)
    {
    }
    [[nodiscard]] QAccessible::State state() const override
    {
        auto state = QAccessibleWidget::state();
        state.linked = true;
        return state;
    }
    [[nodiscard]] QStringList actionNames() const override
    {
        return QStringList{pressAction()} + QAccessibleWidget::actionNames();
    }
    void doAction(const QString &actionName) override
    {
        if (actionName == pressAction())
            static_cast<KSHandTextField *>(widget())->performClick();
        else
            QAccessibleWidget::doAction(actionName);
    }
};

} // namespace

KSHandTextField::KSHandTextField(QWidget *parent)
    : LinkLabel(parent)
{
    setFocusPolicy(Qt::TabFocus);
    platform::installAccessible<KSHandTextField, AccessibleLink>();
    resetCursorRects();
}

void KSHandTextField::resetCursorRects()
{
    setCursor(Qt::PointingHandCursor);
}

void KSHandTextField::performClick()
{
    if (mAction)
        mAction();
}

bool KSHandTextField::event(QEvent *event)
{
    if (event->type() == QEvent::WindowActivate)
        mWindowActivated = steady_clock::now();
    return LinkLabel::event(event);
}

bool KSHandTextField::activatedWindow(const QMouseEvent *press) const
{
    // Do not use isActiveWindow(): since Qt 6.8 it is also true for a dialog whose parent window is active.
    if (QApplication::activeWindow() != window())
        return true;
    // Many window managers activate the window first and deliver the press afterwards. So a press that is
    // older than the activation caused the activation. Timestamps are in milliseconds and may wrap around. If
    // they differ by two seconds or more, they come from different clocks and prove nothing.
    using std::chrono::milliseconds;
    const auto activated =
        std::chrono::duration_cast<milliseconds>(mWindowActivated.time_since_epoch()).count();
    const auto lead = static_cast<std::int32_t>(static_cast<std::uint32_t>(activated)
                                                - static_cast<std::uint32_t>(press->timestamp()));
    constexpr auto LongestHandOver = 2s;
    return lead >= 0 && milliseconds(lead) < LongestHandOver;
}

void KSHandTextField::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        mPressed = acceptsFirstMouse() || !activatedWindow(event);
}

void KSHandTextField::mouseMoveEvent(QMouseEvent *)
{
}

void KSHandTextField::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !std::exchange(mPressed, false))
        return;
    if (rect().contains(platform::positionOf(event)))
        performClick();
}

void KSHandTextField::mouseDoubleClickEvent(QMouseEvent *event)
{
    mousePressEvent(event);
}

void KSHandTextField::keyPressEvent(QKeyEvent *event)
{
    const bool opens =
        event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Space;
    if (!opens) {
        LinkLabel::keyPressEvent(event);
        return;
    }
    if (!event->isAutoRepeat())
        performClick();
}

void KSHandTextField::focusInEvent(QFocusEvent *)
{
    update();
}

void KSHandTextField::focusOutEvent(QFocusEvent *)
{
    update();
}

void KSHandTextField::paintEvent(QPaintEvent *event)
{
    LinkLabel::paintEvent(event);
    if (!hasFocus())
        return;
    QStylePainter painter(this);
    QStyleOptionFocusRect option;
    option.initFrom(this);
    painter.drawPrimitive(QStyle::PE_FrameFocusRect, option);
}
