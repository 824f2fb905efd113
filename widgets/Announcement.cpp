#include "widgets/Announcement.h"

#include "platform/QtCompat.h"
#include "widgets/Accessible.h"

#include <QString>
#include <QWidget>

namespace {

/// A widget that is always hidden and has the accessible role Notification. When an ObjectShow event reports
/// it as shown, screen readers say its name.
class LiveLabel final : public QWidget {
    Q_OBJECT
public:
    explicit LiveLabel(QWidget *parent)
        : QWidget(parent)
    {
        platform::installAccessible<LiveLabel, platform::AccessibleOfRole<QAccessible::Notification>>();
        hide();
    }
};

LiveLabel *liveLabelIn(QWidget *window)
{
    auto *label = window->findChild<LiveLabel *>(QString(), Qt::FindDirectChildrenOnly);
    return label ? label : new LiveLabel(window);
}

} // namespace

void announce(QWidget *source, const QString &text)
{
    if (text.isEmpty() || !QAccessible::isActive())
        return;
    if (platform::announces(source, text))
        return;
    auto *label = liveLabelIn(source->parentWidget());
    label->setAccessibleName(text);
    QAccessibleEvent shown(label, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&shown);
}

void describe(QWidget *widget, const QString &description)
{
    if (description != widget->accessibleDescription())
        widget->setAccessibleDescription(description);
}

bool isDescriptionRead(const QWidget *widget)
{
    return platform::tellsNewDescriptions() && widget->hasFocus();
}

#include "Announcement.moc"
