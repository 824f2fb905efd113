#include "preview/KS7PreviewController.h"

#include "agent/AgentContract.h"
#include "platform/base/RunLoop.h"
#include "platform/capture/Capture.h"
#include "preview/KS7QTCaptureView.h"

#include <algorithm>
#include <vector>

using namespace std::chrono_literals;

namespace {

/// Delay before the view is shown, so that the camera's first frame has arrived by then.
constexpr auto RevealDelay = 750ms;

/// A capture device is the camera if its unique ID is this one or PictureNode::Name. Its display name is not
/// checked, because it may be any text.
const QString LegacyCameraID =
    QStringLiteral("com.apple.QTKit.legacydevice-KS-7 Wireless Webcam-vdig-usbv-Orvx");

std::int16_t resultCode(const std::optional<platform::CaptureError> &error, std::int16_t withoutError)
{
    return error ? static_cast<std::int16_t>(error->code) : withoutError;
}

std::shared_ptr<platform::CaptureDevice> findCamera(platform::Capture &capture)
{
    const auto devices = capture.videoInputDevices();
    const auto camera = std::find_if(devices.begin(), devices.end(), [](const auto &device) {
        return KS7PreviewController::isCamera(device->uniqueID());
    });
    return camera == devices.end() ? nullptr : *camera;
}

} // namespace

KS7PreviewController::KS7PreviewController(std::shared_ptr<platform::Capture> capture,
                                           std::shared_ptr<platform::RunLoop> runLoop)
    : mCapture(std::move(capture))
    , mRunLoop(std::move(runLoop))
{
}

KS7PreviewController::~KS7PreviewController()
{
    // Cancel the delayed call of swapViewIn(), which would use the destroyed object.
    mRunLoop->cancelPreviousPerformRequests(this);
}

bool KS7PreviewController::isCamera(const QString &uniqueID)
{
    return uniqueID == LegacyCameraID || uniqueID == PictureNode::Name;
}

void KS7PreviewController::awakeFromNib()
{
    mCaptureSession.reset();
    mCaptureVideoDeviceInput.reset();
}

std::int16_t KS7PreviewController::doSeqGrab()
{
    if (!mCaptureSession) {
        if (const auto failure = setUpSession())
            return *failure;
    }
    mCaptureSession->startRunning();
    mRunLoop->performAfterDelay(this, RevealDelay, [this] { swapViewIn(); });
    return Running;
}

std::optional<std::int16_t> KS7PreviewController::setUpSession()
{
    // The pane looks for the camera once, and keeps a session that gets no camera below. Later starts run
    // that session without a camera and show a black picture. The caption then says what to do.
    mCaptureSession = mCapture->makeSession();
    const auto camera = findCamera(*mCapture);
    if (!camera)
        return NoCamera;
    std::optional<platform::CaptureError> error;
    if (!camera->open(error))
        return resultCode(error, CannotOpen);
    mCaptureVideoDeviceInput = std::make_shared<platform::CaptureDeviceInput>(camera);
    if (!mCaptureSession->addInput(mCaptureVideoDeviceInput, error)) {
        endGrab();
        return resultCode(error, CannotAdd);
    }
    qtView->setCaptureSession(mCaptureSession);
    qtView->setDelegate(this);
    return std::nullopt;
}

void KS7PreviewController::swapViewIn(void *)
{
    qtView->setVisible(true);
}

void KS7PreviewController::endGrab()
{
    mRunLoop->cancelPreviousPerformRequests(this);
    if (mCaptureSession)
        mCaptureSession->stopRunning();
    qtView->setVisible(false);
}

bool KS7PreviewController::hasCamera() const
{
    return mCaptureSession && qtView->captureSession() == mCaptureSession;
}

void KS7PreviewController::display()
{
    qtView->repaint();
}

void KS7PreviewController::stopSession()
{
    if (!mCaptureSession)
        return;
    if (mCaptureSession->isRunning())
        mCaptureSession->stopRunning();
    if (mCaptureVideoDeviceInput && mCaptureVideoDeviceInput->device()->isOpen())
        mCaptureVideoDeviceInput->device()->close();
    mCaptureSession.reset();
    mCaptureVideoDeviceInput.reset();
}
