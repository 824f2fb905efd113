#pragma once

#include <QImage>
#include <QString>
#include <QWidget>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace platform {

class NotificationCenter;
class RunLoop;

/// Posted on the local notification center when a running session fails. The user info has the error code.
inline const QString QuickTimeErrorNotification = QStringLiteral("QuickTimeError");
inline const QString QuickTimeErrorCodeKey = QStringLiteral("Value");

/// The error code of a failed capture step: a negative errno or a code of GStreamer.
struct CaptureError {
    int code = 0;
};

/// A camera of the system, which may be open or closed.
class CaptureDevice {
public:
    virtual ~CaptureDevice() = default;

    [[nodiscard]] virtual QString uniqueID() const = 0;
    [[nodiscard]] virtual QString localizedDisplayName() const = 0;
    /// Returns false when the device cannot be opened; `error` then holds the code or stays empty.
    virtual bool open(std::optional<CaptureError> &error) = 0;
    virtual void close() = 0;
    [[nodiscard]] virtual bool isOpen() const = 0;
};

/// An open device as an input of a session.
class CaptureDeviceInput {
public:
    explicit CaptureDeviceInput(std::shared_ptr<CaptureDevice> device)
        : mDevice(std::move(device))
    {
    }
    [[nodiscard]] const std::shared_ptr<CaptureDevice> &device() const { return mDevice; }

private:
    std::shared_ptr<CaptureDevice> mDevice;
};

/// Takes frames from its input and passes them to the frame handler.
class CaptureSession {
public:
    using FrameHandler = std::function<void(const QImage &)>;
    virtual ~CaptureSession() = default;

    /// Returns false when the input is refused; `error` then holds the code or stays empty.
    virtual bool addInput(const std::shared_ptr<CaptureDeviceInput> &input,
                          std::optional<CaptureError> &error) = 0;
    /// Starts the session. A session without an input runs, but delivers no frame.
    virtual void startRunning() = 0;
    virtual void stopRunning() = 0;
    [[nodiscard]] virtual bool isRunning() const = 0;
    /// Sets the function that receives the newest frame on the main thread; older undelivered frames are
    /// dropped. A null frame means that the previous frame must not be shown any more.
    virtual void setFrameHandler(FrameHandler handler) = 0;
    /// Scales frames that are larger than `pixels` down before they reach the frame handler, with their
    /// aspect ratio kept. Without this call, frames keep the camera's size.
    virtual void setLargestFrame(const QSize &pixels) = 0;
};

/// The capture system: it lists the cameras and makes sessions.
class Capture {
public:
    virtual ~Capture() = default;

    /// The video input devices in the system's order.
    virtual std::vector<std::shared_ptr<CaptureDevice>> videoInputDevices() = 0;
    virtual std::shared_ptr<CaptureSession> makeSession() = 0;
};

/// A widget that shows the newest frame of its session on black. The frame is scaled to fit, with its aspect
/// ratio kept.
class CaptureView : public QWidget {
    Q_OBJECT
public:
    explicit CaptureView(QWidget *parent = nullptr);
    ~CaptureView() override;

    void setCaptureSession(const std::shared_ptr<CaptureSession> &session);
    [[nodiscard]] const std::shared_ptr<CaptureSession> &captureSession() const { return mSession; }
    void setDelegate(const void *delegate) { mDelegate = delegate; }
    [[nodiscard]] const void *delegate() const { return mDelegate; }
    [[nodiscard]] QSize sizeHint() const override;

protected:
    /// Draws the frame and its black border, clipped to `rect`.
    virtual void drawRect(const QRect &rect);
    void paintEvent(QPaintEvent *event) override;

private:
    void showFrame(const QImage &frame);
    void askForFittingFrames();
    [[nodiscard]] QSize pixels() const;
    [[nodiscard]] QRectF pictureRect() const;

    std::shared_ptr<CaptureSession> mSession;
    const void *mDelegate = nullptr;
    QImage mFrame;
    QSize mAskedFor;
};

} // namespace platform
