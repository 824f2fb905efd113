#include "pane/SharedPane.h"
#include "pane/KSPreferencesPanePref.h"

#include <QObject>

/// What the plug-in loader finds: the way to the one pane.
class PanePlugin : public QObject, public platform::PreferencePaneFactory {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID KS7_PREFERENCE_PANE_IID)
    Q_INTERFACES(platform::PreferencePaneFactory)
public:
    platform::PreferencePane *pane() override { return sharedPane(); }
    /// For a host without a window: the report for `--diagnose`.
    Q_INVOKABLE QString diagnose() { return diagnosis(); }
};

#include "PanePlugin.moc"
