#include "widgets/MenuButton.h"

#include "widgets/Accessible.h"

#include <QActionEvent>
#include <QCoreApplication>
#include <QCursor>
#include <QMenu>
#include <QStyleOptionToolButton>
#include <QStylePainter>

namespace {

class MenuButtonAccessible final : public QAccessibleWidget {
public:
    explicit MenuButtonAccessible(MenuButton *button)
        : QAccessibleWidget(button, QAccessible::ButtonMenu)
    {
    }

    [[nodiscard]] QAccessible::State state() const override
    {
        auto state = QAccessibleWidget::state();
        const bool isOpen = menu() && menu()->isVisible();
        state.hasPopup = true;
        state.expandable = true;
        state.expanded = isOpen;
        state.collapsed = !isOpen;
        return state;
    }
    [[nodiscard]] int childCount() const override { return menu() ? 1 : 0; }
    [[nodiscard]] QAccessibleInterface *child(int index) const override
    {
        return index == 0 ? QAccessible::queryAccessibleInterface(menu()) : nullptr;
    }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface *other) const override
    {
        return other->object() == menu() ? 0 : -1;
    }
    [[nodiscard]] QStringList actionNames() const override
    {
        return widget()->isEnabled() ? QStringList{showMenuAction(), pressAction()} : QStringList();
    }
    void doAction(const QString &name) override
    {
        // Open asynchronously: showMenu() would block the caller until the menu closes.
        if (actionNames().contains(name))
            QMetaObject::invokeMethod(widget(), "showMenu", Qt::QueuedConnection);
    }

private:
    [[nodiscard]] QMenu *menu() const { return static_cast<MenuButton *>(widget())->menu(); }
};

} // namespace

MenuButton::MenuButton(QWidget *parent)
    : QToolButton(parent)
{
    platform::installAccessible<MenuButton, MenuButtonAccessible>();
    setPopupMode(InstantPopup);
}

void MenuButton::paintEvent(QPaintEvent *)
{
    QStylePainter painter(this);
    QStyleOptionToolButton option;
    initStyleOption(&option);
    option.icon = QIcon();
    painter.drawComplexControl(QStyle::CC_ToolButton, option);
    const QRect place = style()->alignedRect(layoutDirection(), Qt::AlignCenter, iconSize(), rect());
    icon().paint(&painter, place, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
}

void MenuButton::actionEvent(QActionEvent *event)
{
    QToolButton::actionEvent(event);
    if (event->type() == QEvent::ActionAdded && menu())
        connect(menu(), &QMenu::aboutToHide, this, &MenuButton::endHover, Qt::QueuedConnection);
}

void MenuButton::endHover()
{
    if (!underMouse() || rect().contains(mapFromGlobal(QCursor::pos())))
        return;
    setAttribute(Qt::WA_UnderMouse, false);
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(this, &leave);
}
