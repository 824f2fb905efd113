#include "simulator/picture/VideoFormat.h"

namespace simulator {
namespace {

int roundedUp(int number, int multiple)
{
    return (number + multiple - 1) / multiple * multiple;
}

} // namespace

int VideoFormat::stride() const
{
    switch (id) {
    case SPA_VIDEO_FORMAT_BGRx:
        return width * 4;
    case SPA_VIDEO_FORMAT_RGB:
        return roundedUp(width * 3, 4);
    case SPA_VIDEO_FORMAT_YUY2:
        return roundedUp(width * 2, 4);
    default:
        return roundedUp(width, 4);
    }
}

int VideoFormat::chromaStride() const
{
    return id == SPA_VIDEO_FORMAT_NV12 ? stride() : roundedUp(roundedUp(width, 2) / 2, 4);
}

int VideoFormat::lumaSize() const
{
    return stride() * (isPlanar() ? roundedUp(height, 2) : height);
}

int VideoFormat::size() const
{
    const int planes = id == SPA_VIDEO_FORMAT_I420 ? 2 : 1;
    return isPlanar() ? lumaSize() + planes * chromaStride() * (roundedUp(height, 2) / 2) : lumaSize();
}

} // namespace simulator
