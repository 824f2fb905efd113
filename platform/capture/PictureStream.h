#pragma once

#include <QImage>
#include <QString>

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>

// NOLINTBEGIN(bugprone-reserved-identifier): the names are GStreamer's own
using GstAppSink = struct _GstAppSink;
using GstBuffer = struct _GstBuffer;
using GstBus = struct _GstBus;
using GstElement = struct _GstElement;
using GstMessage = struct _GstMessage;
using GstPad = struct _GstPad;
using GstPadProbeInfo = struct _GstPadProbeInfo;
using GstSample = struct _GstSample;
// NOLINTEND(bugprone-reserved-identifier)

namespace platform {

class PipeWireSocket;
class RunLoop;

/// One stream from one camera, from its start to its stop. It owns the pipeline and passes the newest frame
/// to the main thread.
///
/// start() and stop() may block, so call them on a worker thread. Call all other functions on the main
/// thread, which also calls the handlers. After close() no handler is called, and a start() that waits for
/// the camera gives up.
class PictureStream : public std::enable_shared_from_this<PictureStream> {
public:
    struct Handlers {
        std::function<void(const QImage &)> frame;
        /// Called once at most, when the stream has failed or the camera has ended it.
        std::function<void(int code)> failure;
    };

    PictureStream(QString nodeName, std::shared_ptr<RunLoop> runLoop, Handlers handlers);
    ~PictureStream();

    void start();
    void stop();
    void close();
    /// Scales later frames down if they are larger than `pixels`, with their aspect ratio kept.
    void limitTo(const QSize &pixels);
    /// Queues `work` for the main thread; a closed stream drops it. Any thread may call this.
    void performUnlessClosed(std::function<void()> work);
    /// Whether start() has begun. Any thread may call this.
    [[nodiscard]] bool hasBegun() const { return mBegun; }
    /// Whether a frame has arrived since the last call of takeArrived().
    bool takeArrived() { return mArrived.exchange(false); }
    /// Whether any frame was delivered to the handler.
    [[nodiscard]] bool hasDelivered() const { return mHasDelivered; }
    /// Whether PipeWire has removed the camera's memory, as it does when the camera changes its format. The
    /// stream then delivers no more frames and may hang. A new stream must start after the removal: one that
    /// starts before it may hang, too. With pipewiresrc 1.4 the result is always false.
    [[nodiscard]] bool hasLostMemory() const { return mLostMemory; }
    [[nodiscard]] const QString &nodeName() const { return mNodeName; }
    /// The `object.serial` of the camera's node in PipeWire; 0 until the node has been found.
    [[nodiscard]] std::uint64_t nodeSerial() const { return mNodeSerial; }

private:
    static int onInput(GstPad *pad, GstPadProbeInfo *input, void *stream);
    static int onSample(GstAppSink *sink, void *stream);
    static int onMessage(GstBus *bus, GstMessage *message, void *stream);
    bool connect();
    bool findNode();
    bool build();
    void watchInput();
    void watchOutput();
    void watch();
    void limitSink();
    bool accepts(GstBuffer *frame);
    void watchMemory(GstBuffer *frame);
    void arrive(const QImage &frame);
    void deliver();
    void fail(int code);

    const QString mNodeName;
    const std::shared_ptr<RunLoop> mRunLoop;
    const Handlers mHandlers;
    GstElement *mPipeline = nullptr;
    GstElement *mConverter = nullptr;
    std::atomic<std::uint64_t> mNodeSerial = 0;
    std::atomic<bool> mBegun = false;
    std::atomic<bool> mArrived = false;
    std::atomic<bool> mLostMemory = false;
    bool mHasDelivered = false; // Only the main thread uses this flag, so it needs no lock.

    std::mutex mLock; // mLock guards all members below.
    QImage mNewest;
    QSize mLimit;
    GstElement *mSink = nullptr;
    bool mDeliveryQueued = false;
    std::unique_ptr<PipeWireSocket> mSocket;
    bool mStarting = false;
    bool mFailed = false;
    bool mClosed = false;
};

} // namespace platform
