#include "pane/KS7SettingsWindowController.h"

#include "about/KSUpdater.h"
#include "agent/AgentProxyFactory.h"
#include "agent/NotificationNames.h"
#include "agent/RemoteNames.h"
#include "cameras/KS7AnimatingStatusTableView.h"
#include "logging/KS7OrvexLogger.h"
#include "pane/KSPreferencesPanePref.h"
#include "platform/base/RunLoop.h"
#include "platform/bus/Connection.h"
#include "platform/capture/Capture.h"
#include "platform/desktop/Workspace.h"
#include "platform/sheets/Sheets.h"
#include "preview/KS7PreviewController.h"
#include "widgets/Indicators.h"

#include <QLabel>

using namespace std::chrono_literals;
using Controller = KS7SettingsWindowController;

KS7SettingsWindowController::KS7SettingsWindowController(platform::Services services,
                                                         std::shared_ptr<AgentProxyFactory> protocols)
    : mServices(std::move(services))
    , mProtocols(std::move(protocols))
{
}

KS7SettingsWindowController::~KS7SettingsWindowController()
{
    // The run loop may outlive the controller, so cancel the delayed calls.
    mServices.runLoop->cancelPreviousPerformRequests(this);
    // The nested event loop of a firmware update may still be on the call stack. Wake it, so that it returns.
    mServices.runLoop->wake();
}

KS7SettingsWindowController *KS7SettingsWindowController::init()
{
    mSharedDeviceController.reset();
    mLevelsTimer.reset();
    mLocalSortedNames.clear();
    mLocalCameraList.clear();
    mIndexOfPreferred = -1;
    mSwitchedOut = false;
    mBluetoothOff = false;
    return this;
}

void KS7SettingsWindowController::awakeFromNib()
{
    KS7OrvexLogger::setAppName(QStringLiteral("KS-7 System Preferences"));
    mLogger = KS7OrvexLogger::createDefaultLoggerToFile(shouldDebugLog(*mServices.userDefaults), false);
    mLogger->setWorkspace(mServices.workspace, mServices.runLoop);
    if (!mSharedDeviceController)
        setupConnections();
    registerDistributedObservers();
    registerLocalObservers();
    installSleepNotification();
    observe(*mServices.localCenter, NotificationNames::GoingToSleep, &Controller::goingToSleep);
    setupUI();
    outlets.cameraListTable->setAction([this](QObject *sender) { clickedTableRow(sender); });
}

void KS7SettingsWindowController::observe(platform::NotificationCenter &center, const QString &name,
                                          Handler handler)
{
    center.addObserver(this, name,
                       [this, handler](const Notification &notification) { (this->*handler)(notification); });
}

void KS7SettingsWindowController::registerDistributedObservers()
{
    namespace Names = NotificationNames;
    auto &center = *mServices.distributedCenter;
    observe(center, Names::StreamingStarted, &Controller::receivedData);
    observe(center, Names::CameraListChanged, &Controller::cameraListChanged);
    observe(center, Names::StoppedDiscovering, &Controller::stoppedDiscovering);
    observe(center, Names::StartedDiscovering, &Controller::startedDiscovering);
    observe(center, Names::PassKeySet, &Controller::passKeySet);
    observe(center, Names::StreamingInitiated, &Controller::streamingInitiated);
    observe(center, Names::PairingInitiated, &Controller::pairingInitiated);
    observe(center, Names::StreamingEnded, &Controller::streamingEnded);
    observe(center, Names::USBDeviceConnected, &Controller::USBDeviceConnected);
    observe(center, Names::USBDeviceDisconnected, &Controller::USBDeviceDisconnected);
    observe(center, Names::AgentStarted, &Controller::agentStarted);
    observe(center, Names::PreferredCameraChanged, &Controller::cameraSelectionChanged);
    observe(center, Names::FirmwareUpdateEnded, &Controller::firmwareUpdateEnded);
    observe(center, Names::FirmwareUpdateProgress, &Controller::firmwareUpdateProgress);
    observe(center, Names::OnOffChanged, &Controller::ks7OnOffChanged);
    observe(center, Names::NoBluetooth, &Controller::ks7NoBluetooth);
    observe(center, Names::FoundBluetooth, &Controller::ks7FoundBluetooth);
    center.addObserver(this, Names::ChangedOptimizedPreference,
                       [this](const Notification &) { setupOptimizePopup(); });
    // While the session bus was lost, the pane could not receive the agent's start notification. Handle the
    // agent's return like that notification.
    mServices.connections->whenFoundAgain(RemoteNames::AgentServer, [this] {
        agentStarted({Names::AgentStarted, nullptr, {}});
    });
}

void KS7SettingsWindowController::registerLocalObservers()
{
    auto &center = *mServices.localCenter;
    observe(center, platform::NSConnectionDidDieNotification, &Controller::connectionDidDie);
    observe(center, platform::QuickTimeErrorNotification, &Controller::quickTimeErrored);
}

void KS7SettingsWindowController::setupUI()
{
    setupCopyright();
    setupCameraStatus();
    setupStatusMenuCheckbox();
    setupEnableKS7Checkbox();
    setupOptimizePopup();
    outlets.levelIndicator_l->setDoubleValue(0.0);
    outlets.levelIndicator_r->setDoubleValue(0.0);
}

void KS7SettingsWindowController::prefPaneWillShow()
{
    mIsShown = true;
    mServices.distributedCenter->postNotificationName(NotificationNames::SystemPrefsShowing);
    if (!mSharedDeviceController)
        setupConnections();
    mSharedDeviceController->flush();
    setupDebugButton();
    cameraStatusChanged();
    if (!outlets.discoveringMessage->isHidden())
        outlets.searchingIndicator->startAnimation();
    mServices.runLoop->performAfterDelay(this, 100ms, [this] { makeItKey(nullptr); });
    if (!mSharedDeviceController->getPreferredKS7Cam())
        discover(nullptr);
    KSUpdater::sharedUpdater(*mServices.updates, mServices.bundle)->applicationDidFinishLaunching();
    mSwitchedOut = false;
    auto &workspace = *mServices.workspaceCenter;
    observe(workspace, platform::NSWorkspaceSessionDidBecomeActiveNotification,
            &Controller::userSessionDidBecomeActive);
    observe(workspace, platform::NSWorkspaceSessionDidResignActiveNotification,
            &Controller::userSessionDidResignActive);
}

void KS7SettingsWindowController::prefPaneDidHide()
{
    // Screen readers must not say that the hidden pane has lost the agent.
    mIsShown = false;
    outlets.previewView->endGrab();
    closeConnections();
    auto &workspace = *mServices.workspaceCenter;
    workspace.removeObserver(this, platform::NSWorkspaceSessionDidBecomeActiveNotification);
    workspace.removeObserver(this, platform::NSWorkspaceSessionDidResignActiveNotification);
}

void KS7SettingsWindowController::makeItKey(void *)
{
    // This function runs 0.1 s after the pane was shown. If the pane has been hidden since then, it must not
    // take the focus from another page of the host.
    if (outlets.cameraListTable->isVisible())
        outlets.cameraListTable->setFocus(Qt::OtherFocusReason);
}
