#pragma once

#include <QIcon>
#include <QString>

namespace platform {
class Bundle;
}

/// Returns an image of the pane's bundle: the first existing file of `name` with the extension png, tif or
/// tiff. Null without such a file.
QIcon imageNamedFromOurBundle(const platform::Bundle &bundle, const QString &name);
