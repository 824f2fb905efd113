#include "agent/NotificationNames.h"
#include "logging/KS7OrvexLogger.h"
#include "pane/KS7SettingsWindowController.h"
#include "widgets/Indicators.h"
#include "platform/ToInt32.h"
#include "platform/desktop/RunLoop.h"
#include "platform/sheets/Sheets.h"

#include <QLabel>
#include <QPointer>
#include <QPushButton>

using namespace std::chrono_literals;

namespace {

constexpr auto WaitSlice = 10ms;

/// What mFirmwareStep counts through. An end that nobody waits for counts on beyond the last one.
enum FirmwareStep { Offered = 0, Confirmed = 1, Over = 2 };

void setTexts(const Outlets &outlets, const QString &headline, const QString &secondLine)
{
    outlets.firmwareMainText->setText(headline);
    outlets.firmwareStatusText->setText(secondLine);
}

} // namespace

void KS7SettingsWindowController::installFirmware(QObject *)
{
    mFirmwareStep = Offered;
    setTexts(outlets, tr("Update Firmware puts the latest firmware version on your KS-7."),
             tr("Click Continue to proceed."));
    outlets.firmwareCheckingIndicator->hide();
    outlets.firmwareCancelButton->show();
    outlets.firmwareContinueButton->setEnabled(true);
    beginSheet(outlets.firmwareSheet);
}

void KS7SettingsWindowController::firmwareContinue(QObject *)
{
    switch (mFirmwareStep) {
    case Offered:
        setTexts(outlets, tr("Do not disconnect the camera until the update is complete."),
                 tr("Click Continue to start the update."));
        mFirmwareStep = Confirmed;
        break;
    case Confirmed:
        startFirmwareUpdate();
        break;
    case Over:
        mServices.sheets->endSheet(outlets.firmwareSheet);
        mFirmwareStep = Offered;
        break;
    default:
        break;
    }
}

void KS7SettingsWindowController::startFirmwareUpdate()
{
    outlets.firmwareCheckingIndicator->setDoubleValue(0.0);
    outlets.firmwareCheckingIndicator->show();
    outlets.firmwareCheckingIndicator->startAnimation();
    setTexts(outlets, tr("Now updating firmware."), tr("Do not disconnect the camera."));
    outlets.firmwareCancelButton->hide();
    outlets.firmwareContinueButton->setEnabled(false);
    const int error = mSharedUSBController->startUpdate();
    if (error != 0) {
        ++mFirmwareStep;
        firmwareError(error);
        return;
    }
    if (waitForFirmwareUpdate())
        firmwareUpdateIsOver();
}

bool KS7SettingsWindowController::waitForFirmwareUpdate()
{
    // The slices hold what they need themselves: a host that quits may take the pane down meanwhile.
    const auto runLoop = mServices.runLoop;
    const QPointer<KS7SettingsWindowController> alive(this);
    while (alive && mFirmwareStep == Confirmed) {
        if (!runLoop->runFor(WaitSlice))
            return false;
    }
    return !alive.isNull();
}

void KS7SettingsWindowController::firmwareUpdateIsOver()
{
    outlets.firmwareCheckingIndicator->hide();
    outlets.firmwareCheckingIndicator->stopAnimation();
    // Also after an error: its code is in the log.
    setTexts(outlets, tr("Firmware update complete."), tr("Please disconnect the camera now."));
    outlets.firmwareContinueButton->setEnabled(true);
}

void KS7SettingsWindowController::firmwareCancel(QObject *)
{
    mServices.sheets->endSheet(outlets.firmwareSheet);
    mFirmwareStep = Offered;
}

void KS7SettingsWindowController::firmwareError(int code)
{
    outlets.firmwareContinueButton->setEnabled(true);
    outlets.firmwareCheckingIndicator->hide();
    setTexts(outlets, tr("An error occurred updating firmware."), tr("Error: %1").arg(code));
}

void KS7SettingsWindowController::firmwareUpdateProgress(const Notification &notification)
{
    // Without a total this is no number; the indicator draws whatever it is within its range.
    const double total = platform::toInt32(notification.userInfo, UserInfoKeys::Total);
    const double value = platform::toInt32(notification.userInfo, UserInfoKeys::Value);
    outlets.firmwareCheckingIndicator->setDoubleValue(value / total);
}

void KS7SettingsWindowController::firmwareUpdateEnded(const Notification &notification)
{
    const int result = platform::toInt32(notification.userInfo, UserInfoKeys::Result);
    OrvexLog(u"firmwareUpdateEnded: %d", result);
    if (result != 0)
        firmwareError(result);
    ++mFirmwareStep;
}
