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

/// One run of one camera, from start to stop: the pipeline, and the slot through which its newest frame gets
/// to the main thread.
///
/// start() and stop() may block and belong on a worker thread. The other functions are called on the main
/// thread, as are the handlers. After close() no handler is called, and a start() that waits for the camera
/// gives up.
class PictureStream : public std::enable_shared_from_this<PictureStream> {
public:
    struct Handlers {
        std::function<void(const QImage &)> frame;
        /// The stream has ended; called once at most.
        std::function<void(int code)> failure;
    };

    PictureStream(QString nodeName, std::shared_ptr<RunLoop> runLoop, Handlers handlers);
    ~PictureStream();

    void start();
    void stop();
    void close();
    /// Scales frames down that do not fit this size, with their aspect ratio kept. Applies to later frames.
    void limitTo(const QSize &pixels);
    /// Runs `work` on the main thread, unless the stream is closed before. Any thread.
    void performUnlessClosed(std::function<void()> work);
    /// Whether start() was called. Any thread.
    [[nodiscard]] bool hasBegun() const { return mBegun; }
    /// Whether a frame has arrived since the last call.
    bool takeArrived() { return mArrived.exchange(false); }
    /// Whether any frame was delivered to the handler.
    [[nodiscard]] bool hasDelivered() const { return mHasDelivered; }
    /// Whether the camera's memory has been removed, as in a format change. The stream delivers no more
    /// frames then; it may fail (pipewiresrc 1.4) or hang (0.3). A stream started during the change may hang,
    /// so start the next one only when this is true.
    [[nodiscard]] bool hasLostMemory() const { return mLostMemory; }
    [[nodiscard]] const QString &nodeName() const { return mNodeName; }
    /// The `object.serial` of the node; 0 until the node is found.
    [[nodiscard]] std::uint64_t nodeSerial() const { return mNodeSerial; }

private:
    static int onInput(GstPad *pad, GstPadProbeInfo *input, void *stream);
    static int onSample(GstAppSink *sink, void *stream);
    static int onMessage(GstBus *bus, GstMessage *message, void *stream);
    bool connect();
    bool findNode();
    bool build();
    void watchInput();
    void watch();
    void limitSink();
    bool accepts(GstBuffer *frame);
    void watchMemory(GstBuffer *frame);
    [[nodiscard]] QImage imageOf(GstSample *sample) const;
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
    bool mHasDelivered = false; // Main thread only.

    std::mutex mLock; // Guards the following members.
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
