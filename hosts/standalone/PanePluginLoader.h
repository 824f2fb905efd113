#pragma once

#include <QCoreApplication>
#include <QPluginLoader>

namespace platform {
class PreferencePaneFactory;
}

/// Loads the pane's plug-in from the build folder of the program. Without a build folder, loads the installed
/// plug-in.
class PanePluginLoader {
    Q_DECLARE_TR_FUNCTIONS(ks7_preferences)
public:
    PanePluginLoader();

    /// Returns the root object, which the plug-in owns. Null if the plug-in could not be loaded; error() then
    /// returns the reason.
    [[nodiscard]] platform::PreferencePaneFactory *factory() const { return mFactory; }
    [[nodiscard]] QString error() const;

private:
    QPluginLoader mLoader;
    platform::PreferencePaneFactory *mFactory;
};
