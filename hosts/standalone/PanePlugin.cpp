#include "pane/KSPreferencesPanePref.h"
#include "pane/SharedPane.h"

#include <QObject>

/// The root object of the plug-in. Hosts get the process's only pane from it.
class PanePlugin : public QObject, public platform::PreferencePaneFactory {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID KS7_PREFERENCE_PANE_IID)
    Q_INTERFACES(platform::PreferencePaneFactory)
public:
    void prepareProcess() override { keepToolkitOffSilentBus(); }
    platform::PreferencePane *pane() override { return sharedPane(); }
    [[nodiscard]] QString diagnose() const override { return diagnosis(); }
};

#include "PanePlugin.moc"
