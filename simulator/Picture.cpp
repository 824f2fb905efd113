#include "simulator/Picture.h"

#include <cstdio>

namespace simulator {

namespace {

/// Without the caption where the plug-in that writes text is missing. The sink's own memory is not drawn
/// into, since it goes with a watcher who leaves while somebody still draws.
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
               "! identity drop-allocation=true ! pipewiresink name=sink mode=provide")
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

bool Picture::build()
{
    gst_init(nullptr, nullptr);
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
