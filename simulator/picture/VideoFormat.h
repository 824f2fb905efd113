#pragma once

#include <spa/param/video/raw.h>

namespace simulator {

/// The memory layout of a raw video frame, with the strides that GStreamer expects.
struct VideoFormat {
    spa_video_format id = SPA_VIDEO_FORMAT_BGRx;
    int width = 640;
    int height = 480;

    /// Returns the bytes per line of the first plane.
    [[nodiscard]] int stride() const;
    /// Returns the bytes per line of each chroma plane. I420 has two such planes, NV12 has one.
    [[nodiscard]] int chromaStride() const;
    /// Returns the bytes of the first plane.
    [[nodiscard]] int lumaSize() const;
    /// Returns the bytes of all planes.
    [[nodiscard]] int size() const;
    [[nodiscard]] bool isPlanar() const { return id == SPA_VIDEO_FORMAT_I420 || id == SPA_VIDEO_FORMAT_NV12; }
};

} // namespace simulator
