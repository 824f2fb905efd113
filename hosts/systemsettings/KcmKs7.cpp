#include "hosts/PaneOnScreen.h"
#include "pane/KSPreferencesPanePref.h"
#include "pane/SharedPane.h"

#include <KCModule>
#include <KPluginFactory>

#include <type_traits>

namespace {

/// Returns the widget of the module. In KDE Frameworks 5 KCModule is a widget; in 6 it contains a widget.
template <class Module>
QWidget *widgetOf(Module *module)
{
    if constexpr (std::is_base_of_v<QWidget, Module>)
        return module;
    else
        return module->widget();
}

using Parent = std::conditional_t<std::is_base_of_v<QWidget, KCModule>, QWidget, QObject>;
using Arguments = std::conditional_t<std::is_base_of_v<QWidget, KCModule>, QVariantList, KPluginMetaData>;

} // namespace

/// The module of System Settings, which shows the pane. System Settings destroys it when the user selects
/// another module, and creates a new one later. The pane survives.
class KcmKs7 : public KCModule {
    Q_OBJECT
public:
    KcmKs7(Parent *parent, const Arguments &arguments)
        : KCModule(parent, arguments)
        , mOnScreen(sharedPane(), widgetOf<KCModule>(this))
    {
        setButtons(NoAdditionalButton);
    }

private:
    PaneOnScreen mOnScreen;
};

K_PLUGIN_CLASS_WITH_JSON(KcmKs7, "kcm_ks7.json")

#include "KcmKs7.moc"
