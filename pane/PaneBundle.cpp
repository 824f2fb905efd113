#include "pane/PaneBundle.h"

#include "platform/desktop/Bundle.h"

std::shared_ptr<platform::Bundle> makePaneBundle()
{
    // The linker drops the resources of a static library unless Q_INIT_RESOURCE names them.
    Q_INIT_RESOURCE(ks7_pane);
    Q_INIT_RESOURCE(ks7_pane_translations);
    return platform::makeFolderBundle(QStringLiteral(":/com.orvex.KS7PreferencesPane"));
}
