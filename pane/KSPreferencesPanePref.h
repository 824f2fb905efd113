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
    /// The pane; null until one is initialised.
    static KSPreferencesPanePref *shared();

    KSPreferencesPanePref();
    ~KSPreferencesPanePref() override;

    /// Records the pane as the shared one, without loading its interface.
    KSPreferencesPanePref *init();
    /// Records the pane as the shared one and loads its interface.
    KSPreferencesPanePref *initWithBundle(const platform::Services &services,
                                          std::shared_ptr<AgentProxyFactory> protocols);
    void awakeFromNib() { }
    /// The window that contains the pane; null while there is none.
    [[nodiscard]] QWidget *mainWindow() const;
    void willSelect() override;
    void didUnselect() override;

    KS7SettingsWindowController *mSettingsWindowController = nullptr;

private:
    std::unique_ptr<PaneNib> mNib;
};
