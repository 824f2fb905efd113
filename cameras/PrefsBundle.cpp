#include "cameras/PrefsBundle.h"

#include "platform/desktop/Bundle.h"

#include <QImageReader>
#include <QPixmap>

namespace {

/// Reads the image as PNG first: to detect a format, Qt would load all its image plug-ins. A file in another
/// format is read with detection.
QPixmap pixmapFrom(const QString &path)
{
    QImageReader reader(path, "png");
    reader.setAutoDetectImageFormat(false);
    const QImage image = reader.read();
    return image.isNull() ? QPixmap(path) : QPixmap::fromImage(image);
}

} // namespace

QIcon imageNamedFromOurBundle(const platform::Bundle &bundle, const QString &name)
{
    for (const auto &type : {QStringLiteral("png"), QStringLiteral("tif"), QStringLiteral("tiff")}) {
        const auto path = bundle.pathForResource(name, type);
        if (path.isEmpty())
            continue;
        QIcon image(pixmapFrom(path));
        // Add the @2x file explicitly: QIcon finds it by itself only if the whole application is scaled.
        const auto sharper = bundle.pathForResource(name + QStringLiteral("@2x"), type);
        if (!sharper.isEmpty())
            image.addPixmap(pixmapFrom(sharper));
        return image;
    }
    return {};
}
