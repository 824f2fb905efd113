#include "agent/NotificationNames.h"
#include "logging/KS7OrvexLogger.h"
#include "pane/KS7SettingsWindowController.h"
#include "platform/power/PowerManagement.h"
#include "preview/KS7PreviewController.h"

std::uint32_t root_port = 0;
void *gMessageArgument = nullptr;

void MySleepCallBack(void *refcon, std::uint32_t, std::uint32_t messageType, void *messageArgument)
{
    auto *controller = static_cast<KS7SettingsWindowController *>(refcon);
    switch (messageType) {
    case platform::kIOMessageCanSystemSleep:
        controller->allowPowerChange(messageArgument);
        break;
    case platform::kIOMessageSystemWillSleep:
        gMessageArgument = messageArgument;
        controller->systemWillSleep();
        break;
    case platform::kIOMessageSystemHasPoweredOn:
        controller->systemWokeFromSleep();
        break;
    default:
        break;
    }
}

void KS7SettingsWindowController::installSleepNotification()
{
    root_port = mServices.power->registerForSystemPower(this, MySleepCallBack);
}

void KS7SettingsWindowController::systemWillSleep()
{
    OrvexLog(u"Sleeping: Got sleep notification. Need to stop streaming");
    mServices.localCenter->postNotificationName(NotificationNames::GoingToSleep);
    OrvexLog(u"Sleeping: Calling IOAllowPowerChange");
    allowPowerChange(gMessageArgument);
}

void KS7SettingsWindowController::allowPowerChange(void *messageArgument)
{
    mServices.power->allowPowerChange(root_port, messageArgument);
}

void KS7SettingsWindowController::systemWokeFromSleep()
{
    // Nothing to do after waking: the link to the agent stays open during sleep, and only the user restarts
    // the preview.
}

void KS7SettingsWindowController::goingToSleep(const Notification &)
{
    stopPreviewing();
    cameraStatusChanged();
}

void KS7SettingsWindowController::userSessionDidResignActive(const Notification &)
{
    OrvexLog(u"Got switched out for fast user switching. Need to stop streaming");
    mSwitchedOut = true;
    closeConnections();
    stopPreviewing();
    outlets.previewView->stopSession();
}

void KS7SettingsWindowController::userSessionDidBecomeActive(const Notification &)
{
    if (mSwitchedOut) {
        OrvexLog(u"Came back after being user switched. Maybe reconnect to agent.");
        if (!mSharedDeviceController)
            setupConnections();
    }
    mSwitchedOut = false;
    // The last texts say that the pane has no agent, so replace them.
    showWords();
}
