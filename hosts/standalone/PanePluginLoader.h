#pragma once

#include <QCoreApplication>
#include <QPluginLoader>

namespace platform {
class PreferencePaneFactory;
}

/// Loads the pane's plug-in: from the build folder of this program, else from where it is installed.
class PanePluginLoader {
    Q_DECLARE_TR_FUNCTIONS(ks7_preferences)
public:
    PanePluginLoader();

    /// Owned by the plug-in; null if there is no such plug-in, with the reason in error().
    [[nodiscard]] platform::PreferencePaneFactory *factory() const { return mFactory; }
    [[nodiscard]] QString error() const;

private:
    QPluginLoader mLoader;
    platform::PreferencePaneFactory *mFactory;
};
