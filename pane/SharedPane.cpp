#include "pane/SharedPane.h"

#include "agent/AgentProxyFactory.h"
#include "agent/RemoteNames.h"
#include "pane/Diagnosis.h"
#include "pane/KSPreferencesPanePref.h"
#include "pane/PaneBundle.h"
#include "platform/DesktopServices.h"
#include "platform/bus/BusHandshake.h"

namespace {

platform::Services desktopServices()
{
    platform::Product product;
    product.program = QStringLiteral("ks7-preferences");
    product.busNames = RemoteNames::Prefix;
    product.sleepDelay = {QStringLiteral("KS-7"), QStringLiteral("The camera's picture is let go of first")};
    // End-to-end tests set KS7_CLOCK_ROOT to a folder with a fake processor clock. The kernel of a virtual
    // machine may report no clock, and only root can replace files below /sys.
    product.processorRoot = qEnvironmentVariable("KS7_CLOCK_ROOT", QStringLiteral("/"));
    product.bundle = makePaneBundle();
    return platform::makeDesktopServices(product);
}

} // namespace

KSPreferencesPanePref *sharedPane()
{
    if (!KSPreferencesPanePref::shared())
        (new KSPreferencesPanePref)->initWithBundle(desktopServices(), makeDBusProtocols());
    return KSPreferencesPanePref::shared();
}

void keepToolkitOffSilentBus()
{
    platform::keepToolkitOffSilentBus();
}

QString diagnosis()
{
    return Diagnosis(desktopServices(), makeDBusProtocols()).report();
}
