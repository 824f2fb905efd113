#pragma once

#include "agent/KS7DeviceControllerProxy.h"
#include "agent/Proxy.h"
#include "agent/TernUSBCommandControllerProxy.h"
#include "cameras/CameraTableSource.h"
#include "pane/Outlets.h"
#include "platform/Services.h"
#include "platform/bus/NotificationCenter.h"

#include <QHash>
#include <QObject>
#include <QStringList>

#include <cstdint>
#include <memory>

namespace platform {
class Connection;
class RootProxy;
class Timer;
struct AlertSheet;
}

class KS7Cam;
class QLabel;
class KS7OrvexLogger;
class AgentProxyFactory;

/// Contains all logic of the pane. The class is divided into chapters, such as "Link" and "List". Each
/// chapter is defined in the folder that its heading names. PaneNib creates the only object. All functions
/// run on the main thread. They report failures as codes and sheets, never as exceptions.
class KS7SettingsWindowController : public QObject, public CameraTableSource {
    Q_OBJECT
public:
    using Notification = platform::Notification;

    // Outlets --------------------------------------------------------------------------------------------

    Outlets outlets;

    // Link: finding, keeping and losing the agent (agent/) -----------------------------------------------

    /// Connects to the agent, unless it is already connected. Blocks during up to 21 attempts with pauses of
    /// 0.1 s. Launches the agent once if the first attempt fails.
    void setupConnections();
    void closeConnections();
    void connectionDidDie(const Notification &notification);
    void agentStarted(const Notification &notification);
    void ks7NoBluetooth(const Notification &notification);
    void ks7FoundBluetooth(const Notification &notification);
    void displayAgentError();
    void agentErrorDidEnd(QWidget *sheet, int returnCode, void *contextInfo);
    void displayBluetoothError();
    void bluetoothErrorDidEnd(QWidget *sheet, int returnCode, void *contextInfo);

    // List: snapshot, table, selection, discovery (cameras/) ---------------------------------------------

    void setupCameraStatus();
    /// Reads the camera list from the agent and updates every control. Every refresh of the pane uses this
    /// function.
    void cameraStatusChanged();
    void copyCamerasLocal();
    [[nodiscard]] const QHash<QString, std::shared_ptr<KS7Cam>> &cameras() const override
    {
        return mLocalCameraList;
    }
    void reloadTable();
    int numberOfRowsInTableView(const QObject *table) override;
    QVariant tableViewObjectValue(const QObject *table, const QString &column, int row) override;
    void tableViewSelectionDidChange(const Notification &notification) override;
    /// Returns the address of the selected camera. If no row is selected, returns the address of the camera
    /// in the clicked row, or a null string without a clicked row.
    QString selectedCamAddress();
    std::shared_ptr<KS7Cam> selectedCam();
    void pickPreferredCamera();
    void setActiveCamera(QObject *sender);
    void clickedTableRow(QObject *sender);
    void doubleClickCamera(QObject *sender);
    void discover(QObject *sender);
    void addCameras(QObject *sender);
    void removeCamera(QObject *sender);
    void startedDiscovering(const Notification &notification);
    void stoppedDiscovering(const Notification &notification);
    void cameraListChanged(const Notification &notification);
    void cameraSelectionChanged(const Notification &notification);
    void pairingInitiated(const Notification &notification);
    void streamingInitiated(const Notification &notification);
    void streamingEnded(const Notification &notification);
    void receivedData(const Notification &notification);
    void doReceivedData(void *ignored);

    // Settings (settings/) -------------------------------------------------------------------------------

    /// Returns the stored index of the video size; 1 when none is stored.
    static int sizeIndexFromKS7Prefs(platform::UserDefaults &defaults);
    /// Returns the processor's nominal clock in megahertz; 0 when it is unknown.
    static int getCPUMhz(platform::ProcessorClock &clock);
    static bool forceQVGA(platform::ProcessorClock &clock);
    static bool shouldDebugLog(platform::UserDefaults &defaults);
    bool isKS7On();
    void setupStatusMenuCheckbox();
    void setupEnableKS7Checkbox();
    void setupOptimizePopup();
    void setupDebugButton();
    void enableKS7Checkbox(QObject *sender);
    void statusMenuCheckbox(QObject *sender);
    void optimizeForChanged(QObject *sender);
    void debugLogCheckbox(QObject *sender);
    void ks7OnOffChanged(const Notification &notification);

    // Maintenance: properties, passkey, firmware (maintenance/) ------------------------------------------

    void showCameraProperties(QObject *sender);
    void setupProperties();
    void propertiesOkay(QObject *sender);
    void propertiesCancel(QObject *sender);
    void ignoreCamera(QObject *sender);
    /// The end handler of every sheet of the pane. Hides the sheet.
    void sheetDidEnd(QWidget *sheet, int returnCode, void *contextInfo);

    void changePIN(QObject *sender);
    void actuallyChangePIN();
    void controlTextDidChange(const Notification &notification);
    /// Called when Return is pressed in the passkey field. Announces the rule again if the text breaks it.
    void newPINEntered();
    void pinOkay(QObject *sender);
    void doPinOkay(void *ignored);
    void pinCancel(QObject *sender);
    void pinError(int code);
    void passKeySet(const Notification &notification);
    void USBDeviceConnected(const Notification &notification);
    void USBDeviceDisconnected(const Notification &notification);
    void enableUSBOptions();

    void installFirmware(QObject *sender);
    void firmwareContinue(QObject *sender);
    void firmwareCancel(QObject *sender);
    void firmwareError(int code);
    void firmwareUpdateProgress(const Notification &notification);
    void firmwareUpdateEnded(const Notification &notification);

    // Preview (preview/) ---------------------------------------------------------------------------------

    void startVideo(QObject *sender);
    void stopPreviewing();
    void setLevels(platform::Timer *timer);
    void qtError(std::int32_t code);
    void quickTimeErrored(const Notification &notification);

    // Lifecycle: start-up, show and hide, power, session (pane/), version line (about/) ------------------

    KS7SettingsWindowController(platform::Services services, std::shared_ptr<AgentProxyFactory> protocols);
    ~KS7SettingsWindowController() override;
    KS7SettingsWindowController *init();
    void awakeFromNib();
    void prefPaneWillShow();
    void prefPaneDidHide();
    void setupUI();
    void setupCopyright();
    void makeItKey(void *ignored);
    void installSleepNotification();
    void systemWillSleep();
    void systemWokeFromSleep();
    /// Acknowledges a power message, so that the system may sleep. `messageArgument` identifies the message.
    void allowPowerChange(void *messageArgument);
    void goingToSleep(const Notification &notification);
    void userSessionDidResignActive(const Notification &notification);
    void userSessionDidBecomeActive(const Notification &notification);

    // The controller's state, mostly for tests.
    [[nodiscard]] bool isConnected() const { return bool(mSharedDeviceController); }
    [[nodiscard]] bool isStreaming() const { return mStreaming; }
    [[nodiscard]] bool isSwitchedOut() const { return mSwitchedOut; }
    [[nodiscard]] bool isBluetoothOff() const { return mBluetoothOff; }
    [[nodiscard]] std::int32_t firmwareStep() const { return mFirmwareStep; }
    [[nodiscard]] std::int32_t indexOfPreferred() const { return mIndexOfPreferred; }
    [[nodiscard]] bool hasLevelsTimer() const { return mLevelsTimer != nullptr; }

private:
    /// Updates all texts of the main view that describe the pane's state.
    void showWords();
    using Handler = void (KS7SettingsWindowController::*)(const Notification &);
    void observe(platform::NotificationCenter &center, const QString &name, Handler handler);
    void registerDistributedObservers();
    void registerLocalObservers();
    /// Tries to connect and returns the agent's root object. Returns null after the last failed attempt.
    std::shared_ptr<platform::RootProxy> reachAgent();
    void launchAgent();
    void beginSheet(platform::Sheet *sheet);
    /// Writes the selected camera's name into the label and into the sheet's accessible description.
    void nameSelectedCam(platform::Sheet *sheet, QLabel *label);
    void beginAlert(const platform::AlertSheet &alert);
    bool isOptionHeld();
    void startFirmwareUpdate();
    /// Runs the event loop until the firmware update has ended. Returns false when the host quits, the
    /// controller is destroyed or the sheet is opened again. After false, the caller must not change the
    /// sheet.
    bool waitForFirmwareUpdate();
    void setFirmwareStep(std::int32_t step);
    void firmwareUpdateIsOver();

    KS7OrvexLogger *mLogger = nullptr;
    // Both proxies are nil without an agent. Calls on nil do nothing, see agent/Proxy.h.
    Proxy<KS7DeviceControllerProxy> mSharedDeviceController;
    Proxy<TernUSBCommandControllerProxy> mSharedUSBController;
    QStringList mLocalSortedNames;
    QHash<QString, std::shared_ptr<KS7Cam>> mLocalCameraList;
    std::int32_t mIndexOfPreferred = -1;
    bool mStreaming = false;
    std::unique_ptr<platform::Timer> mLevelsTimer;
    std::shared_ptr<platform::Connection> mAgentConnection;
    std::shared_ptr<platform::Connection> mAgentConnectionUSB;
    std::int32_t mFirmwareStep = 0;
    /// Counts how often the firmware sheet was opened. waitForFirmwareUpdate() compares it to detect a newer
    /// opening.
    std::uint32_t mFirmwareOpening = 0;
    /// Whether the host shows the pane.
    bool mIsShown = false;
    bool mSwitchedOut = false;
    bool mBluetoothOff = false;
    /// Whether the camera service was switched on in the preferences at the last refresh.
    bool mWasOn = true;
    /// Whether the agent searches for cameras. The label of the search only follows the agent's posts, so it
    /// stays when the agent ends.
    bool mIsSearching = false;
    /// Whether the last refresh read the camera list from the agent. Without an agent it could not.
    bool mListWasRead = false;

    platform::Services mServices;
    std::shared_ptr<AgentProxyFactory> mProtocols;
};

/// The handle that registerForSystemPower() returned. allowPowerChange() needs it.
extern std::uint32_t root_port;
/// The argument of the last will-sleep message. allowPowerChange() passes it on to acknowledge the message.
extern void *gMessageArgument;

/// The callback that registerForSystemPower() receives. `refcon` is the controller; the callback forwards
/// each power message to it.
void MySleepCallBack(void *refcon, std::uint32_t service, std::uint32_t messageType, void *messageArgument);
