#include "agent/AgentProgram.h"
#include "agent/AgentProxyFactory.h"
#include "agent/RemoteNames.h"
#include "cameras/KS7AnimatingStatusTableView.h"
#include "logging/KS7OrvexLogger.h"
#include "pane/KS7SettingsWindowController.h"
#include "platform/base/RunLoop.h"
#include "platform/bus/Connection.h"
#include "platform/desktop/HostClasses.h"
#include "platform/desktop/ProgramLauncher.h"
#include "platform/sheets/Sheets.h"

#include <QMetaObject>
#include <QPointer>
#include <QWidget>

using namespace std::chrono_literals;

namespace {

constexpr int LastAttempt = 20;
constexpr auto PauseAfterAttempt = 100ms;
constexpr auto DelayBeforeOverview = 500ms;

std::shared_ptr<platform::RootProxy> rootOf(const std::shared_ptr<platform::Connection> &connection)
{
    return connection ? connection->rootProxy() : nullptr;
}

/// `connection` is a copy, because invalidate() calls connectionDidDie(), which resets the controller's
/// member. The copy keeps the connection alive until invalidate() returns.
void invalidate(const std::shared_ptr<platform::Connection> connection) // NOLINT(performance-*)
{
    if (connection)
        connection->invalidate();
}

bool respondsTo(const QObject *object, const char *signature)
{
    return object && object->metaObject()->indexOfMethod(signature) >= 0;
}

/// The host's manager of panes; null when the host has none.
QObject *prefPanesManager(platform::HostClasses &classes)
{
    QObject *managerClass = classes.classNamed(QStringLiteral("NSPrefPanesManager"));
    QObject *manager = nullptr;
    if (respondsTo(managerClass, "prefPanesManager()"))
        QMetaObject::invokeMethod(managerClass, "prefPanesManager", Q_RETURN_ARG(QObject *, manager));
    return manager;
}

} // namespace

void KS7SettingsWindowController::setupConnections()
{
    if (mSharedDeviceController)
        return;
    mSharedDeviceController = mProtocols->deviceController(reachAgent());
    mAgentConnectionUSB = mServices.connections->connectionWithRegisteredName(RemoteNames::AgentServerUSB);
    mSharedUSBController = mProtocols->usbController(rootOf(mAgentConnectionUSB));
}

std::shared_ptr<platform::RootProxy> KS7SettingsWindowController::reachAgent()
{
    for (int attempt = 1;; ++attempt) {
        mAgentConnection = mServices.connections->connectionWithRegisteredName(RemoteNames::AgentServer);
        auto root = rootOf(mAgentConnection);
        if (!root && attempt == 1)
            launchAgent();
        mServices.runLoop->pause(PauseAfterAttempt);
        if (root)
            return root;
        if (attempt > LastAttempt) {
            OrvexLog(u"Unabled to make connection to agent.");
            displayAgentError();
            return nullptr;
        }
    }
}

void KS7SettingsWindowController::launchAgent()
{
    // The agent may have ended during a search while the pane was hidden.
    mIsSearching = false;
    mServices.launcher->launch(agentProgram());
}

void KS7SettingsWindowController::closeConnections()
{
    invalidate(mAgentConnection);
    invalidate(mAgentConnectionUSB);
    // Do not reset mAgentConnection and mAgentConnectionUSB here. connectionDidDie() compares them with the
    // dead connection, and ignores connections that are not the agent's.
    mSharedUSBController.reset();
    mSharedDeviceController.reset();
    mServices.sheets->endSheet(outlets.pinSheet);
    mServices.sheets->endSheet(outlets.firmwareSheet);
}

void KS7SettingsWindowController::connectionDidDie(const Notification &notification)
{
    OrvexLog(u"connectionDidDie:");
    if (!mAgentConnection)
        return;
    // The notification center also reports the deaths of connections that belong to the host. Ignore those.
    if (notification.object != mAgentConnection.get() && notification.object != mAgentConnectionUSB.get())
        return;
    mAgentConnection.reset();
    mAgentConnectionUSB.reset();
    // When the pane is left, it closes its connections itself, and the agent goes on with its search.
    if (mIsShown && !mSwitchedOut)
        mIsSearching = false;
    closeConnections();
    outlets.cameraListTable->reloadData();
    cameraStatusChanged();
    stopPreviewing();
}

void KS7SettingsWindowController::agentStarted(const Notification &)
{
    setupConnections();
    cameraStatusChanged();
}

void KS7SettingsWindowController::ks7NoBluetooth(const Notification &)
{
    if (mBluetoothOff)
        return;
    mBluetoothOff = true;
    stopPreviewing();
    cameraStatusChanged();
    displayBluetoothError();
}

void KS7SettingsWindowController::ks7FoundBluetooth(const Notification &)
{
    if (!mBluetoothOff)
        return;
    mBluetoothOff = false;
    cameraStatusChanged();
    outlets.cameraListTable->takeFocusBack();
}

void KS7SettingsWindowController::displayAgentError()
{
    mServices.sheets->beginAlertSheet({tr("Installation Error"), tr("OK"),
                                       tr("The KS-7 Preferences cannot be loaded at this time. Please try "
                                          "re-installing your KS-7 software.")},
                                      mServices.sheets->applicationMainWindow(),
                                      [this](QWidget *sheet, int returnCode, void *contextInfo) {
                                          agentErrorDidEnd(sheet, returnCode, contextInfo);
                                      });
}

void KS7SettingsWindowController::agentErrorDidEnd(QWidget *sheet, int returnCode, void *contextInfo)
{
    sheetDidEnd(sheet, returnCode, contextInfo);
    const QPointer<QObject> manager = prefPanesManager(*mServices.hostClasses);
    if (!respondsTo(manager, "showAll(QObject*)"))
        return;
    mServices.runLoop->performAfterDelay(manager, DelayBeforeOverview, [manager] {
        if (manager)
            QMetaObject::invokeMethod(manager, "showAll", Q_ARG(QObject *, nullptr));
    });
}

void KS7SettingsWindowController::displayBluetoothError()
{
    mServices.sheets->beginAlertSheet(
        {tr("Bluetooth Error"), tr("OK"),
         tr("KS-7 could not activate Bluetooth. Make sure that Bluetooth is available and turned on.")},
        mServices.sheets->applicationMainWindow(), [this](QWidget *sheet, int returnCode, void *contextInfo) {
            bluetoothErrorDidEnd(sheet, returnCode, contextInfo);
        });
}

void KS7SettingsWindowController::bluetoothErrorDidEnd(QWidget *sheet, int returnCode, void *contextInfo)
{
    sheetDidEnd(sheet, returnCode, contextInfo);
}
