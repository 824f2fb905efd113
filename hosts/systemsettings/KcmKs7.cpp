#include "pane/SharedPane.h"
#include "pane/KSPreferencesPanePref.h"
#include "hosts/PaneOnScreen.h"

#include <KCModule>
#include <KPluginFactory>

/// System Settings' module: a place for the process's one pane. It is destroyed when another module is chosen
/// and made anew when this one is chosen again; the pane stays.
class KcmKs7 : public KCModule {
    Q_OBJECT
public:
#if QT_VERSION_MAJOR >= 6
    KcmKs7(QObject *parent, const KPluginMetaData &metaData)
        : KCModule(parent, metaData)
        , mOnScreen(sharedPane(), widget())
#else
    KcmKs7(QWidget *parent, const QVariantList &arguments)
        : KCModule(parent, arguments)
        , mOnScreen(sharedPane(), this)
#endif
    {
        setButtons(NoAdditionalButton);
    }

private:
    PaneOnScreen mOnScreen;
};

K_PLUGIN_CLASS_WITH_JSON(KcmKs7, "kcm_ks7.json")

#include "KcmKs7.moc"
