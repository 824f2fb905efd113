#include "pane/Composition.h"

#include "agent/RemoteProtocols.h"
#include "pane/Diagnosis.h"
#include "pane/KSPreferencesPanePref.h"
#include "platform/Desktop.h"

KSPreferencesPanePref *sharedPane()
{
    if (!KSPreferencesPanePref::shared())
        (new KSPreferencesPanePref)->initWithBundle(platform::makeDesktopServices(), makeDBusProtocols());
    return KSPreferencesPanePref::shared();
}

QString diagnosis()
{
    return Diagnosis(platform::makeDesktopServices(), makeDBusProtocols()).report();
}
