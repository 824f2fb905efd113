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
    /// False when a plug-in is missing; `pipeline` then still has to be unreferenced.
    bool isComplete = false;
};

/// Whether this is pipewiresrc 0.3, which does not fail when the camera changes its format.
bool keepsOldCaps();

/// Source, converter and sink, linked, for the node with the given `object.serial`, over the PipeWire
/// connection `connection`.
PicturePipeline makePicturePipeline(std::uint64_t serial, int connection);

/// Initialises GStreamer on first use; it is never shut down. Nothing of the host's is handed over or
/// changed.
bool initGStreamer();

/// What the sink accepts: frames of Qt's format up to `size`, with square pixels.
GstCaps *capsOfFramesUpTo(const QSize &size);

/// Whether the frames that enter the element have Qt's format already.
bool takesNativeFormat(GstElement *element);

} // namespace platform
