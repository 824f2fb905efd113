#pragma once

#include <spa/param/video/raw.h>

namespace simulator {

/// Layout of one raw frame in memory, with the strides that GStreamer expects.
struct VideoFormat {
    spa_video_format id = SPA_VIDEO_FORMAT_BGRx;
    int width = 640;
    int height = 480;

    /// Bytes per line of the first plane.
    [[nodiscard]] int stride() const;
    /// Bytes per line of a chroma plane: of each of the two of I420, of the one of NV12.
    [[nodiscard]] int chromaStride() const;
    /// Bytes of the first plane.
    [[nodiscard]] int lumaSize() const;
    /// Bytes of all planes.
    [[nodiscard]] int size() const;
    [[nodiscard]] bool isPlanar() const { return id == SPA_VIDEO_FORMAT_I420 || id == SPA_VIDEO_FORMAT_NV12; }
};

} // namespace simulator
