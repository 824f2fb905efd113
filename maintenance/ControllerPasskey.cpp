#include "agent/NotificationNames.h"
#include "cameras/KS7AnimatingStatusTableView.h"
#include "cameras/KS7Cam.h"
#include "logging/KS7OrvexLogger.h"
#include "pane/KS7SettingsWindowController.h"
#include "platform/base/RunLoop.h"
#include "platform/base/ToInt32.h"
#include "platform/sheets/Sheets.h"
#include "widgets/Announcement.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>

#include <algorithm>

using namespace std::chrono_literals;

namespace {

constexpr auto LongestPasskey = 16;
// The delay between the end of the sheet and the remote call. The call blocks the event loop, so the sheet
// must have disappeared from the screen before.
constexpr auto DelayAfterSheet = 500ms;

/// Returns whether the text consists of 1 to 16 decimal digits of any script. Counts characters instead of
/// UTF-16 units, because some digits are surrogate pairs.
bool isPasskey(const QString &text)
{
    const auto characters = text.toUcs4();
    return !characters.isEmpty() && characters.size() <= LongestPasskey
        && std::all_of(characters.begin(), characters.end(), [](uint character) {
               return QChar::category(character) == QChar::Number_DecimalDigit;
           });
}

/// Shows the rule in bold if it is broken. Returns true if that changes the label.
bool emphasise(QLabel *rule, bool isBroken)
{
    QFont font = rule->font();
    if (font.bold() == isBroken)
        return false;
    font.setBold(isBroken);
    rule->setFont(font);
    return true;
}

void enableItemWithTag(const QToolButton *pulldownMenu, PulldownMenuTag tag, bool enabled)
{
    const auto items = pulldownMenu->menu()->actions();
    for (QAction *item : items) {
        if (item->data().toInt() == tag)
            item->setEnabled(enabled);
    }
}

} // namespace

void KS7SettingsWindowController::changePIN(QObject *)
{
    const QString address = selectedCamAddress();
    const auto camera = selectedCam();
    const bool atTheCable = mSharedUSBController->connectedCamHasBTAddress(address);
    if (!atTheCable) {
        beginAlert(
            {tr("Connect To USB"), tr("OK"),
             tr("To change your Bluetooth Passcode, you must connect the KS-7 to your computer via USB. "
                "Please connect the camera and try again."),
             platform::AlertKind::Information});
    } else if (!camera || camera->status() != kKS7CamNotStreaming) {
        beginAlert(
            {tr("Camera In Use"), tr("OK"),
             tr("To change your Bluetooth Passcode, the KS-7 camera and microphone must not be in use. "
                "Please stop any programs from using the camera and try again when the status reads "
                "\"Not Streaming\"."),
             platform::AlertKind::Information});
    } else {
        actuallyChangePIN();
    }
}

void KS7SettingsWindowController::actuallyChangePIN()
{
    outlets.pinOkayButton->setEnabled(false);
    // setText() also deletes the undo history. After clear(), Ctrl+Z would show the previous passkey.
    outlets.newPINText->setText(QString());
    emphasise(outlets.pinRule, false);
    nameSelectedCam(outlets.pinSheet, outlets.pinCamera);
    beginSheet(outlets.pinSheet);
}

void KS7SettingsWindowController::controlTextDidChange(const Notification &)
{
    const QString text = outlets.newPINText->text();
    outlets.pinOkayButton->setEnabled(isPasskey(text));
    const bool isBroken = !text.isEmpty() && !isPasskey(text);
    // Announce only the first wrong character: the rule stays broken at the next ones.
    if (emphasise(outlets.pinRule, isBroken) && isBroken)
        announce(outlets.pinRule, outlets.pinRule->text());
}

void KS7SettingsWindowController::newPINEntered()
{
    // While the rule is broken, the OK button is disabled and Return has no effect, so announce the rule.
    if (outlets.pinOkayButton->isEnabled())
        return;
    emphasise(outlets.pinRule, true);
    announce(outlets.pinRule, outlets.pinRule->text());
}

void KS7SettingsWindowController::pinOkay(QObject *)
{
    mServices.sheets->endSheet(outlets.pinSheet);
    mServices.runLoop->performAfterDelay(this, DelayAfterSheet, [this] { doPinOkay(nullptr); });
}

void KS7SettingsWindowController::doPinOkay(void *)
{
    const int error = mSharedUSBController->setPassKey(outlets.newPINText->text());
    if (error != 0)
        pinError(error);
}

void KS7SettingsWindowController::pinCancel(QObject *)
{
    mServices.sheets->endSheet(outlets.pinSheet);
}

void KS7SettingsWindowController::pinError(int code)
{
    beginAlert({tr("Passkey Not Changed"), tr("OK"),
                tr("An error occurred setting your camera's Bluetooth passkey. Please try again.\nError: %1")
                    .arg(code)});
}

void KS7SettingsWindowController::passKeySet(const Notification &notification)
{
    const int error = platform::toInt32(notification.userInfo, UserInfoKeys::Result);
    if (error != 0) {
        pinError(error);
        return;
    }
    if (!notification.userInfo.contains(UserInfoKeys::PassKey))
        return;
    const QString passKey = notification.userInfo.value(UserInfoKeys::PassKey).toString();
    // Pass false for `fromFavorites`: this ends the pairing, but the camera stays a favourite.
    mSharedDeviceController->removeCameraAtIndex(outlets.cameraListTable->selectedRow(), false);
    beginAlert(
        {tr("Passkey Changed"), tr("OK"),
         tr("Your camera's Bluetooth passkey has been set to \"%1\".  You will be asked for this passkey "
            "the next time you use the camera.")
             .arg(passKey),
         platform::AlertKind::Information});
    discover(nullptr);
}

void KS7SettingsWindowController::USBDeviceConnected(const Notification &)
{
    OrvexLog(u"USB device connected");
    enableUSBOptions();
}

void KS7SettingsWindowController::USBDeviceDisconnected(const Notification &)
{
    OrvexLog(u"USB device disconnected");
    mServices.sheets->endSheet(outlets.pinSheet);
    if (mFirmwareStep == 0)
        mServices.sheets->endSheet(outlets.firmwareSheet);
    enableUSBOptions();
}

void KS7SettingsWindowController::enableUSBOptions()
{
    // The passkey item is always enabled, because changePIN() shows an alert if the camera is not at the USB
    // cable. installFirmware() has no such alert, so enable its item only if an update is possible.
    enableItemWithTag(outlets.pulldownMenu, ChangePasskeyTag, true);
    enableItemWithTag(outlets.pulldownMenu, UpdateFirmwareTag,
                      mSharedUSBController->connectedCamHasBTAddress(selectedCamAddress())
                          && mSharedUSBController->connectedCamNeedsFirmwareUpdate());
}
