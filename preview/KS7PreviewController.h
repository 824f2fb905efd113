#pragma once

#include <QString>

#include <cstdint>
#include <memory>
#include <optional>

namespace platform {
class Capture;
class CaptureDeviceInput;
class CaptureSession;
class RunLoop;
}

class KS7QTCaptureView;

/// Owns the capture session of the live preview and shows its frames in `qtView`.
class KS7PreviewController {
public:
    /// Results of doSeqGrab(). Any other result is the error code of the failed step, truncated to 16 bits.
    enum Result : std::int16_t { Running = 0, NoCamera = -333, CannotOpen = -343, CannotAdd = -345 };

    /// The widget that shows the frames; hidden while no preview runs.
    KS7QTCaptureView *qtView = nullptr;

    KS7PreviewController(std::shared_ptr<platform::Capture> capture,
                         std::shared_ptr<platform::RunLoop> runLoop);
    ~KS7PreviewController();

    /// Whether a capture device with this unique ID is the camera.
    static bool isCamera(const QString &uniqueID);

    void awakeFromNib();
    /// Starts the capture and, after a delay, shows the view. The first start finds and opens the camera.
    /// Returns Running or NoCamera. For another failure it returns the capture system's error code or,
    /// without a code, CannotOpen or CannotAdd. After a failure each later start runs
    /// the session without a camera and returns Running.
    std::int16_t doSeqGrab();
    /// Shows `qtView`.
    void swapViewIn(void *ignored = nullptr);
    /// Stops the session, hides the view and cancels the delayed call that would show it. Keeps camera and
    /// session.
    void endGrab();
    /// Whether the session has a camera. It has none after a first start that failed.
    [[nodiscard]] bool hasCamera() const;
    /// Redraws the view at once.
    void display();
    /// Stops the session and closes the camera, then releases the session and the camera.
    void stopSession();

private:
    /// Makes the session and gives it the camera. Returns nothing on success, else doSeqGrab()'s result.
    /// Truncation to 16 bits may turn an error code into 0.
    std::optional<std::int16_t> setUpSession();

    std::shared_ptr<platform::CaptureSession> mCaptureSession;
    std::shared_ptr<platform::CaptureDeviceInput> mCaptureVideoDeviceInput;
    std::shared_ptr<platform::Capture> mCapture;
    std::shared_ptr<platform::RunLoop> mRunLoop;
};
