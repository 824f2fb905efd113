#pragma once

#include "platform/capture/Capture.h"
#include "tests/fakes/Journal.h"

#include <memory>
#include <optional>
#include <vector>

/// A capture device whose open() succeeds only while `opens` is true.
class FakeCaptureDevice final : public platform::CaptureDevice {
public:
    FakeCaptureDevice(Journal journal, QString uniqueID, QString name = {});
    [[nodiscard]] QString uniqueID() const override { return mUniqueID; }
    [[nodiscard]] QString localizedDisplayName() const override { return mName; }
    bool open(std::optional<platform::CaptureError> &error) override;
    void close() override;
    [[nodiscard]] bool isOpen() const override { return mOpen; }

    bool opens = true;
    std::optional<platform::CaptureError> openError;

private:
    Journal mJournal;
    QString mUniqueID;
    QString mName;
    bool mOpen = false;
};

/// A capture session that delivers a frame only when the test calls deliverFrame().
class FakeCaptureSession final : public platform::CaptureSession {
public:
    explicit FakeCaptureSession(Journal journal)
        : mJournal(std::move(journal))
    {
    }
    bool addInput(const std::shared_ptr<platform::CaptureDeviceInput> &input,
                  std::optional<platform::CaptureError> &error) override;
    void startRunning() override;
    void stopRunning() override;
    [[nodiscard]] bool isRunning() const override { return mRunning; }
    void setFrameHandler(FrameHandler handler) override { mFrameHandler = std::move(handler); }
    void setLargestFrame(const QSize &pixels) override { largestFrame = pixels; }
    void deliverFrame(const QImage &frame);

    bool accepts = true;
    std::optional<platform::CaptureError> addError;
    std::shared_ptr<platform::CaptureDeviceInput> input;
    QSize largestFrame;

private:
    Journal mJournal;
    bool mRunning = false;
    FrameHandler mFrameHandler;
};

/// Contains the fake cameras and all sessions created so far.
class FakeCapture final : public platform::Capture {
public:
    explicit FakeCapture(Journal journal)
        : mJournal(std::move(journal))
    {
    }
    std::vector<std::shared_ptr<platform::CaptureDevice>> videoInputDevices() override;
    std::shared_ptr<platform::CaptureSession> makeSession() override;
    std::shared_ptr<FakeCaptureDevice> addDevice(const QString &uniqueID, const QString &name = {});

    std::vector<std::shared_ptr<FakeCaptureDevice>> devices;
    std::vector<std::shared_ptr<FakeCaptureSession>> sessions;
    /// New sessions copy these values into their fields `accepts` and `addError`.
    bool sessionsAccept = true;
    std::optional<platform::CaptureError> addError;

private:
    Journal mJournal;
};
