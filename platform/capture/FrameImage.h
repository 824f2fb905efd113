#pragma once

#include <QImage>

// NOLINTBEGIN(bugprone-reserved-identifier): the names are GStreamer's own
using GstBuffer = struct _GstBuffer;
using GstSample = struct _GstSample;
// NOLINTEND(bugprone-reserved-identifier)

namespace platform {

/// GStreamer's name for the pixel format of QImage::Format_RGB32, which Qt paints without a conversion.
#if Q_BYTE_ORDER == Q_LITTLE_ENDIAN
inline constexpr auto NativeFormat = "BGRx";
#else
inline constexpr auto NativeFormat = "xRGB";
#endif

/// Returns the frame in `sample` without copying it, or a null image if the sample contains no frame. The
/// frame must have NativeFormat. The image keeps the sample's buffer alive.
QImage imageOver(GstSample *sample);

/// Makes all pixels of a frame in NativeFormat opaque. Cameras may write any value into the fourth byte,
/// which Qt reads as opacity. `frame` must be writable.
void makeOpaque(GstBuffer *frame);

} // namespace platform
