#pragma once

#include <QIcon>
#include <QString>

namespace platform {
class Bundle;
}

/// The image `name` of the pane's own bundle, as png, tif or tiff, whichever is there first; null when none
/// is.
QIcon imageNamedFromOurBundle(const platform::Bundle &bundle, const QString &name);
