#include "agent/NotificationNames.h"
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

/// The values of mFirmwareStep. An unexpected end notification can increment it to a value above Over.
enum FirmwareStep { Offered = 0, Confirmed = 1, Over = 2 };

QString inOneLine(const QString &headline, const QString &secondLine)
{
    return headline + QLatin1Char(' ') + secondLine;
}

void setTexts(const Outlets &outlets, const QString &headline, const QString &secondLine)
{
    outlets.firmwareMainText->setText(headline);
    outlets.firmwareStatusText->setText(secondLine);
    // A screen reader reads the description of the focused control. The bar or the Continue button may have
    // the focus, so set the description of both.
    const QString both = inOneLine(headline, secondLine);
    describe(outlets.firmwareCheckingIndicator, both);
    describe(outlets.firmwareContinueButton, both);
}

/// Announces the texts if the sheet is visible. The agent reports the end of an update in any case.
void announceTexts(const Outlets &outlets)
{
    if (!outlets.firmwareSheet->isVisible())
        return;
    announce(outlets.firmwareMainText,
             inOneLine(outlets.firmwareMainText->text(), outlets.firmwareStatusText->text()));
}

/// Announces the texts, unless a screen reader reads them as the description of the Continue button. It does
/// so when the button gets the focus, or when the description changes while the button has the focus.
void announceUnlessRead(const Outlets &outlets, bool hadFocus)
{
    const auto *button = outlets.firmwareContinueButton;
    if (!(hadFocus ? isDescriptionRead(button) : button->hasFocus()))
        announceTexts(outlets);
}

/// Shows the progress bar and moves the focus to it, because the button with the focus is disabled here.
/// `texts` become the bar's description before that: a screen reader then says them once.
void moveToBar(const Outlets &outlets, const QString &texts)
{
    auto *bar = outlets.firmwareCheckingIndicator;
    describe(bar, texts);
    bar->setDoubleValue(0.0);
    bar->show();
    bar->startAnimation();
    bar->setFocus(Qt::OtherFocusReason);
}

} // namespace

void KS7SettingsWindowController::installFirmware(QObject *)
{
    ++mFirmwareOpening;
    nameSelectedCam(outlets.firmwareSheet, outlets.firmwareCamera);
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
        announceUnlessRead(outlets, outlets.firmwareContinueButton->hasFocus());
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
    const QString headline = tr("Now updating firmware.");
    const QString secondLine = tr("Do not disconnect the camera.");
    moveToBar(outlets, inOneLine(headline, secondLine));
    setTexts(outlets, headline, secondLine);
    outlets.firmwareCancelButton->hide();
    outlets.firmwareContinueButton->setEnabled(false);
    if (!outlets.firmwareCheckingIndicator->hasFocus())
        announceTexts(outlets);
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
    // Use local copies, because a host that quits may destroy the controller while the event loop runs.
    const auto runLoop = mServices.runLoop;
    const QPointer<KS7SettingsWindowController> alive(this);
    const auto opening = mFirmwareOpening;
    while (alive && mFirmwareStep == Confirmed && mFirmwareOpening == opening) {
        // If the sheet is hidden, there is no progress to show, so sleep until the step changes.
        const bool goesOn =
            outlets.firmwareSheet->isVisible() ? runLoop->runFor(WaitSlice) : runLoop->runUntilWoken();
        if (!goesOn)
            return false;
    }
    // If the sheet was opened again meanwhile, its texts belong to the new update. The caller must not change
    // them.
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
    // This function also runs after an update that ended with an error. The text then replaces the error
    // text; the error code remains in the log.
    setTexts(outlets, tr("Firmware update complete."), tr("Please disconnect the camera now."));
    const bool hadFocus = outlets.firmwareContinueButton->hasFocus();
    outlets.firmwareContinueButton->setEnabled(true);
    announceUnlessRead(outlets, hadFocus);
}

void KS7SettingsWindowController::firmwareCancel(QObject *)
{
    mServices.sheets->endSheet(outlets.firmwareSheet);
    setFirmwareStep(Offered);
}

void KS7SettingsWindowController::firmwareError(int code)
{
    const QString headline = tr("An error occurred updating firmware.");
    const QString secondLine = tr("Error: %1").arg(code);
    const bool hadFocus = outlets.firmwareContinueButton->hasFocus();
    // Describe the button before it gets the focus. A screen reader then says the texts once.
    describe(outlets.firmwareContinueButton, inOneLine(headline, secondLine));
    outlets.firmwareContinueButton->setEnabled(true);
    outlets.firmwareCheckingIndicator->hide();
    setTexts(outlets, headline, secondLine);
    announceUnlessRead(outlets, hadFocus);
}

void KS7SettingsWindowController::firmwareUpdateProgress(const Notification &notification)
{
    // If the notification has no "Total", `total` is 0 and the quotient is NaN or infinite. setDoubleValue()
    // limits every value to the range of the indicator.
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
