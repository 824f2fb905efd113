#include "pane/SharedPane.h"

#include "agent/AgentProxyFactory.h"
#include "pane/Diagnosis.h"
#include "pane/KSPreferencesPanePref.h"
#include "platform/DesktopServices.h"
#include "platform/bus/BusHandshake.h"

KSPreferencesPanePref *sharedPane()
{
    if (!KSPreferencesPanePref::shared())
        (new KSPreferencesPanePref)->initWithBundle(platform::makeDesktopServices(), makeDBusProtocols());
    return KSPreferencesPanePref::shared();
}

void keepToolkitOffSilentBus()
{
    platform::keepToolkitOffSilentBus();
}

QString diagnosis()
{
    return Diagnosis(platform::makeDesktopServices(), makeDBusProtocols()).report();
}
