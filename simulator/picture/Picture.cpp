#include "simulator/picture/Picture.h"

#include <cstdio>

namespace simulator {

namespace {

constexpr int BytesPerPixel = 4;

/// Without the caption where the plug-in that writes text is missing.
QString pipelineText(const PictureSettings &settings, bool hasText)
{
    const auto size = QStringLiteral("video/x-raw,width=%1,height=%2,framerate=%3/1")
                          .arg(settings.width)
                          .arg(settings.height)
                          .arg(settings.framerate);
    const auto text = hasText
        ? QStringLiteral("! textoverlay name=caption valignment=top font-desc=\"Sans Bold 24\" ")
        : QString();
    return QStringLiteral(
               "videotestsrc name=source pattern=ball background-color=0xff2a6099 is-live=true ! %1 %2"
               "! videoconvert ! video/x-raw,format=BGRx "
               "! pipewiresink name=sink mode=provide")
        .arg(size, text);
}

bool hasElement(const char *name)
{
    GstElementFactory *factory = gst_element_factory_find(name);
    if (!factory)
        return false;
    gst_object_unref(factory);
    return true;
}

/// The element's name inside the pipeline; null when it is not in there. To be unreferenced.
GstElement *part(GstElement *pipeline, const char *name)
{
    return gst_bin_get_by_name(GST_BIN(pipeline), name);
}

/// The sink's memory goes with a watcher who leaves, so nobody upstream may draw into it: its pool is taken
/// out of its answer, and pictures are copied into it. A pool that is not set up before the first watcher
/// comes hands out buffers without memory.
GstPadProbeReturn keepPool(GstPad * /*pad*/, GstPadProbeInfo *info, void *pictureSize)
{
    GstQuery *query = gst_pad_probe_info_get_query(info);
    if (GST_QUERY_TYPE(query) != GST_QUERY_ALLOCATION || gst_query_get_n_allocation_pools(query) == 0)
        return GST_PAD_PROBE_OK;
    GstCaps *caps = nullptr;
    GstBufferPool *pool = nullptr;
    guint least = 0;
    guint most = 0;
    gst_query_parse_allocation(query, &caps, nullptr);
    gst_query_parse_nth_allocation_pool(query, 0, &pool, nullptr, &least, &most);
    gst_query_remove_nth_allocation_pool(query, 0);
    if (!pool)
        return GST_PAD_PROBE_OK;
    if (!gst_buffer_pool_is_active(pool)) {
        GstStructure *config = gst_buffer_pool_get_config(pool);
        gst_buffer_pool_config_set_params(config, caps, GPOINTER_TO_UINT(pictureSize), least, most);
        gst_buffer_pool_set_config(pool, config);
        gst_buffer_pool_set_active(pool, TRUE);
    }
    gst_object_unref(pool);
    return GST_PAD_PROBE_OK;
}

} // namespace

Picture::Picture(const PictureSettings &settings)
    : mSettings(settings)
{
}

Picture::~Picture()
{
    stop();
}

bool Picture::start(const QString &caption)
{
    if (!mPipeline && !build())
        return false;
    setCaption(caption);
    if (gst_element_set_state(mPipeline, GST_STATE_PLAYING) != GST_STATE_CHANGE_FAILURE)
        return true;
    fail(QStringLiteral("PipeWire does not answer"));
    return false;
}

void Picture::prepare()
{
    gst_init(nullptr, nullptr);
}

bool Picture::build()
{
    prepare();
    GError *error = nullptr;
    const QByteArray text = pipelineText(mSettings, hasElement("textoverlay")).toUtf8();
    mPipeline = gst_parse_launch_full(text.constData(), nullptr, GST_PARSE_FLAG_FATAL_ERRORS, &error);
    if (!mPipeline) {
        fail(QString::fromUtf8(error->message));
        g_error_free(error);
        return false;
    }
    GstElement *sink = part(mPipeline, "sink");
    publishAs(sink);
    copyInto(sink);
    gst_object_unref(sink);
    GstBus *bus = gst_element_get_bus(mPipeline);
    gst_bus_set_sync_handler(bus, &Picture::watch, this, nullptr);
    gst_object_unref(bus);
    return true;
}

void Picture::publishAs(GstElement *sink) const
{
    GstStructure *properties =
        gst_structure_new("props", "media.class", G_TYPE_STRING, "Video/Source", "node.name", G_TYPE_STRING,
                          mSettings.nodeName.toUtf8().constData(), "node.description", G_TYPE_STRING,
                          mSettings.nodeDescription.toUtf8().constData(), nullptr);
    g_object_set(sink, "stream-properties", properties, nullptr);
    gst_structure_free(properties);
}

void Picture::copyInto(GstElement *sink) const
{
    const auto size = static_cast<guint>(mSettings.width * mSettings.height * BytesPerPixel);
    GstPad *pad = gst_element_get_static_pad(sink, "sink");
    // Called once the sink has answered.
    const auto answered =
        static_cast<GstPadProbeType>(GST_PAD_PROBE_TYPE_QUERY_DOWNSTREAM | GST_PAD_PROBE_TYPE_PULL);
    gst_pad_add_probe(pad, answered, keepPool, GUINT_TO_POINTER(size), nullptr);
    gst_object_unref(pad);
}

void Picture::setCaption(const QString &caption)
{
    GstElement *overlay = part(mPipeline, "caption");
    if (!overlay)
        return;
    g_object_set(overlay, "text", caption.toUtf8().constData(), nullptr);
    gst_object_unref(overlay);
}

GstBusSyncReply Picture::watch(GstBus * /*bus*/, GstMessage *message, void *picture)
{
    // Called on a thread of the pipeline's own.
    if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_ERROR) {
        GError *error = nullptr;
        gst_message_parse_error(message, &error, nullptr);
        const QString why = QString::fromUtf8(error->message);
        g_error_free(error);
        auto *self = static_cast<Picture *>(picture);
        QMetaObject::invokeMethod(
            self, [self, why] { self->fail(why); }, Qt::QueuedConnection);
    }
    gst_message_unref(message);
    return GST_BUS_DROP;
}

void Picture::fail(const QString &why)
{
    if (!std::exchange(mHasComplained, true))
        std::fprintf(stderr, "ks7-agent-simulator: no picture: %s\n", qUtf8Printable(why));
    stop();
    Q_EMIT failed();
}

void Picture::stop()
{
    if (!mPipeline)
        return;
    gst_element_set_state(mPipeline, GST_STATE_NULL);
    gst_object_unref(mPipeline);
    mPipeline = nullptr;
}

} // namespace simulator
