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

/// Owns the capture session of the live preview and shows it in its view.
class KS7PreviewController {
public:
    /// What doSeqGrab() answers; any other value is the code of the step that failed, cut to 16 bits.
    enum Result : std::int16_t { Running = 0, NoCamera = -333, CannotOpen = -343, CannotAdd = -345 };

    /// Where the picture is drawn; hidden while no preview runs.
    KS7QTCaptureView *qtView = nullptr;

    KS7PreviewController(std::shared_ptr<platform::Capture> capture,
                         std::shared_ptr<platform::RunLoop> runLoop);
    ~KS7PreviewController();

    /// Whether a capture device of this name is the camera's picture.
    static bool isCamera(const QString &uniqueID);

    void awakeFromNib();
    /// Starts the capture and schedules the reveal of the view; the first start finds and opens the camera.
    /// Running, or why not: NoCamera, CannotOpen and CannotAdd (the last two when nobody said why) or a
    /// code of the capture system. After a failure the next start runs without a camera.
    std::int16_t doSeqGrab();
    /// Shows the view.
    void swapViewIn(void *ignored = nullptr);
    /// Forgets a pending reveal, stops the session and hides the view. Camera and session are kept.
    void endGrab();
    /// Whether the session has a camera. It has none after a first start that failed.
    [[nodiscard]] bool hasCamera() const;
    /// Redraws the view at once.
    void display();
    /// Stops the session and lets go of it and of the camera.
    void stopSession();

private:
    /// The result of the step that failed, which may be 0 once it is cut to 16 bits; nothing when none did.
    std::optional<std::int16_t> setUpSession();

    std::shared_ptr<platform::CaptureSession> mCaptureSession;
    std::shared_ptr<platform::CaptureDeviceInput> mCaptureVideoDeviceInput;
    std::shared_ptr<platform::Capture> mCapture;
    std::shared_ptr<platform::RunLoop> mRunLoop;
};
