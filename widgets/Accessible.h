#pragma once

#include <QAccessibleWidget>

namespace platform {

/// For a widget that assistive programs would take for a mere container and pass over.
template <QAccessible::Role Role>
class AccessibleOfRole final : public QAccessibleWidget {
public:
    explicit AccessibleOfRole(QWidget *widget)
        : QAccessibleWidget(widget, Role)
    {
    }
};

/// Has assistive programs see each `Widget` through an `Interface`, which is made of a pointer to one. May be
/// called for every widget anew; the process keeps the factory to its end.
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
