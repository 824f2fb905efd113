#pragma once

#include "platform/Services.h"
#include "platform/bus/BusNames.h"
#include "platform/power/LogindPower.h"

namespace platform {

/// The product's names and texts for the desktop services. platform/ itself does not name the product.
struct Product {
    /// Begins the names of its bus connections and names its folder below $XDG_STATE_HOME.
    QString program;
    /// Begins its names on the session bus.
    bus::NamePrefix busNames;
    /// What logind shows while the product delays a sleep.
    SleepDelay sleepDelay;
    /// The folder in whose place the kernel's files about the processor stand, `/` outside tests.
    QString processorRoot;
    std::shared_ptr<Bundle> bundle;
};

/// The services of this machine's desktop. Buses and devices are opened on first use.
Services makeDesktopServices(const Product &product);

} // namespace platform
