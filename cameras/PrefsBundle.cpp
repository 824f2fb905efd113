#include "cameras/PrefsBundle.h"

#include "platform/desktop/Bundle.h"

QIcon imageNamedFromOurBundle(const platform::Bundle &bundle, const QString &name)
{
    for (const auto &type : {QStringLiteral("png"), QStringLiteral("tif"), QStringLiteral("tiff")}) {
        const auto path = bundle.pathForResource(name, type);
        if (path.isEmpty())
            continue;
        QIcon image(path);
        // Add the @2x file explicitly: QIcon finds it by itself only if the whole application is scaled.
        const auto sharper = bundle.pathForResource(name + QStringLiteral("@2x"), type);
        if (!sharper.isEmpty())
            image.addFile(sharper);
        return image;
    }
    return {};
}
