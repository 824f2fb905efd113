#pragma once

#include <QSize>

#include <cstdint>

// NOLINTBEGIN(bugprone-reserved-identifier): the names are GStreamer's own
using GstCaps = struct _GstCaps;
using GstElement = struct _GstElement;
// NOLINTEND(bugprone-reserved-identifier)

namespace platform {

/// The elements of a picture's pipeline. GStreamer owns them once they are in `pipeline`.
struct PicturePipeline {
    GstElement *pipeline = nullptr;
    GstElement *converter = nullptr;
    GstElement *sink = nullptr;
    /// False when a GStreamer plug-in is missing. The caller must unref `pipeline` in both cases.
    bool isComplete = false;
};

/// Whether this is pipewiresrc 0.3, which does not report a format change of the camera.
bool keepsOldCaps();

/// Source, converter and sink, linked, for the node with the given `object.serial`, over the PipeWire
/// connection `connection`.
PicturePipeline makePicturePipeline(std::uint64_t serial, int connection);

/// Initialises GStreamer on first use and never shuts it down. The host's settings of GStreamer stay
/// unchanged.
bool initGStreamer();

/// Caps of the sink: frames in Qt's format, up to `size`, with square pixels.
GstCaps *capsOfFramesUpTo(const QSize &size);

/// Whether frames enter the element in Qt's format already.
bool takesNativeFormat(GstElement *element);

} // namespace platform
