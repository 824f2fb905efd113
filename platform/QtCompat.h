#pragma once

#include <QAccessible>
#include <QIcon>
#include <QLibraryInfo>
#include <QMouseEvent>

/// One function for each Qt call that differs between Qt versions.
namespace platform {

/// Position of the pointer in the coordinates of the receiving widget.
inline QPoint positionOf(const QMouseEvent *event)
{
#if QT_VERSION_MAJOR >= 6
    return event->position().toPoint();
#else
    return event->pos();
#endif
}

/// The icon's image of `size`, in logical pixels, for a device with `scale` device pixels per logical pixel.
inline QPixmap pixmapOf(const QIcon &icon, const QSize &size, qreal scale)
{
#if QT_VERSION_MAJOR >= 6
    return icon.pixmap(size, scale);
#else
    return icon.pixmap(size * scale);
#endif
}

/// The folder of Qt's own translations.
inline QString qtTranslationsPath()
{
#if QT_VERSION_MAJOR >= 6
    return QLibraryInfo::path(QLibraryInfo::TranslationsPath);
#else
    return QLibraryInfo::location(QLibraryInfo::TranslationsPath);
#endif
}

/// Sends the text to screen readers in an announcement event and returns true. Returns false before Qt 6.8,
/// which introduced that event.
inline bool announces([[maybe_unused]] QObject *source, [[maybe_unused]] const QString &text)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    QAccessibleAnnouncementEvent event(source, text);
    QAccessible::updateAccessibility(&event);
    return true;
#else
    return false;
#endif
}

/// Whether Qt sends the text of a changed description to screen readers. Qt 5 sends the event without it.
constexpr bool tellsNewDescriptions()
{
    return QT_VERSION_MAJOR >= 6;
}

} // namespace platform
