#include "platform/capture/PictureStream.h"

#include "platform/LogCategory.h"
#include "platform/capture/PipeWireSocket.h"
#include "platform/desktop/RunLoop.h"

#include <gst/app/gstappsink.h>
#include <gst/gst.h>
#include <gst/video/video.h>

#include <algorithm>
#include <cerrno>

namespace platform {
namespace {

// What the widgets paint without converting it.
#if Q_BYTE_ORDER == Q_LITTLE_ENDIAN
#define KS7_NATIVE_FORMAT "BGRx"
#else
#define KS7_NATIVE_FORMAT "xRGB"
#endif
// No picture is larger than a screen wall.
constexpr QSize LargestPicture(8192, 8192);

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
    const int width = copy.width();
    for (int y = 0; y < copy.height(); ++y) {
        const auto *from = reinterpret_cast<const QRgb *>(picture.constScanLine(y));
        auto *to = reinterpret_cast<QRgb *>(copy.scanLine(y));
        std::transform(from, from + width, to, [](QRgb pixel) { return pixel | 0xFF000000U; });
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
    g_object_set(sink, "max-buffers", 1U, "drop", TRUE, "sync", FALSE, nullptr);
    return sink;
}

/// Converts and scales in one go. Colours are not smoothed between the pixels that share one, which nobody
/// sees and which would cost as much as all the rest; nor is there a border where the last pixel does not
/// fit.
GstElement *makeConverter()
{
    GstElement *converter = make("videoconvertscale");
    if (!converter)
        return nullptr;
    gst_util_set_object_arg(G_OBJECT(converter), "chroma-mode", "none");
    g_object_set(converter, "add-borders", FALSE, nullptr);
    return converter;
}

GstCaps *capsOfPicturesUpTo(const QSize &size)
{
    return gst_caps_new_simple("video/x-raw", "format", G_TYPE_STRING, KS7_NATIVE_FORMAT, "width",
                               GST_TYPE_INT_RANGE, 1, size.width(), "height", GST_TYPE_INT_RANGE, 1,
                               size.height(), "pixel-aspect-ratio", GST_TYPE_FRACTION, 1, 1, nullptr);
}

/// Whether pixels come in at the element as they are to go out.
bool takesNativePixels(GstElement *element)
{
    GstPad *pad = gst_element_get_static_pad(element, "sink");
    GstCaps *caps = gst_pad_get_current_caps(pad);
    gst_object_unref(pad);
    if (!caps)
        return false;
    const char *format = gst_structure_get_string(gst_caps_get_structure(caps, 0), "format");
    const bool isNative = qstrcmp(format, KS7_NATIVE_FORMAT) == 0;
    gst_caps_unref(caps);
    return isNative;
}

} // namespace

PictureStream::PictureStream(QString nodeName, std::shared_ptr<RunLoop> runLoop, PictureHandler onPicture,
                             FailureHandler onFailure, NewFormatHandler onNewFormat)
    : mNodeName(std::move(nodeName))
    , mRunLoop(std::move(runLoop))
    , mOnPicture(std::move(onPicture))
    , mOnFailure(std::move(onFailure))
    , mOnNewFormat(std::move(onNewFormat))
    , mLimit(LargestPicture)
{
}

PictureStream::~PictureStream() = default;

void PictureStream::start()
{
    mBegun = true;
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
    GstElement *const elements[] = {makeSource(mNodeName, mSocket->descriptor()), makeConverter(),
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
    GstPad *input = gst_element_get_static_pad(mConverter, "sink");
    gst_pad_add_probe(
        input, static_cast<GstPadProbeType>(GST_PAD_PROBE_TYPE_BUFFER | GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM),
        [](GstPad *pad, GstPadProbeInfo *info, void *stream) {
            return static_cast<GstPadProbeReturn>(onInput(pad, info, stream));
        },
        this, nullptr);
    gst_object_unref(input);
    GstAppSinkCallbacks callbacks = {};
    callbacks.new_sample = [](GstAppSink *sink, void *stream) {
        return static_cast<GstFlowReturn>(onSample(sink, stream));
    };
    gst_app_sink_set_callbacks(GST_APP_SINK(elements[2]), &callbacks, this, nullptr);
    {
        const std::lock_guard guard(mLock);
        mSink = elements[2];
        limitSink();
    }
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
    // A range of one number is none.
    mLimit = pixels.boundedTo(LargestPicture).expandedTo({2, 2});
    if (mSink)
        limitSink();
}

void PictureStream::limitSink()
{
    GstCaps *caps = capsOfPicturesUpTo(mLimit);
    gst_app_sink_set_caps(GST_APP_SINK(mSink), caps);
    gst_caps_unref(caps);
    // Whoever sends pictures looks at what is wanted only when told.
    GstPad *pad = gst_element_get_static_pad(mSink, "sink");
    gst_pad_push_event(pad, gst_event_new_reconfigure());
    gst_object_unref(pad);
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

int PictureStream::onInput(GstPad *, GstPadProbeInfo *input, void *stream)
{
    auto *self = static_cast<PictureStream *>(stream);
    if ((GST_PAD_PROBE_INFO_TYPE(input) & GST_PAD_PROBE_TYPE_BUFFER) != 0)
        return self->isOfTheSameFormat(GST_PAD_PROBE_INFO_BUFFER(input)) ? GST_PAD_PROBE_OK
                                                                         : GST_PAD_PROBE_DROP;
    if (GST_EVENT_TYPE(GST_PAD_PROBE_INFO_EVENT(input)) == GST_EVENT_CAPS)
        self->mPictureSize = 0;
    return GST_PAD_PROBE_OK;
}

/// PipeWire's source does not tell when a camera changes its format, and goes on with bytes that mean
/// something else. Pictures of one format are all of one size; the others are not looked at, and whoever can
/// begins anew.
bool PictureStream::isOfTheSameFormat(GstBuffer *picture)
{
    const std::size_t size = gst_buffer_get_size(picture);
    if (size > 0 && mPictureSize == 0)
        mPictureSize = size;
    if (size > 0 && size != mPictureSize)
        report([this] { mOnNewFormat(); });
    return size > 0 && size == mPictureSize;
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
    // Pixels that were not converted may be the camera's own, who waits for them and may take them away; and
    // may hold what the camera has left in the unused byte.
    return takesNativePixels(mConverter) ? opaqueCopy(image) : image;
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
    report([this, code] { mOnFailure(code); });
}

void PictureStream::report(std::function<void()> handler)
{
    mRunLoop->performOnMainThread([stream = shared_from_this(), handler = std::move(handler)] {
        bool closed = false;
        {
            const std::lock_guard guard(stream->mLock);
            closed = stream->mClosed;
        }
        if (!closed)
            handler();
    });
}

} // namespace platform
