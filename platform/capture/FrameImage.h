#pragma once

#include <QImage>

// NOLINTBEGIN(bugprone-reserved-identifier): the names are GStreamer's own
using GstSample = struct _GstSample;
// NOLINTEND(bugprone-reserved-identifier)

namespace platform {

/// Byte order of the pixels that Qt's raster engine paints without a conversion.
#if Q_BYTE_ORDER == Q_LITTLE_ENDIAN
inline constexpr auto NativeFormat = "BGRx";
#else
inline constexpr auto NativeFormat = "xRGB";
#endif

/// The frame in `sample`, whose format has to be NativeFormat; null for anything else. The image keeps the
/// sample's buffer as long as it lives.
QImage imageOver(GstSample *sample);

/// A copy in memory of our own with every pixel opaque: a camera may leave anything in the unused byte.
QImage opaqueCopy(const QImage &frame);

} // namespace platform
