#pragma once

#include <QImage>
#include <QString>

#include <atomic>
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

/// One run of one camera, from start to stop: the pipeline, and the one slot through which its newest picture
/// gets to the main thread.
///
/// start() and stop() may block and belong on a worker thread; the rest is called on the main thread, where
/// the handlers are called too. After close() none of them is called any more, and a start() that
/// waits for the camera gives up.
class PictureStream : public std::enable_shared_from_this<PictureStream> {
public:
    using PictureHandler = std::function<void(const QImage &)>;
    using FailureHandler = std::function<void(int code)>;
    using NewFormatHandler = std::function<void()>;

    PictureStream(QString nodeName, std::shared_ptr<RunLoop> runLoop, PictureHandler onPicture,
                  FailureHandler onFailure, NewFormatHandler onNewFormat);
    ~PictureStream();

    void start();
    void stop();
    void close();
    /// From now on larger pictures are made so small that they fit, in their own shape.
    void limitTo(const QSize &pixels);
    /// Reports the failure of the run; the first one only. Any thread.
    void fail(int code);
    /// Whether start() was called. Any thread.
    [[nodiscard]] bool hasBegun() const { return mBegun; }
    /// Whether a picture has arrived since the last call.
    bool takeArrived() { return mArrived.exchange(false); }
    /// False while a look-up that was begun has not ended. Any thread.
    bool beginLookUp() { return !mLookingUp.exchange(true); }
    void endLookUp() { mLookingUp = false; }
    [[nodiscard]] const QString &nodeName() const { return mNodeName; }

private:
    static int onInput(GstPad *pad, GstPadProbeInfo *input, void *stream);
    static int onSample(GstAppSink *sink, void *stream);
    static int onMessage(GstBus *bus, GstMessage *message, void *stream);
    bool connect();
    bool build();
    void watch();
    void limitSink();
    bool isOfTheSameFormat(GstBuffer *picture);
    [[nodiscard]] QImage imageOf(GstSample *sample) const;
    void arrive(const QImage &picture);
    void deliver();
    /// On the main thread, unless closed by then.
    void report(std::function<void()> handler);

    const QString mNodeName;
    const std::shared_ptr<RunLoop> mRunLoop;
    const PictureHandler mOnPicture;
    const FailureHandler mOnFailure;
    const NewFormatHandler mOnNewFormat;
    GstElement *mPipeline = nullptr;
    GstElement *mConverter = nullptr;
    std::size_t mPictureSize = 0; // in bytes, of the streaming thread alone
    std::atomic<bool> mBegun = false;
    std::atomic<bool> mArrived = false;
    std::atomic<bool> mLookingUp = false;

    std::mutex mLock; // of what follows
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
