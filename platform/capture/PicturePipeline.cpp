#include "platform/capture/PicturePipeline.h"

#include "platform/base/LogCategory.h"
#include "platform/capture/FrameImage.h"

#include <gst/gst.h>
#include <pipewire/pipewire.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>

namespace platform {
namespace {

GstElement *make(const char *factory)
{
    return gst_element_factory_make(factory, nullptr);
}

/// Makes the source element. pipewiresrc asks PipeWire not to replace a lost camera by another one. PipeWire
/// 1.4 may unmap the camera's memory while the converter reads it, so pipewiresrc copies each frame first.
GstElement *makeSource(std::uint64_t serial, int connection)
{
    GstElement *source = make("pipewiresrc");
    if (source)
        g_object_set(source, "fd", connection, "target-object", std::to_string(serial).c_str(), "always-copy",
                     keepsOldCaps() ? FALSE : TRUE, nullptr);
    return source;
}

/// Makes a filter that sets a pixel aspect ratio of 1/1 if the camera names none. Otherwise pipewiresrc 1.4
/// would choose the smallest ratio that the converter accepts, 1/2147483647, and the negotiation would fail.
GstElement *makePixelShape()
{
    GstElement *filter = make("capsfilter");
    GstCaps *caps = gst_caps_from_string("video/x-raw, pixel-aspect-ratio=(fraction)1/1; video/x-raw");
    if (filter)
        g_object_set(filter, "caps", caps, nullptr);
    gst_caps_unref(caps);
    return filter;
}

/// Makes one element that converts and scales. Chroma interpolation is off, because it doubles the cost
/// without a visible gain. Borders are off, because rounding to whole pixels could add a black line.
GstElement *makeConverter()
{
    GstElement *converter = make("videoconvertscale");
    if (!converter)
        return nullptr;
    gst_util_set_object_arg(G_OBJECT(converter), "chroma-mode", "none");
    g_object_set(converter, "add-borders", FALSE, nullptr);
    return converter;
}

/// Makes a sink that keeps only the newest frame and delivers it on arrival, not at its time stamp. "async"
/// is off, because it would make a thread of GLib's pool wait for the first frame and then stay for 15 s.
GstElement *makeSink()
{
    GstElement *sink = make("appsink");
    if (sink)
        g_object_set(sink, "max-buffers", 1U, "drop", TRUE, "sync", FALSE, "async", FALSE, nullptr);
    return sink;
}

} // namespace

bool keepsOldCaps()
{
    static const bool keeps = std::string_view(pw_get_library_version()).substr(0, 2) == "0.";
    return keeps;
}

PicturePipeline makePicturePipeline(std::uint64_t serial, int connection)
{
    GstElement *const chain[] = {makeSource(serial, connection), makePixelShape(), makeConverter(),
                                 makeSink()};
    PicturePipeline made{gst_pipeline_new(nullptr), chain[2], chain[3], false};
    made.isComplete = std::all_of(std::begin(chain), std::end(chain), [](GstElement *each) { return each; });
    for (GstElement *element : chain) {
        if (element)
            gst_bin_add(GST_BIN(made.pipeline), element);
    }
    if (made.isComplete)
        made.isComplete = gst_element_link_many(chain[0], chain[1], chain[2], chain[3], nullptr);
    return made;
}

bool initGStreamer()
{
    GError *error = nullptr;
    if (gst_init_check(nullptr, nullptr, &error))
        return true;
    qCWarning(PLATFORM_LOG, "GStreamer: %s", error ? error->message : "cannot be initialised");
    g_clear_error(&error);
    return false;
}

GstCaps *capsOfFramesUpTo(const QSize &size)
{
    return gst_caps_new_simple("video/x-raw", "format", G_TYPE_STRING, NativeFormat, "width",
                               GST_TYPE_INT_RANGE, 1, size.width(), "height", GST_TYPE_INT_RANGE, 1,
                               size.height(), "pixel-aspect-ratio", GST_TYPE_FRACTION, 1, 1, nullptr);
}

bool takesNativeFormat(GstElement *element)
{
    GstPad *pad = gst_element_get_static_pad(element, "sink");
    GstCaps *caps = gst_pad_get_current_caps(pad);
    gst_object_unref(pad);
    if (!caps)
        return false;
    const char *format = gst_structure_get_string(gst_caps_get_structure(caps, 0), "format");
    const bool isNative = qstrcmp(format, NativeFormat) == 0;
    gst_caps_unref(caps);
    return isNative;
}

} // namespace platform
