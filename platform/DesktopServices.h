#pragma once

#include "platform/Services.h"
#include "platform/bus/BusNames.h"
#include "platform/power/LogindPower.h"

namespace platform {

/// The product's names and texts, which the desktop services show or use. The pane passes them, because
/// platform/ does not name the product.
struct Product {
    /// Prefix of the names of the product's bus connections, and name of its folder below $XDG_STATE_HOME.
    QString program;
    /// The vendor's prefix of the product's names on the session bus.
    bus::NamePrefix busNames;
    /// The texts that logind shows while the product delays a sleep.
    SleepDelay sleepDelay;
    /// The folder that contains the kernel's folders `sys` and `proc`: `/`, or a folder that a test has made.
    QString processorRoot;
    std::shared_ptr<Bundle> bundle;
};

/// Makes the real services of the desktop. They open buses and devices on first use.
Services makeDesktopServices(const Product &product);

} // namespace platform
