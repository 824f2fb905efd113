#include "agent/NotificationNames.h"
#include "logging/KS7OrvexLogger.h"
#include "pane/KS7SettingsWindowController.h"
#include "platform/base/ToInt32.h"
#include "platform/desktop/KeyboardModifiers.h"
#include "platform/desktop/ProcessorClock.h"
#include "platform/preferences/UserDefaults.h"
#include "settings/KS7Domain.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPointer>

namespace {

constexpr int DefaultSizeIndex = 1;
constexpr std::uint64_t HertzPerMegahertz = 1'000'000;
// The lowest processor clock in MHz at which the user can choose a picture size. Slower processors can handle
// the smallest size only.
constexpr int SlowestForLargePictureMhz = 1002;

QVariantMap stateOf(const QCheckBox *checkbox)
{
    return {{UserInfoKeys::Value, checkbox->isChecked() ? 1 : 0}};
}

/// Sets a check box without emitting its signals, because a change by the pane is not a click of the user.
void show(QCheckBox *checkbox, bool on)
{
    const QSignalBlocker quiet(checkbox);
    checkbox->setChecked(on);
}

} // namespace

int KS7SettingsWindowController::sizeIndexFromKS7Prefs(platform::UserDefaults &defaults)
{
    const QVariant index = KS7Domain::domainObjectForKey(defaults, PreferenceKeys::VideoSize2);
    return index.isValid() ? platform::toInt32(index) : DefaultSizeIndex;
}

int KS7SettingsWindowController::getCPUMhz(platform::ProcessorClock &clock)
{
    return static_cast<int>(clock.frequency() / HertzPerMegahertz);
}

bool KS7SettingsWindowController::forceQVGA(platform::ProcessorClock &clock)
{
    return getCPUMhz(clock) < SlowestForLargePictureMhz;
}

bool KS7SettingsWindowController::shouldDebugLog(platform::UserDefaults &defaults)
{
    return KS7Domain::boolForKey(defaults, PreferenceKeys::LogToFile, false);
}

bool KS7SettingsWindowController::isKS7On()
{
    mServices.userDefaults->synchronize();
    return KS7Domain::boolForKey(*mServices.userDefaults, PreferenceKeys::KS7On, true);
}

void KS7SettingsWindowController::setupStatusMenuCheckbox()
{
    show(outlets.statusMenuCheckbox,
         KS7Domain::boolForKey(*mServices.userDefaults, PreferenceKeys::ShowStatusMenu, true));
}

void KS7SettingsWindowController::setupEnableKS7Checkbox()
{
    show(outlets.enableKS7Checkbox, isKS7On());
    cameraListChanged({});
}

void KS7SettingsWindowController::setupOptimizePopup()
{
    if (forceQVGA(*mServices.processorClock)) {
        outlets.optimizeForPopUp->hide();
        outlets.optimizeForPopUpLabel->hide();
        return;
    }
    // If the stored size has no item, select no item and keep the stored size.
    const int index = sizeIndexFromKS7Prefs(*mServices.userDefaults);
    const bool hasItem = index >= 0 && index < outlets.optimizeForPopUp->count();
    outlets.optimizeForPopUp->setCurrentIndex(hasItem ? index : -1);
}

void KS7SettingsWindowController::setupDebugButton()
{
    show(outlets.debugLog, shouldDebugLog(*mServices.userDefaults));
    outlets.debugLog->setVisible(isOptionHeld() || outlets.debugLog->isChecked());
    mServices.keyboard->onceFocused([controller = QPointer<KS7SettingsWindowController>(this)] {
        if (controller && controller->isOptionHeld())
            controller->outlets.debugLog->show();
    });
}

bool KS7SettingsWindowController::isOptionHeld()
{
    return (mServices.keyboard->currentKeyModifiers() & platform::KeyboardModifiers::OptionKey) != 0;
}

void KS7SettingsWindowController::enableKS7Checkbox(QObject *)
{
    mServices.distributedCenter->postNotificationName(NotificationNames::ToggleEnabled, nullptr,
                                                      stateOf(outlets.enableKS7Checkbox));
}

void KS7SettingsWindowController::statusMenuCheckbox(QObject *)
{
    mServices.distributedCenter->postNotificationName(NotificationNames::ToggleStatusMenu, nullptr,
                                                      stateOf(outlets.statusMenuCheckbox));
}

void KS7SettingsWindowController::optimizeForChanged(QObject *)
{
    auto &defaults = *mServices.userDefaults;
    KS7Domain::domainSetObject(defaults, outlets.optimizeForPopUp->currentIndex(),
                               PreferenceKeys::VideoSize2);
    // Write to disk before posting, so that the agent reads the new value.
    defaults.synchronize();
    mServices.distributedCenter->postNotificationName(NotificationNames::ChangedOptimizedPreference);
    // Show the stored size again now. The write may have failed, and without a bus the pane does not receive
    // its own notification.
    setupOptimizePopup();
}

void KS7SettingsWindowController::debugLogCheckbox(QObject *)
{
    mServices.distributedCenter->postNotificationName(NotificationNames::ToggleDebugLog, nullptr,
                                                      stateOf(outlets.debugLog));
    mLogger->setLogToFile(outlets.debugLog->isChecked());
}

void KS7SettingsWindowController::ks7OnOffChanged(const Notification &)
{
    setupEnableKS7Checkbox();
    if (!isKS7On())
        stopPreviewing();
}
