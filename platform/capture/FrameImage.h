#pragma once

#include <QImage>

// NOLINTBEGIN(bugprone-reserved-identifier): the names are GStreamer's own
using GstSample = struct _GstSample;
// NOLINTEND(bugprone-reserved-identifier)

namespace platform {

/// The pixel format that Qt's raster engine paints without a conversion.
#if Q_BYTE_ORDER == Q_LITTLE_ENDIAN
inline constexpr auto NativeFormat = "BGRx";
#else
inline constexpr auto NativeFormat = "xRGB";
#endif

/// The frame in `sample`, which must have NativeFormat; null otherwise. The image keeps the sample's buffer
/// alive.
QImage imageOver(GstSample *sample);

/// A copy in our own memory with every pixel opaque: the camera's unused byte may have any value.
QImage opaqueCopy(const QImage &frame);

} // namespace platform
