#include "logging/KS7OrvexLogger.h"
#include "pane/KS7SettingsWindowController.h"
#include "platform/base/RunLoop.h"
#include "platform/base/ToInt32.h"
#include "platform/capture/Capture.h"
#include "platform/sheets/Sheets.h"
#include "preview/KS7PreviewController.h"
#include "widgets/Indicators.h"

#include <QPushButton>

using namespace std::chrono_literals;

namespace {

constexpr auto LevelsInterval = 100ms;
/// The meters show the agent's level times this factor, so that normal speech is clearly visible.
constexpr float LevelGain = 1.5F;

} // namespace

void KS7SettingsWindowController::startVideo(QObject *)
{
    OrvexLog(u"startVideo:");
    if (mStreaming) {
        stopPreviewing();
        return;
    }
    if (const std::int16_t result = outlets.previewView->doSeqGrab();
        result != KS7PreviewController::Running) {
        qtError(result);
        return;
    }
    outlets.startButton->setText(tr("Stop &Preview"));
    mStreaming = true;
    mLevelsTimer =
        mServices.runLoop->scheduledTimer(LevelsInterval, [this] { setLevels(mLevelsTimer.get()); });
    showWords();
}

void KS7SettingsWindowController::stopPreviewing()
{
    outlets.startButton->setText(tr("Start &Preview"));
    mStreaming = false;
    mLevelsTimer.reset();
    outlets.levelIndicator_r->setDoubleValue(0.0);
    outlets.levelIndicator_l->setDoubleValue(0.0);
    outlets.previewView->endGrab();
    outlets.previewView->display();
    showWords();
}

void KS7SettingsWindowController::setLevels(platform::Timer *)
{
    float left = 0.0F;
    float right = 0.0F;
    mSharedDeviceController->getAudioLevel_l(&left, &right);
    outlets.levelIndicator_l->setDoubleValue(LevelGain * left);
    outlets.levelIndicator_r->setDoubleValue(LevelGain * right);
}

void KS7SettingsWindowController::qtError(std::int32_t code)
{
    beginAlert({tr("Couldn't Start Preview"), tr("OK"),
                tr("QuickTime had an error starting the camera preview.\nError: %1").arg(code)});
}

void KS7SettingsWindowController::quickTimeErrored(const Notification &notification)
{
    const std::int32_t code = platform::toInt32(notification.userInfo, platform::QuickTimeErrorCodeKey);
    stopPreviewing();
    cameraStatusChanged();
    qtError(code);
}
