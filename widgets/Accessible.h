#pragma once

#include <QAccessibleWidget>

namespace platform {

/// Accessible object with a fixed role, for a custom widget. Without such a role, assistive programs would
/// skip the widget as a plain container.
template <QAccessible::Role Role>
class AccessibleOfRole final : public QAccessibleWidget {
public:
    explicit AccessibleOfRole(QWidget *widget)
        : QAccessibleWidget(widget, Role)
    {
    }
};

/// Makes `Interface` the accessible object of every widget of the class `Widget`. Repeated calls are allowed.
/// The factory stays installed until the process ends.
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
