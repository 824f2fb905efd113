#pragma once

#include <QString>

namespace platform {
class Bundle;
}

/// The pane's own version, "?" when its bundle does not tell.
QString paneVersion(const platform::Bundle &bundle);
