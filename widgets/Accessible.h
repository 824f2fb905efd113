#pragma once

#include <QAccessibleWidget>

namespace platform {

/// Base of the accessible object of a widget that assistive programs would otherwise skip as a mere
/// container.
template <QAccessible::Role Role>
class AccessibleOfRole final : public QAccessibleWidget {
public:
    explicit AccessibleOfRole(QWidget *widget)
        : QAccessibleWidget(widget, Role)
    {
    }
};

/// Registers `Interface`, constructed from a widget's pointer, as the accessible object of every `Widget`.
/// May be called repeatedly; the factory stays installed until the process ends.
template <class Widget, class Interface>
void installAccessible()
{
    QAccessible::installFactory([](const QString &className, QObject *object) -> QAccessibleInterface * {
        return className == QLatin1String(Widget::staticMetaObject.className())
            ? new Interface(static_cast<Widget *>(object))
            : nullptr;
    });
}

} // namespace platform
