#include "platform/capture/PictureStream.h"

#include "platform/base/LogCategory.h"
#include "platform/base/RunLoop.h"
#include "platform/capture/FrameImage.h"
#include "platform/capture/PicturePipeline.h"
#include "platform/capture/PipeWireNodes.h"
#include "platform/capture/PipeWireSocket.h"
#include "platform/capture/StreamThreads.h"

#include <gst/app/gstappsink.h>
#include <gst/gst.h>
#include <pipewire/pipewire.h>

#include <cerrno>

namespace platform {
namespace {

/// The largest frame size until limitTo() sets a smaller one. It is larger than any screen.
constexpr QSize LargestFrame(8192, 8192);

int codeOf(GstMessage *message)
{
    if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_EOS)
        return -EPIPE;
    GError *error = nullptr;
    gst_message_parse_error(message, &error, nullptr);
    qCInfo(PLATFORM_LOG, "capture: %s", error->message);
    const int code = error->code;
    g_error_free(error);
    return code;
}

/// Returns the camera's shared memory that holds the frame; nullptr if the frame has memory of its own.
GstMiniObject *cameraMemoryOf(GstBuffer *frame)
{
    GstMemory *memory = gst_buffer_n_memory(frame) > 0 ? gst_buffer_peek_memory(frame, 0) : nullptr;
    return memory && memory->parent ? GST_MINI_OBJECT_CAST(memory->parent) : nullptr;
}

/// Takes ownership of `frame`. Returns it, or a copy if the camera may still write into its memory.
GstBuffer *ownFrame(GstBuffer *frame)
{
    if (!cameraMemoryOf(frame))
        return gst_buffer_make_writable(frame);
    GstBuffer *copy = gst_buffer_copy_deep(frame);
    gst_buffer_unref(frame);
    return copy;
}

} // namespace

PictureStream::PictureStream(QString nodeName, std::shared_ptr<RunLoop> runLoop, Handlers handlers)
    : mNodeName(std::move(nodeName))
    , mRunLoop(std::move(runLoop))
    , mHandlers(std::move(handlers))
    , mLimit(LargestFrame)
{
}

PictureStream::~PictureStream() = default;

void PictureStream::start()
{
    mBegun = true;
    if (!connect() || !findNode())
        return;
    if (!build()) {
        fail(GST_CORE_ERROR_MISSING_PLUGIN);
        return;
    }
    watch();
    // This call blocks until the camera sends a frame. Failures arrive as messages on the pipeline's bus.
    gst_element_set_state(mPipeline, GST_STATE_PLAYING);
    const std::lock_guard guard(mLock);
    mStarting = false;
}

bool PictureStream::connect()
{
    if (!initGStreamer()) {
        fail(GST_CORE_ERROR_FAILED);
        return false;
    }
    auto socket = std::make_unique<PipeWireSocket>();
    if (!socket->isOpen()) {
        fail(-ECONNREFUSED);
        return false;
    }
    const std::lock_guard guard(mLock);
    mSocket = std::move(socket);
    mStarting = !mClosed;
    return mStarting;
}

bool PictureStream::findNode()
{
    const auto nodes = lookUpPipeWireNodes(LookUpTimeout);
    const PipeWireNode *node = nodes ? nodeNamed(*nodes, mNodeName) : nullptr;
    if (node)
        mNodeSerial = node->serial;
    else
        fail(nodes ? -ENODEV : -ETIMEDOUT);
    return node;
}

bool PictureStream::build()
{
    const PicturePipeline made = makePicturePipeline(mNodeSerial, mSocket->descriptor());
    mPipeline = made.pipeline;
    if (!made.isComplete)
        return false;
    mConverter = made.converter;
    watchInput();
    watchOutput();
    GstAppSinkCallbacks callbacks = {};
    callbacks.new_sample = [](GstAppSink *sink, void *stream) {
        return static_cast<GstFlowReturn>(onSample(sink, stream));
    };
    gst_app_sink_set_callbacks(GST_APP_SINK(made.sink), &callbacks, this, nullptr);
    const std::lock_guard guard(mLock);
    mSink = made.sink;
    limitSink();
    return true;
}

void PictureStream::watchInput()
{
    GstPad *input = gst_element_get_static_pad(mConverter, "sink");
    gst_pad_add_probe(
        input, static_cast<GstPadProbeType>(GST_PAD_PROBE_TYPE_BUFFER | GST_PAD_PROBE_TYPE_EVENT_UPSTREAM),
        [](GstPad *pad, GstPadProbeInfo *info, void *stream) {
            return static_cast<GstPadProbeReturn>(onInput(pad, info, stream));
        },
        this, nullptr);
    gst_object_unref(input);
}

void PictureStream::watchOutput()
{
    GstPad *output = gst_element_get_static_pad(mConverter, "src");
    gst_pad_add_probe(
        output, GST_PAD_PROBE_TYPE_BUFFER,
        [](GstPad *, GstPadProbeInfo *info, void *converter) {
            if (takesNativeFormat(static_cast<GstElement *>(converter))) {
                GstBuffer *frame = ownFrame(GST_PAD_PROBE_INFO_BUFFER(info));
                makeOpaque(frame);
                info->data = frame;
            }
            return GST_PAD_PROBE_OK;
        },
        mConverter, nullptr);
    gst_object_unref(output);
}

void PictureStream::watch()
{
    // Handle messages in the thread that posts them, because the host may have no GLib event loop.
    GstBus *bus = gst_element_get_bus(mPipeline);
    gst_bus_set_sync_handler(
        bus,
        [](GstBus *source, GstMessage *message, void *stream) {
            return static_cast<GstBusSyncReply>(onMessage(source, message, stream));
        },
        this, nullptr);
    gst_object_unref(bus);
}

void PictureStream::stop()
{
    if (!mPipeline)
        return;
    // The change to GST_STATE_NULL joins the streaming threads, so no callback runs afterwards.
    gst_element_set_state(mPipeline, GST_STATE_NULL);
    {
        const std::lock_guard guard(mLock);
        mSink = nullptr;
    }
    gst_object_unref(mPipeline);
    mPipeline = nullptr;
}

void PictureStream::limitTo(const QSize &pixels)
{
    const std::lock_guard guard(mLock);
    // Each side is at least 2 pixels, because GStreamer rejects the integer range from 1 to 1.
    mLimit = pixels.boundedTo(LargestFrame).expandedTo({2, 2});
    if (mSink)
        limitSink();
}

void PictureStream::limitSink()
{
    GstCaps *caps = capsOfFramesUpTo(mLimit);
    gst_app_sink_set_caps(GST_APP_SINK(mSink), caps);
    gst_caps_unref(caps);
    // Send a RECONFIGURE event, because the converter negotiates its caps again only after one.
    GstPad *pad = gst_element_get_static_pad(mSink, "sink");
    gst_pad_push_event(pad, gst_event_new_reconfigure());
    gst_object_unref(pad);
}

void PictureStream::close()
{
    const std::lock_guard guard(mLock);
    mClosed = true;
    mNewest = {};
    // Shut the connection down. Otherwise pipewiresrc waits up to half a minute for a missing camera.
    if (mStarting)
        mSocket->shutdown();
}

int PictureStream::onInput(GstPad *, GstPadProbeInfo *input, void *stream)
{
    auto *self = static_cast<PictureStream *>(stream);
    if ((GST_PAD_PROBE_INFO_TYPE(input) & GST_PAD_PROBE_TYPE_BUFFER) != 0)
        return self->accepts(GST_PAD_PROBE_INFO_BUFFER(input)) ? GST_PAD_PROBE_OK : GST_PAD_PROBE_DROP;
    // Drop RECONFIGURE events at the converter, because pipewiresrc would connect to the camera again. A new
    // frame size concerns the converter only.
    const bool isReconfigure = GST_EVENT_TYPE(GST_PAD_PROBE_INFO_EVENT(input)) == GST_EVENT_RECONFIGURE;
    return isReconfigure ? GST_PAD_PROBE_DROP : GST_PAD_PROBE_OK;
}

bool PictureStream::accepts(GstBuffer *frame)
{
    if (keepsOldCaps())
        watchMemory(frame);
    return !mLostMemory && gst_buffer_get_size(frame) > 0;
}

/// Sets mLostMemory when PipeWire removes the frame's memory, as it does when the camera changes its format.
/// pipewiresrc 0.3 does not report such a change: it keeps its old caps and delivers bytes of the new format.
void PictureStream::watchMemory(GstBuffer *frame)
{
    static const GQuark key = g_quark_from_static_string("picture-stream");
    GstMiniObject *memory = cameraMemoryOf(frame);
    if (!memory || gst_mini_object_get_qdata(memory, key))
        return;
    gst_mini_object_set_qdata(memory, key, new std::weak_ptr<PictureStream>(weak_from_this()),
                              [](void *data) {
                                  const std::unique_ptr<std::weak_ptr<PictureStream>> stream(
                                      static_cast<std::weak_ptr<PictureStream> *>(data));
                                  if (const auto watching = stream->lock())
                                      watching->mLostMemory = true;
                              });
}

int PictureStream::onSample(GstAppSink *sink, void *stream)
{
    GstSample *sample = gst_app_sink_pull_sample(sink);
    if (!sample)
        return GST_FLOW_OK;
    auto *self = static_cast<PictureStream *>(stream);
    self->arrive(imageOver(sample));
    gst_sample_unref(sample);
    return GST_FLOW_OK;
}

int PictureStream::onMessage(GstBus *, GstMessage *message, void *stream)
{
    const auto type = GST_MESSAGE_TYPE(message);
    if (type == GST_MESSAGE_ERROR || type == GST_MESSAGE_EOS)
        static_cast<PictureStream *>(stream)->fail(codeOf(message));
    else
        endThreadWithStream(message);
    gst_message_unref(message);
    return GST_BUS_DROP;
}

void PictureStream::arrive(const QImage &frame)
{
    mArrived = true;
    const std::lock_guard guard(mLock);
    if (mClosed || frame.isNull())
        return;
    mNewest = frame;
    if (mDeliveryQueued)
        return;
    mDeliveryQueued = true;
    mRunLoop->performOnMainThread([stream = shared_from_this()] { stream->deliver(); });
}

void PictureStream::deliver()
{
    QImage frame;
    {
        const std::lock_guard guard(mLock);
        frame.swap(mNewest);
        mDeliveryQueued = false;
    }
    if (frame.isNull())
        return;
    mHasDelivered = true;
    mHandlers.frame(frame);
}

void PictureStream::fail(int code)
{
    const std::lock_guard guard(mLock);
    if (mClosed || mFailed)
        return;
    mFailed = true;
    performUnlessClosed([this, code] { mHandlers.failure(code); });
}

void PictureStream::performUnlessClosed(std::function<void()> work)
{
    mRunLoop->performOnMainThread([stream = shared_from_this(), work = std::move(work)] {
        bool closed = false;
        {
            const std::lock_guard guard(stream->mLock);
            closed = stream->mClosed;
        }
        if (!closed)
            work();
    });
}

} // namespace platform
