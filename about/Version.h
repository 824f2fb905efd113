#pragma once

#include <QString>

namespace platform {
class Bundle;
}

/// Version of the pane's bundle, "?" when the bundle names none.
QString paneVersion(const platform::Bundle &bundle);
