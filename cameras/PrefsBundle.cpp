#include "cameras/PrefsBundle.h"

#include "platform/desktop/Bundle.h"

QIcon imageNamedFromOurBundle(const platform::Bundle &bundle, const QString &name)
{
    for (const auto &type : {QStringLiteral("png"), QStringLiteral("tif"), QStringLiteral("tiff")}) {
        const auto path = bundle.pathForResource(name, type);
        if (path.isEmpty())
            continue;
        QIcon image(path);
        // Qt itself looks for the @2x file only when the application is scaled as a whole.
        const auto sharper = bundle.pathForResource(name + QStringLiteral("@2x"), type);
        if (!sharper.isEmpty())
            image.addFile(sharper);
        return image;
    }
    return {};
}
