#pragma once

#include "pane/PreferencePane.h"

#include <memory>

class KS7SettingsWindowController;
class PaneNib;

namespace platform {
struct Services;
}
class AgentProxyFactory;

/// The principal class of the bundle. The process has one object of this class, which tells the controller
/// when the pane is shown or hidden.
class KSPreferencesPanePref : public platform::PreferencePane {
public:
    /// Returns the process's pane; null before init() or initWithBundle().
    static KSPreferencesPanePref *shared();

    KSPreferencesPanePref();
    ~KSPreferencesPanePref() override;

    /// Makes this object the process's pane without loading its interface files.
    KSPreferencesPanePref *init();
    /// Makes this object the process's pane and loads its interface files.
    KSPreferencesPanePref *initWithBundle(const platform::Services &services,
                                          std::shared_ptr<AgentProxyFactory> protocols);
    void awakeFromNib() { }
    /// Returns the host's window that contains the pane; null while the pane is in no window.
    [[nodiscard]] QWidget *mainWindow() const;
    void willSelect() override;
    void didUnselect() override;

    KS7SettingsWindowController *mSettingsWindowController = nullptr;

private:
    std::unique_ptr<PaneNib> mNib;
};
