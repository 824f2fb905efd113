#include "platform/capture/PipeWireCapture.h"

#include "platform/LogCategory.h"
#include "platform/bus/NotificationCenter.h"
#include "platform/capture/PictureStream.h"
#include "platform/capture/PipeWireNodes.h"
#include "platform/desktop/RunLoop.h"
#include "platform/capture/SerialQueue.h"

#include <algorithm>
#include <cerrno>

using namespace std::chrono_literals;

namespace platform {
namespace {

/// A look-up takes some milliseconds; PipeWire that needs longer does not answer at all.
constexpr auto LookUpPatience = 3s;
/// A camera without a new picture for so long is looked up again.
constexpr auto StallInterval = 1s;

/// A stream that starts or stops for so long must not keep the next one waiting.
constexpr auto StreamPatience = 1s;
/// What is under way at the end has so long to be over; what hangs is left to itself.
constexpr auto EndPatience = 2s;

/// The threads that wait for PipeWire, so that the main thread need not.
class Workers {
public:
    Workers() = default;
    ~Workers();
    Workers(const Workers &) = delete;
    Workers &operator=(const Workers &) = delete;

    /// Apart from the streams, because the start of a picture may wait long for its camera.
    SerialQueue &lookUps() { return mLookUps; }
    /// For the next stream: the last one's, so that one stops before the other starts, unless it hangs.
    std::shared_ptr<SerialQueue> streams();

private:
    SerialQueue mLookUps;
    std::shared_ptr<SerialQueue> mStreams = std::make_shared<SerialQueue>();
    std::vector<std::shared_ptr<SerialQueue>> mHeldUp;
};

Workers::~Workers()
{
    const auto deadline = SerialQueue::Clock::now() + EndPatience;
    mLookUps.waitUntilIdle(deadline);
    mStreams->waitUntilIdle(deadline);
    for (const auto &worker : mHeldUp)
        worker->waitUntilIdle(deadline);
}

std::shared_ptr<SerialQueue> Workers::streams()
{
    if (!mStreams->isStalled(StreamPatience))
        return mStreams;
    mHeldUp.erase(std::remove_if(mHeldUp.begin(), mHeldUp.end(),
                                 [](const auto &worker) { return worker->waitUntilIdle({}); }),
                  mHeldUp.end());
    mHeldUp.push_back(mStreams);
    mStreams = std::make_shared<SerialQueue>();
    return mStreams;
}

/// Main thread's handle on what all objects of the capture system share.
struct Context {
    std::shared_ptr<NotificationCenter> localCenter;
    std::shared_ptr<RunLoop> runLoop;
    std::shared_ptr<Workers> workers;
};

bool contains(const std::vector<PipeWireNode> &nodes, const QString &name)
{
    return std::any_of(nodes.begin(), nodes.end(),
                       [&name](const PipeWireNode &node) { return node.name == name; });
}

std::optional<std::vector<PipeWireNode>> lookUpInTime()
{
    auto nodes = lookUpPipeWireNodes(LookUpPatience);
    if (!nodes)
        qCWarning(KS7_PLATFORM, "PipeWire does not answer");
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
        mOpen = nodes && contains(*nodes, mNode.name);
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

/// Shows the picture of one device at most.
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
    void show(const QImage &picture);
    void reportFailure(int code);
    void beginStream();
    void endStream();
    void restart();
    void lookWhetherStalled();

    const Context mContext;
    std::shared_ptr<CaptureDevice> mDevice;
    std::shared_ptr<PictureStream> mStream;
    std::shared_ptr<SerialQueue> mStreamWorker;
    std::unique_ptr<Timer> mStallTimer;
    FrameHandler mFrameHandler;
    std::optional<QSize> mLargestFrame;
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
    if (!mDevice)
        return;
    beginStream();
    mStallTimer = mContext.runLoop->scheduledTimer(StallInterval, [this] { lookWhetherStalled(); });
}

void PipeWireSession::beginStream()
{
    mStream = std::make_shared<PictureStream>(
        mDevice->uniqueID(), mContext.runLoop, [this](const QImage &picture) { show(picture); },
        [this](int code) { reportFailure(code); }, [this] { restart(); });
    if (mLargestFrame)
        mStream->limitTo(*mLargestFrame);
    mStreamWorker = mContext.workers->streams();
    mStreamWorker->post([stream = mStream] { stream->start(); });
}

void PipeWireSession::stopRunning()
{
    mRunning = false;
    mStallTimer.reset();
    if (!mStream)
        return;
    endStream();
    show({});
}

void PipeWireSession::endStream()
{
    mStream->close();
    // After its own start, however long that takes.
    mStreamWorker->post([stream = std::move(mStream)] { stream->stop(); });
    mStream.reset();
}

void PipeWireSession::restart()
{
    // What was shown last stays until the next picture.
    endStream();
    beginStream();
}

void PipeWireSession::setLargestFrame(const QSize &pixels)
{
    mLargestFrame = pixels;
    if (mStream)
        mStream->limitTo(pixels);
}

void PipeWireSession::show(const QImage &picture)
{
    if (mFrameHandler)
        mFrameHandler(picture);
}

void PipeWireSession::reportFailure(int code)
{
    mContext.localCenter->postNotificationName(QuickTimeErrorNotification, this,
                                               {{QuickTimeErrorCodeKey, code}});
}

void PipeWireSession::lookWhetherStalled()
{
    // It still waits for another one, which hangs.
    if (!mStream->hasBegun() && mStreamWorker->isStalled(StreamPatience))
        restart();
    // A node that goes takes its pictures with it and says nothing; one that is slow is still there.
    if (mStream->takeArrived() || !mStream->beginLookUp())
        return;
    mContext.workers->lookUps().post([stream = mStream] {
        const auto nodes = lookUpPipeWireNodes(LookUpPatience);
        if (nodes && !contains(*nodes, stream->nodeName()))
            stream->fail(-ENODEV);
        stream->endLookUp();
    });
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
        for (const auto &node : lookUpInTime().value_or(std::vector<PipeWireNode>()))
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
