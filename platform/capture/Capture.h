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

/// Posted on the local centre when a session that was started fails, with its code in the user info.
inline const QString QuickTimeErrorNotification = QStringLiteral("QuickTimeError");
inline const QString QuickTimeErrorCodeKey = QStringLiteral("Value");

/// Why a capture step failed, in the platform's own numbers.
struct CaptureError {
    int code = 0;
};

/// A camera of the system, open or not.
class CaptureDevice {
public:
    virtual ~CaptureDevice() = default;

    [[nodiscard]] virtual QString uniqueID() const = 0;
    [[nodiscard]] virtual QString localizedDisplayName() const = 0;
    /// False when the device cannot be had; `error` then says why, or stays empty.
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

/// Carries the pictures of its inputs to whoever shows them.
class CaptureSession {
public:
    using FrameHandler = std::function<void(const QImage &)>;
    virtual ~CaptureSession() = default;

    /// False when the input does not fit; `error` then says why, or stays empty.
    virtual bool addInput(const std::shared_ptr<CaptureDeviceInput> &input,
                          std::optional<CaptureError> &error) = 0;
    /// Without an input the session runs and delivers nothing.
    virtual void startRunning() = 0;
    virtual void stopRunning() = 0;
    [[nodiscard]] virtual bool isRunning() const = 0;
    /// Called on the main thread with the newest picture; older ones that were not shown yet are dropped.
    /// A null picture says that the one before is over: nothing of it may be shown again.
    virtual void setFrameHandler(FrameHandler handler) = 0;
    /// Larger pictures are made so small on their way that they fit, in their own shape, so that whoever
    /// shows them need not. Without this they come as the camera sends them.
    virtual void setLargestFrame(const QSize &pixels) = 0;
};

/// The capture system: devices and sessions.
class Capture {
public:
    virtual ~Capture() = default;

    /// The video input devices in the order that the system gives them.
    virtual std::vector<std::shared_ptr<CaptureDevice>> videoInputDevices() = 0;
    virtual std::shared_ptr<CaptureSession> makeSession() = 0;
};

/// Draws the newest picture of its session, as large as fits with its aspect ratio kept, on black.
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
    /// Draws the part of picture and black border that lies in `rect`.
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
