#pragma once

#include "platform/Services.h"

namespace platform {

/// The services of this machine's desktop. What can wait is opened on first use.
Services makeDesktopServices();

} // namespace platform
