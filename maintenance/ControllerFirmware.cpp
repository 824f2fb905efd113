#include "agent/NotificationNames.h"
#include "cameras/CameraTitle.h"
#include "logging/KS7OrvexLogger.h"
#include "pane/KS7SettingsWindowController.h"
#include "platform/base/RunLoop.h"
#include "platform/base/ToInt32.h"
#include "platform/sheets/Sheets.h"
#include "widgets/Announcement.h"
#include "widgets/Indicators.h"

#include <QLabel>
#include <QPointer>
#include <QPushButton>

using namespace std::chrono_literals;

namespace {

constexpr auto WaitSlice = 10ms;

/// The values of mFirmwareStep. An unexpected end notification can push it past Over.
enum FirmwareStep { Offered = 0, Confirmed = 1, Over = 2 };

void setTexts(const Outlets &outlets, const QString &headline, const QString &secondLine)
{
    outlets.firmwareMainText->setText(headline);
    outlets.firmwareStatusText->setText(secondLine);
    // The keyboard may rest on the bar or on Continue; both carry what is said.
    const QString both = headline + QLatin1Char(' ') + secondLine;
    describe(outlets.firmwareCheckingIndicator, both);
    describe(outlets.firmwareContinueButton, both);
    announce(outlets.firmwareMainText, both);
}

} // namespace

void KS7SettingsWindowController::installFirmware(QObject *)
{
    ++mFirmwareOpening;
    if (const auto camera = selectedCam())
        outlets.firmwareCamera->setText(cameraTitle(*camera));
    setFirmwareStep(Offered);
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
        setFirmwareStep(Confirmed);
        break;
    case Confirmed:
        startFirmwareUpdate();
        break;
    case Over:
        mServices.sheets->endSheet(outlets.firmwareSheet);
        setFirmwareStep(Offered);
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
    // A disabled button cannot keep the keyboard; Qt would give it to nothing in particular.
    outlets.firmwareCheckingIndicator->setFocus(Qt::OtherFocusReason);
    outlets.firmwareContinueButton->setEnabled(false);
    const int error = mSharedUSBController->startUpdate();
    if (error != 0) {
        setFirmwareStep(mFirmwareStep + 1);
        firmwareError(error);
        return;
    }
    if (waitForFirmwareUpdate())
        firmwareUpdateIsOver();
}

bool KS7SettingsWindowController::waitForFirmwareUpdate()
{
    // Local copies: a host that quits may destroy the pane during a slice.
    const auto runLoop = mServices.runLoop;
    const QPointer<KS7SettingsWindowController> alive(this);
    const auto opening = mFirmwareOpening;
    while (alive && mFirmwareStep == Confirmed && mFirmwareOpening == opening) {
        // Without a sheet there is no progress to show, so the wait sleeps until the step changes.
        const bool goesOn =
            outlets.firmwareSheet->isVisible() ? runLoop->runFor(WaitSlice) : runLoop->runUntilWoken();
        if (!goesOn)
            return false;
    }
    // Another opening of the sheet makes this wait outdated: the texts now belong to the new update.
    return alive && mFirmwareOpening == opening;
}

void KS7SettingsWindowController::setFirmwareStep(std::int32_t step)
{
    mFirmwareStep = step;
    mServices.runLoop->wake();
}

void KS7SettingsWindowController::firmwareUpdateIsOver()
{
    outlets.firmwareCheckingIndicator->hide();
    outlets.firmwareCheckingIndicator->stopAnimation();
    // Replaces an error text too; the error code is in the log.
    setTexts(outlets, tr("Firmware update complete."), tr("Please disconnect the camera now."));
    outlets.firmwareContinueButton->setEnabled(true);
}

void KS7SettingsWindowController::firmwareCancel(QObject *)
{
    mServices.sheets->endSheet(outlets.firmwareSheet);
    setFirmwareStep(Offered);
}

void KS7SettingsWindowController::firmwareError(int code)
{
    outlets.firmwareContinueButton->setEnabled(true);
    outlets.firmwareCheckingIndicator->hide();
    setTexts(outlets, tr("An error occurred updating firmware."), tr("Error: %1").arg(code));
}

void KS7SettingsWindowController::firmwareUpdateProgress(const Notification &notification)
{
    // Without a total the quotient is NaN or infinite; the indicator clamps it to its range.
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
    setFirmwareStep(mFirmwareStep + 1);
}
