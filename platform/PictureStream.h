#pragma once

#include <QImage>
#include <QString>

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>

// NOLINTBEGIN(bugprone-reserved-identifier): the names are GStreamer's own
using GstAppSink = struct _GstAppSink;
using GstBus = struct _GstBus;
using GstElement = struct _GstElement;
using GstMessage = struct _GstMessage;
using GstSample = struct _GstSample;
// NOLINTEND(bugprone-reserved-identifier)

namespace platform {

class PipeWireSocket;
class RunLoop;

/// One run of one camera, from start to stop: the pipeline, and the one slot through which its newest picture
/// gets to the main thread.
///
/// start() and stop() may block and belong on a worker thread; the rest is called on the main thread, where
/// the two handlers are called too. After close() neither handler is called any more, and a start() that
/// waits for the camera gives up.
class PictureStream : public std::enable_shared_from_this<PictureStream> {
public:
    using PictureHandler = std::function<void(const QImage &)>;
    using FailureHandler = std::function<void(int code)>;

    PictureStream(QString nodeName, std::shared_ptr<RunLoop> runLoop, PictureHandler onPicture,
                  FailureHandler onFailure);
    ~PictureStream();

    void start();
    void stop();
    void close();
    /// Reports the failure of the run; the first one only. Any thread.
    void fail(int code);
    /// Whether a picture has arrived since the last call.
    bool takeArrived() { return mArrived.exchange(false); }
    /// False while a look-up that was begun has not ended. Any thread.
    bool beginLookUp() { return !mLookingUp.exchange(true); }
    void endLookUp() { mLookingUp = false; }
    [[nodiscard]] const QString &nodeName() const { return mNodeName; }

private:
    static int onSample(GstAppSink *sink, void *stream);
    static int onMessage(GstBus *bus, GstMessage *message, void *stream);
    bool connect();
    bool build();
    void watch();
    [[nodiscard]] QImage imageOf(GstSample *sample) const;
    void arrive(const QImage &picture);
    void deliver();

    const QString mNodeName;
    const std::shared_ptr<RunLoop> mRunLoop;
    const PictureHandler mOnPicture;
    const FailureHandler mOnFailure;
    GstElement *mPipeline = nullptr;
    GstElement *mConverter = nullptr;
    std::atomic<bool> mArrived = false;
    std::atomic<bool> mLookingUp = false;

    std::mutex mLock; // of what follows
    QImage mNewest;
    bool mDeliveryQueued = false;
    std::unique_ptr<PipeWireSocket> mSocket;
    bool mStarting = false;
    bool mFailed = false;
    bool mClosed = false;
};

} // namespace platform
