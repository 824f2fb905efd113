#pragma once

#include "pane/PreferencePane.h"

#include <memory>

class KS7SettingsWindowController;
class PaneNib;

namespace platform {
struct Services;
}
class AgentProxyFactory;

/// The principal class: the one pane of the process. Forwards showing and hiding to the controller.
class KSPreferencesPanePref : public platform::PreferencePane {
public:
    /// The pane, null before one is initialised.
    static KSPreferencesPanePref *shared();

    KSPreferencesPanePref();
    ~KSPreferencesPanePref() override;

    /// Records the pane as the shared one and does nothing else.
    KSPreferencesPanePref *init();
    /// Records the pane as the shared one and loads its interface.
    KSPreferencesPanePref *initWithBundle(const platform::Services &services,
                                          std::shared_ptr<AgentProxyFactory> protocols);
    void awakeFromNib() { }
    /// The window that shows the pane, null while none does.
    [[nodiscard]] QWidget *mainWindow() const;
    void willSelect() override;
    void didUnselect() override;

    KS7SettingsWindowController *mSettingsWindowController = nullptr;

private:
    std::unique_ptr<PaneNib> mNib;
};
