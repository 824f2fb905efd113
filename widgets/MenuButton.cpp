#include "widgets/MenuButton.h"

#include "widgets/Accessible.h"

#include <QMenu>

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
        // Whoever asks gets the answer at once, not when the menu has closed again.
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
