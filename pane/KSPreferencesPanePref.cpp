#include "pane/KSPreferencesPanePref.h"

#include "agent/AgentProxyFactory.h"
#include "pane/KS7SettingsWindowController.h"
#include "pane/PaneNib.h"

#include <QWidget>

namespace {

KSPreferencesPanePref *sharedInstance = nullptr;

} // namespace

KSPreferencesPanePref *KSPreferencesPanePref::shared()
{
    return sharedInstance;
}

KSPreferencesPanePref::KSPreferencesPanePref() = default;

KSPreferencesPanePref::~KSPreferencesPanePref()
{
    if (sharedInstance == this)
        sharedInstance = nullptr;
}

KSPreferencesPanePref *KSPreferencesPanePref::init()
{
    sharedInstance = this;
    return this;
}

KSPreferencesPanePref *KSPreferencesPanePref::initWithBundle(const platform::Services &services,
                                                             std::shared_ptr<AgentProxyFactory> protocols)
{
    sharedInstance = this;
    mNib = std::make_unique<PaneNib>(services, std::move(protocols));
    mSettingsWindowController = mNib->settingsWindowController();
    setMainView(mNib->mainView());
    mNib->awake();
    return this;
}

QWidget *KSPreferencesPanePref::mainWindow() const
{
    // An unparented view is technically a top-level widget. Return null then, because no window contains the
    // view.
    return mainView() && mainView()->parentWidget() ? mainView()->window() : nullptr;
}

void KSPreferencesPanePref::willSelect()
{
    if (mSettingsWindowController)
        mSettingsWindowController->prefPaneWillShow();
}

void KSPreferencesPanePref::didUnselect()
{
    if (mSettingsWindowController)
        mSettingsWindowController->prefPaneDidHide();
}
