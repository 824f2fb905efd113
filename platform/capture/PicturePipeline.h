#pragma once

#include <QSize>

#include <cstdint>

// NOLINTBEGIN(bugprone-reserved-identifier): the names are GStreamer's own
using GstCaps = struct _GstCaps;
using GstElement = struct _GstElement;
// NOLINTEND(bugprone-reserved-identifier)

namespace platform {

/// A GStreamer pipeline for the picture of one camera. `pipeline` owns the elements that it contains.
struct PicturePipeline {
    GstElement *pipeline = nullptr;
    GstElement *converter = nullptr;
    GstElement *sink = nullptr;
    /// False if a GStreamer plug-in is missing. The caller must unref `pipeline` also in that case.
    bool isComplete = false;
};

/// Whether PipeWire has a version 0.x. Its pipewiresrc keeps its old caps when the camera changes its format.
bool keepsOldCaps();

/// Makes a pipeline of source, converter and sink for the node with this `object.serial`. `connection` is the
/// descriptor of a connection to PipeWire.
PicturePipeline makePicturePipeline(std::uint64_t serial, int connection);

/// Initialises GStreamer on first use; returns false on failure. GStreamer is never shut down, because the
/// host may use it.
bool initGStreamer();

/// The caps for the sink: frames in NativeFormat, up to `size`, with square pixels.
GstCaps *capsOfFramesUpTo(const QSize &size);

/// Whether the frames at the element's sink pad have NativeFormat, so that they are not converted.
bool takesNativeFormat(GstElement *element);

} // namespace platform
