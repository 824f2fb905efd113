#pragma once

#include <QIcon>
#include <QLibraryInfo>
#include <QMouseEvent>

/// Functions whose names differ between Qt 5 and Qt 6.
namespace platform {

/// Where the pointer was, in the coordinates of the widget that receives the event.
inline QPoint positionOf(const QMouseEvent *event)
{
#if QT_VERSION_MAJOR >= 6
    return event->position().toPoint();
#else
    return event->pos();
#endif
}

/// The icon's image for an area of that size on a device with that many pixels to each of its units.
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

} // namespace platform
