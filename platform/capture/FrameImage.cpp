#include "platform/capture/FrameImage.h"

#include <gst/video/video.h>

#include <algorithm>
#include <memory>

namespace platform {
namespace {

/// Keeps a sample and its mapped pixels alive as long as a QImage uses them.
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

MappedSample *map(GstSample *sample)
{
    GstVideoInfo info;
    GstCaps *caps = gst_sample_get_caps(sample);
    GstBuffer *buffer = gst_sample_get_buffer(sample);
    if (!caps || !buffer || !gst_video_info_from_caps(&info, caps))
        return nullptr;
    auto mapped = std::make_unique<MappedSample>();
    if (!gst_video_frame_map(&mapped->frame, &info, buffer, GST_MAP_READ))
        return nullptr;
    mapped->sample = gst_sample_ref(sample);
    return mapped.release();
}

} // namespace

QImage imageOver(GstSample *sample)
{
    MappedSample *mapped = map(sample);
    if (!mapped)
        return {};
    GstVideoFrame *frame = &mapped->frame;
    const auto *pixels = static_cast<const uchar *>(GST_VIDEO_FRAME_PLANE_DATA(frame, 0));
    QImage image(pixels, GST_VIDEO_FRAME_WIDTH(frame), GST_VIDEO_FRAME_HEIGHT(frame),
                 GST_VIDEO_FRAME_PLANE_STRIDE(frame, 0), QImage::Format_RGB32, unmap, mapped);
    if (image.isNull())
        unmap(mapped);
    return image;
}

void makeOpaque(GstBuffer *frame)
{
    GstMapInfo memory;
    if (!gst_buffer_map(frame, &memory, GST_MAP_READWRITE))
        return;
    auto *pixels = reinterpret_cast<QRgb *>(memory.data);
    std::for_each(pixels, pixels + memory.size / sizeof(QRgb), [](QRgb &pixel) { pixel |= 0xFF000000U; });
    gst_buffer_unmap(frame, &memory);
}

} // namespace platform
