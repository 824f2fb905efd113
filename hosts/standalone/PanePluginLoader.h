#pragma once

#include <QCoreApplication>
#include <QPluginLoader>

namespace platform {
class PreferencePaneFactory;
}

/// Loads the pane's plug-in from the program's build folder or, if it is not there, from the installed place.
class PanePluginLoader {
    Q_DECLARE_TR_FUNCTIONS(ks7_preferences)
public:
    PanePluginLoader();

    /// Owned by the plug-in. Null if the plug-in cannot be loaded; error() gives the reason.
    [[nodiscard]] platform::PreferencePaneFactory *factory() const { return mFactory; }
    [[nodiscard]] QString error() const;

private:
    QPluginLoader mLoader;
    platform::PreferencePaneFactory *mFactory;
};
