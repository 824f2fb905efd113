#pragma once

#include <QIcon>
#include <QString>

namespace platform {
class Bundle;
}

/// The image `name` of the pane's own bundle: the first of its png, tif and tiff files. Null without such a
/// file.
QIcon imageNamedFromOurBundle(const platform::Bundle &bundle, const QString &name);
