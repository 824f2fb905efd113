#include "platform/PictureStream.h"

#include "platform/LogCategory.h"
#include "platform/PipeWireSocket.h"
#include "platform/RunLoop.h"

#include <gst/app/gstappsink.h>
#include <gst/base/gstbasetransform.h>
#include <gst/gst.h>
#include <gst/video/video.h>

#include <cerrno>

namespace platform {
namespace {

// What the widgets paint without converting it. No picture is larger than a screen wall.
#if Q_BYTE_ORDER == Q_LITTLE_ENDIAN
#define KS7_NATIVE_FORMAT "BGRx"
#else
#define KS7_NATIVE_FORMAT "xRGB"
#endif
constexpr auto PictureCaps =
    "video/x-raw, format=" KS7_NATIVE_FORMAT ", width=[1,8192], height=[1,8192], pixel-aspect-ratio=1/1";

/// A sample and the mapping of its pixels, for as long as an image shows them.
struct MappedSample {
    GstSample *sample;
    GstVideoFrame frame;
};

void unmap(void *data)
{
    auto *mapped = static_cast<MappedSample *>(data);
    gst_video_frame_unmap(&mapped->frame);
    gst_sample_unref(mapped->sample);
    delete mapped;
}

/// The pixels of the sample, not copied.
QImage imageOver(GstSample *sample)
{
    GstVideoInfo info;
    GstCaps *caps = gst_sample_get_caps(sample);
    GstBuffer *buffer = gst_sample_get_buffer(sample);
    if (!caps || !buffer || !gst_video_info_from_caps(&info, caps))
        return {};
    auto mapped = std::make_unique<MappedSample>();
    if (!gst_video_frame_map(&mapped->frame, &info, buffer, GST_MAP_READ))
        return {};
    mapped->sample = gst_sample_ref(sample);
    auto *data = mapped.release();
    const auto *pixels = static_cast<const uchar *>(GST_VIDEO_FRAME_PLANE_DATA(&data->frame, 0));
    QImage image(pixels, GST_VIDEO_FRAME_WIDTH(&data->frame), GST_VIDEO_FRAME_HEIGHT(&data->frame),
                 GST_VIDEO_FRAME_PLANE_STRIDE(&data->frame, 0), QImage::Format_RGB32, unmap, data);
    if (image.isNull())
        unmap(data);
    return image;
}

/// A copy with every pixel opaque: a camera may leave anything in the unused byte.
QImage opaqueCopy(const QImage &picture)
{
    QImage copy(picture.size(), QImage::Format_RGB32);
    for (int y = 0; y < copy.height(); ++y) {
        const auto *from = reinterpret_cast<const QRgb *>(picture.constScanLine(y));
        auto *to = reinterpret_cast<QRgb *>(copy.scanLine(y));
        for (int x = 0; x < copy.width(); ++x)
            to[x] = from[x] | 0xFF000000U;
    }
    return copy;
}

/// Once, on first use, and never undone. Nothing of the host's is handed over or changed.
bool initGStreamer()
{
    GError *error = nullptr;
    if (gst_init_check(nullptr, nullptr, &error))
        return true;
    qCWarning(KS7_PLATFORM, "GStreamer: %s", error ? error->message : "cannot be initialised");
    g_clear_error(&error);
    return false;
}

int codeOf(GstMessage *message)
{
    if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_EOS)
        return -EPIPE;
    GError *error = nullptr;
    gst_message_parse_error(message, &error, nullptr);
    qCInfo(KS7_PLATFORM, "capture: %s", error->message);
    const int code = error->code;
    g_error_free(error);
    return code;
}

GstElement *make(const char *factory)
{
    return gst_element_factory_make(factory, nullptr);
}

/// The source of one node and of no other: when the node goes, the picture must not become another camera's.
GstElement *makeSource(const QString &nodeName, int connection)
{
    GstElement *source = make("pipewiresrc");
    if (!source)
        return nullptr;
    GstStructure *properties =
        gst_structure_new("properties", "node.dont-reconnect", G_TYPE_STRING, "true", nullptr);
    g_object_set(source, "fd", connection, "target-object", nodeName.toUtf8().constData(),
                 "stream-properties", properties, nullptr);
    gst_structure_free(properties);
    return source;
}

/// Keeps the newest picture only, and shows it when it comes, not when a clock says so.
GstElement *makeSink()
{
    GstElement *sink = make("appsink");
    if (!sink)
        return nullptr;
    GstCaps *caps = gst_caps_from_string(PictureCaps);
    g_object_set(sink, "max-buffers", 1U, "drop", TRUE, "sync", FALSE, "caps", caps, nullptr);
    gst_caps_unref(caps);
    return sink;
}

} // namespace

PictureStream::PictureStream(QString nodeName, std::shared_ptr<RunLoop> runLoop, PictureHandler onPicture,
                             FailureHandler onFailure)
    : mNodeName(std::move(nodeName))
    , mRunLoop(std::move(runLoop))
    , mOnPicture(std::move(onPicture))
    , mOnFailure(std::move(onFailure))
{
}

PictureStream::~PictureStream() = default;

void PictureStream::start()
{
    if (!connect())
        return;
    if (!build()) {
        fail(GST_CORE_ERROR_MISSING_PLUGIN);
        return;
    }
    watch();
    // Waits for the camera. A refusal comes as a message too, with its code.
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

bool PictureStream::build()
{
    GstElement *const elements[] = {makeSource(mNodeName, mSocket->descriptor()), make("videoconvertscale"),
                                    makeSink()};
    mPipeline = gst_pipeline_new(nullptr);
    bool complete = true;
    for (GstElement *element : elements) {
        if (element)
            gst_bin_add(GST_BIN(mPipeline), element);
        complete = complete && element;
    }
    if (!complete)
        return false;
    mConverter = elements[1];
    GstAppSinkCallbacks callbacks = {};
    callbacks.new_sample = [](GstAppSink *sink, void *stream) {
        return static_cast<GstFlowReturn>(onSample(sink, stream));
    };
    gst_app_sink_set_callbacks(GST_APP_SINK(elements[2]), &callbacks, this, nullptr);
    return gst_element_link_many(elements[0], elements[1], elements[2], nullptr);
}

void PictureStream::watch()
{
    // The host's main loop need not be GLib's, so messages are looked at where they arise.
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
    // After this no streaming thread is left, and so nobody who could call back.
    gst_element_set_state(mPipeline, GST_STATE_NULL);
    gst_object_unref(mPipeline);
    mPipeline = nullptr;
}

void PictureStream::close()
{
    const std::lock_guard guard(mLock);
    mClosed = true;
    mNewest = {};
    // The source waits up to half a minute for a camera that does not come, unless its connection ends.
    if (mStarting)
        mSocket->cut();
}

int PictureStream::onSample(GstAppSink *sink, void *stream)
{
    GstSample *sample = gst_app_sink_pull_sample(sink);
    if (!sample)
        return GST_FLOW_OK;
    auto *self = static_cast<PictureStream *>(stream);
    self->arrive(self->imageOf(sample));
    gst_sample_unref(sample);
    return GST_FLOW_OK;
}

int PictureStream::onMessage(GstBus *, GstMessage *message, void *stream)
{
    const auto type = GST_MESSAGE_TYPE(message);
    if (type == GST_MESSAGE_ERROR || type == GST_MESSAGE_EOS)
        static_cast<PictureStream *>(stream)->fail(codeOf(message));
    gst_message_unref(message);
    return GST_BUS_DROP;
}

QImage PictureStream::imageOf(GstSample *sample) const
{
    const QImage image = imageOver(sample);
    // Pixels that no conversion has copied are the camera's: it waits for them, and may take them away.
    const bool untouched = gst_base_transform_is_passthrough(GST_BASE_TRANSFORM(mConverter));
    return untouched ? opaqueCopy(image) : image;
}

void PictureStream::arrive(const QImage &picture)
{
    mArrived = true;
    const std::lock_guard guard(mLock);
    if (mClosed || picture.isNull())
        return;
    mNewest = picture;
    if (mDeliveryQueued)
        return;
    mDeliveryQueued = true;
    mRunLoop->performOnMainThread([stream = shared_from_this()] { stream->deliver(); });
}

void PictureStream::deliver()
{
    QImage picture;
    {
        const std::lock_guard guard(mLock);
        picture.swap(mNewest);
        mDeliveryQueued = false;
    }
    if (!picture.isNull())
        mOnPicture(picture);
}

void PictureStream::fail(int code)
{
    const std::lock_guard guard(mLock);
    if (mClosed || mFailed)
        return;
    mFailed = true;
    mRunLoop->performOnMainThread([stream = shared_from_this(), code] {
        bool closed = false;
        {
            const std::lock_guard guard(stream->mLock);
            closed = stream->mClosed;
        }
        if (!closed)
            stream->mOnFailure(code);
    });
}

} // namespace platform
