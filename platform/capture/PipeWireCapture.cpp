#include "platform/capture/PipeWireCapture.h"

#include "platform/base/LogCategory.h"
#include "platform/base/RunLoop.h"
#include "platform/bus/NotificationCenter.h"
#include "platform/capture/PictureStream.h"
#include "platform/capture/PipeWireNodes.h"
#include "platform/capture/SerialQueue.h"

#include <algorithm>
#include <cerrno>

using namespace std::chrono_literals;

namespace platform {
namespace {

/// Time without a frame after which the camera is looked up in PipeWire again.
constexpr auto StallInterval = 1s;
/// Number of restarts without a frame after which the camera counts as broken.
constexpr int MostRestarts = 5;

/// Time for a stream to start or stop. A slower stream keeps its thread, and the next gets a new one.
constexpr auto StreamTimeout = 1s;
/// Longest wait for unfinished work when the process ends. A thread that hangs for longer is abandoned.
constexpr auto EndTimeout = 2s;

/// Worker threads for stream operations that may block: start, stop and the look-ups of a running stream.
/// Listing and opening devices does not use them: it blocks the main thread, for LookUpTimeout at most.
class Workers {
public:
    Workers() = default;
    ~Workers();
    Workers(const Workers &) = delete;
    Workers &operator=(const Workers &) = delete;

    /// The queue for look-ups. Streams have another queue, because their start may wait long for a camera.
    SerialQueue &lookUps() { return mLookUps; }
    /// Returns the queue for the next stream. Normally this is the last stream's queue, so that the last
    /// stream stops before the next one starts. If a stream has been stuck for over StreamTimeout, it keeps
    /// its queue and the next stream gets a new one.
    std::shared_ptr<SerialQueue> streams();

private:
    SerialQueue mLookUps;
    std::shared_ptr<SerialQueue> mStreams = std::make_shared<SerialQueue>();
    std::vector<std::shared_ptr<SerialQueue>> mStalled;
};

Workers::~Workers()
{
    const auto deadline = SerialQueue::Clock::now() + EndTimeout;
    mLookUps.waitUntilIdle(deadline);
    mStreams->waitUntilIdle(deadline);
    for (const auto &worker : mStalled)
        worker->waitUntilIdle(deadline);
}

std::shared_ptr<SerialQueue> Workers::streams()
{
    if (!mStreams->isStalled(StreamTimeout))
        return mStreams;
    mStalled.erase(std::remove_if(mStalled.begin(), mStalled.end(),
                                  [](const auto &worker) { return worker->waitUntilIdle({}); }),
                   mStalled.end());
    mStalled.push_back(mStreams);
    mStreams = std::make_shared<SerialQueue>();
    return mStreams;
}

/// The services that all objects of the capture system share. Main thread only.
struct Context {
    std::shared_ptr<NotificationCenter> localCenter;
    std::shared_ptr<RunLoop> runLoop;
    std::shared_ptr<Workers> workers;
};

std::optional<PipeWireNodes> lookUpInTime()
{
    auto nodes = lookUpPipeWireNodes(LookUpTimeout);
    if (!nodes)
        qCWarning(PLATFORM_LOG, "PipeWire does not reply");
    return nodes;
}

class PipeWireDevice final : public CaptureDevice {
public:
    PipeWireDevice(PipeWireNode node, Context context)
        : mNode(std::move(node))
        , mContext(std::move(context))
    {
    }
    [[nodiscard]] QString uniqueID() const override { return mNode.name; }
    [[nodiscard]] QString localizedDisplayName() const override { return mNode.description; }
    bool open(std::optional<CaptureError> &error) override
    {
        const auto nodes = lookUpInTime();
        mOpen = nodes && nodeNamed(*nodes, mNode.name);
        if (!mOpen)
            error = CaptureError{nodes ? -ENODEV : -ETIMEDOUT};
        return mOpen;
    }
    void close() override { mOpen = false; }
    [[nodiscard]] bool isOpen() const override { return mOpen; }

private:
    const PipeWireNode mNode;
    const Context mContext;
    bool mOpen = false;
};

/// A session that has one camera at most.
class PipeWireSession final : public CaptureSession {
public:
    explicit PipeWireSession(Context context)
        : mContext(std::move(context))
    {
    }
    ~PipeWireSession() override { stopRunning(); }
    bool addInput(const std::shared_ptr<CaptureDeviceInput> &input,
                  std::optional<CaptureError> &error) override;
    void startRunning() override;
    void stopRunning() override;
    [[nodiscard]] bool isRunning() const override { return mRunning; }
    void setFrameHandler(FrameHandler handler) override { mFrameHandler = std::move(handler); }
    void setLargestFrame(const QSize &pixels) override;

private:
    void show(const QImage &frame);
    void frameArrived(const QImage &frame);
    void streamFailed(int code);
    void reportFailure(int code);
    void beginStream();
    void endStream();
    void checkForStall();
    void lookUpNode(int code);
    void nodesFound(const std::optional<PipeWireNodes> &nodes, int code);

    const Context mContext;
    std::shared_ptr<CaptureDevice> mDevice;
    std::shared_ptr<PictureStream> mStream;
    std::shared_ptr<SerialQueue> mStreamWorker;
    std::unique_ptr<Timer> mStallTimer;
    FrameHandler mFrameHandler;
    std::optional<QSize> mLargestFrame;
    int mRestarts = 0; // Number of restarts since the last frame.
    bool mLookingUp = false;
    bool mRunning = false;
};

bool PipeWireSession::addInput(const std::shared_ptr<CaptureDeviceInput> &input,
                               std::optional<CaptureError> &error)
{
    const auto device = input ? std::dynamic_pointer_cast<PipeWireDevice>(input->device()) : nullptr;
    if (mDevice)
        error = CaptureError{-EBUSY};
    else if (!device || !device->isOpen())
        error = CaptureError{-EINVAL};
    else
        mDevice = device;
    return !error && mDevice == device;
}

void PipeWireSession::startRunning()
{
    if (mRunning)
        return;
    mRunning = true;
    mRestarts = 0;
    if (!mDevice)
        return;
    beginStream();
    mStallTimer = mContext.runLoop->scheduledTimer(StallInterval, [this] { checkForStall(); });
}

void PipeWireSession::beginStream()
{
    mLookingUp = false;
    mStream = std::make_shared<PictureStream>(
        mDevice->uniqueID(), mContext.runLoop,
        PictureStream::Handlers{[this](const QImage &frame) { frameArrived(frame); },
                                [this](int code) { streamFailed(code); }});
    if (mLargestFrame)
        mStream->limitTo(*mLargestFrame);
    mStreamWorker = mContext.workers->streams();
    mStreamWorker->post([stream = mStream] { stream->start(); });
}

void PipeWireSession::stopRunning()
{
    mRunning = false;
    mStallTimer.reset();
    if (mStream)
        endStream();
    if (mDevice)
        show({});
}

void PipeWireSession::endStream()
{
    mStream->close();
    // stop() runs after start() has returned, because the queue runs one function after another.
    mStreamWorker->post([stream = std::move(mStream)] { stream->stop(); });
    mStream.reset();
}

void PipeWireSession::setLargestFrame(const QSize &pixels)
{
    mLargestFrame = pixels;
    if (mStream)
        mStream->limitTo(pixels);
}

void PipeWireSession::show(const QImage &frame)
{
    if (mFrameHandler)
        mFrameHandler(frame);
}

void PipeWireSession::frameArrived(const QImage &frame)
{
    mRestarts = 0;
    show(frame);
}

void PipeWireSession::streamFailed(int code)
{
    // When a camera changes its format, pipewiresrc 1.4 ends the present stream and also a stream that is
    // started during the change. So look the camera up before reporting a failure.
    if (mStream->hasDelivered() || mRestarts > 0)
        lookUpNode(code);
    else
        reportFailure(code);
}

void PipeWireSession::reportFailure(int code)
{
    // Stop the timer and close the stream, so that each start reports one failure at most.
    mStallTimer.reset();
    mStream->close();
    mContext.localCenter->postNotificationName(QuickTimeErrorNotification, this,
                                               {{QuickTimeErrorCodeKey, code}});
}

void PipeWireSession::checkForStall()
{
    if (!mStream) {
        beginStream();
        return;
    }
    // If this stream's start is queued behind a stream that hangs, use a new stream in a new queue.
    if (!mStream->hasBegun() && mStreamWorker->isStalled(StreamTimeout)) {
        endStream();
        beginStream();
    }
    // If no frame has arrived, look the camera's node up in PipeWire. The camera may only be slow, but the
    // node may also have been removed, and no message reports that.
    if ((!mStream->takeArrived() || mStream->hasLostMemory()) && !mLookingUp)
        lookUpNode(0);
}

/// Looks the camera's node up and passes the result to nodesFound(). `code` is the stream's error, or 0 if
/// the stream has only stopped sending frames.
void PipeWireSession::lookUpNode(int code)
{
    mLookingUp = true;
    mContext.workers->lookUps().post([this, stream = mStream, code] {
        stream->performUnlessClosed(
            [this, nodes = lookUpPipeWireNodes(LookUpTimeout), code] { nodesFound(nodes, code); });
    });
}

void PipeWireSession::nodesFound(const std::optional<PipeWireNodes> &nodes, int code)
{
    mLookingUp = false;
    const bool exists = nodes && nodeNamed(*nodes, mStream->nodeName());
    // A node that was removed and has returned keeps its name but has a new serial. It sends nothing to the
    // old stream, so a new stream is needed.
    const auto serial = mStream->nodeSerial();
    const bool isAnother = exists && serial != 0 && !hasNode(*nodes, serial);
    const bool isOver = code != 0 || isAnother || mStream->hasLostMemory();
    if (exists && isOver && mRestarts++ < MostRestarts)
        // Keep the last frame on screen. The next checkForStall() starts a new stream. Starting it now,
        // during the camera's format change, would make it hang for ever in PipeWire 1.4.
        endStream();
    else if (code != 0)
        reportFailure(code);
    else if (nodes && !exists)
        reportFailure(-ENODEV);
    else if (exists && isOver)
        reportFailure(-EPIPE);
}

class PipeWireCapture final : public Capture {
public:
    explicit PipeWireCapture(Context context)
        : mContext(std::move(context))
    {
    }
    std::vector<std::shared_ptr<CaptureDevice>> videoInputDevices() override
    {
        std::vector<std::shared_ptr<CaptureDevice>> devices;
        for (const auto &node : lookUpInTime().value_or(PipeWireNodes()))
            devices.push_back(std::make_shared<PipeWireDevice>(node, mContext));
        return devices;
    }
    std::shared_ptr<CaptureSession> makeSession() override
    {
        return std::make_shared<PipeWireSession>(mContext);
    }

private:
    const Context mContext;
};

} // namespace

std::shared_ptr<Capture> makePipeWireCapture(std::shared_ptr<NotificationCenter> localCenter,
                                             std::shared_ptr<RunLoop> runLoop)
{
    return std::make_shared<PipeWireCapture>(
        Context{std::move(localCenter), std::move(runLoop), std::make_shared<Workers>()});
}

} // namespace platform
