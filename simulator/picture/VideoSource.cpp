#include "simulator/picture/VideoSource.h"

#include <spa/param/video/format-utils.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <utility>

namespace simulator {
namespace {

constexpr long SecondInNanoseconds = 1'000'000'000;
// PW_STREAM_FLAG_DRIVER lets the timer of this node decide when a frame is due.
constexpr auto StreamFlags = static_cast<pw_stream_flags>(PW_STREAM_FLAG_DRIVER | PW_STREAM_FLAG_MAP_BUFFERS);
constexpr std::size_t PodMemory = 1024;

std::int64_t monotonicTime()
{
    timespec time = {};
    ::clock_gettime(CLOCK_MONOTONIC, &time);
    return std::int64_t(time.tv_sec) * SecondInNanoseconds + time.tv_nsec;
}

/// Builds the format parameter by hand: spa_format_video_raw_build() crashes with an aspect ratio in PipeWire
/// 0.3.65.
const spa_pod *formatParam(spa_pod_builder &builder, const VideoFormat &format,
                           const VideoSource::Settings &settings)
{
    const auto size =
        SPA_RECTANGLE(static_cast<std::uint32_t>(format.width), static_cast<std::uint32_t>(format.height));
    const auto framerate = SPA_FRACTION(static_cast<std::uint32_t>(settings.framerate), 1);
    const auto squarePixels = SPA_FRACTION(1, 1);
    spa_pod_frame frame = {};
    spa_pod_builder_push_object(&builder, &frame, SPA_TYPE_OBJECT_Format, SPA_PARAM_EnumFormat);
    spa_pod_builder_add(&builder, SPA_FORMAT_mediaType, SPA_POD_Id(SPA_MEDIA_TYPE_video),
                        SPA_FORMAT_mediaSubtype, SPA_POD_Id(SPA_MEDIA_SUBTYPE_raw), SPA_FORMAT_VIDEO_format,
                        SPA_POD_Id(format.id), SPA_FORMAT_VIDEO_size, SPA_POD_Rectangle(&size),
                        SPA_FORMAT_VIDEO_framerate, SPA_POD_Fraction(&framerate), 0);
    if (settings.namesAspectRatio)
        spa_pod_builder_add(&builder, SPA_FORMAT_VIDEO_pixelAspectRatio, SPA_POD_Fraction(&squarePixels), 0);
    return static_cast<const spa_pod *>(spa_pod_builder_pop(&builder, &frame));
}

const spa_pod *buffersParam(spa_pod_builder &builder, const VideoFormat &format)
{
    return static_cast<const spa_pod *>(spa_pod_builder_add_object(
        &builder, SPA_TYPE_OBJECT_ParamBuffers, SPA_PARAM_Buffers, SPA_PARAM_BUFFERS_buffers,
        SPA_POD_CHOICE_RANGE_Int(8, 4, 16), SPA_PARAM_BUFFERS_blocks, SPA_POD_Int(1), SPA_PARAM_BUFFERS_size,
        SPA_POD_Int(format.size()), SPA_PARAM_BUFFERS_stride, SPA_POD_Int(format.stride())));
}

const spa_pod *headerParam(spa_pod_builder &builder)
{
    return static_cast<const spa_pod *>(spa_pod_builder_add_object(
        &builder, SPA_TYPE_OBJECT_ParamMeta, SPA_PARAM_Meta, SPA_PARAM_META_type, SPA_POD_Id(SPA_META_Header),
        SPA_PARAM_META_size, SPA_POD_Int(sizeof(spa_meta_header))));
}

/// Fills in the buffer's metadata: the position of the frame's bytes and the time at which the frame was
/// sent.
void describe(spa_buffer &buffer, const VideoFrame &frame)
{
    spa_chunk &chunk = *buffer.datas[0].chunk;
    chunk.offset = 0;
    chunk.size = static_cast<std::uint32_t>(frame.format.size());
    chunk.stride = frame.format.stride();
    auto *header = static_cast<spa_meta_header *>(
        spa_buffer_find_meta_data(&buffer, SPA_META_Header, sizeof(spa_meta_header)));
    if (header)
        *header = {0, 0, frame.time, 0, frame.number};
}

} // namespace

VideoSource::VideoSource(pw_loop *loop, Settings settings, const VideoFormat &format, FramePainter &painter)
    : mLoop(loop)
    , mSettings(std::move(settings))
    , mPainter(painter)
    , mContext(pw_context_new(loop, nullptr, 0))
    , mOffered(format)
    , mAgreed(format)
{
    mFrameTimer = pw_loop_add_timer(
        loop,
        [](void *source, std::uint64_t) {
            auto *self = static_cast<VideoSource *>(source);
            if (self->mPainter.wantsFrame())
                pw_stream_trigger_process(self->mStream);
        },
        this);
    mConnectTimer = pw_loop_add_timer(
        loop, [](void *source, std::uint64_t) { static_cast<VideoSource *>(source)->connect(); }, this);
    timespec soon = {0, 1};
    pw_loop_update_timer(loop, mConnectTimer, &soon, nullptr, false);
}

VideoSource::~VideoSource()
{
    disconnect();
    pw_loop_destroy_source(mLoop, mConnectTimer);
    pw_loop_destroy_source(mLoop, mFrameTimer);
    if (mContext)
        pw_context_destroy(mContext);
}

void VideoSource::setFormat(const VideoFormat &format)
{
    mOffered = format;
    if (mStream)
        offerFormat();
}

pw_properties *VideoSource::nodeProperties() const
{
    return pw_properties_new(PW_KEY_MEDIA_CLASS, "Video/Source", PW_KEY_NODE_NAME, mSettings.nodeName.c_str(),
                             PW_KEY_NODE_DESCRIPTION, mSettings.nodeDescription.c_str(), nullptr);
}

const pw_stream_events &VideoSource::streamEvents()
{
    static const pw_stream_events events = [] {
        pw_stream_events each = {};
        each.version = PW_VERSION_STREAM_EVENTS;
        each.state_changed = [](void *source, pw_stream_state, pw_stream_state state, const char *error) {
            static_cast<VideoSource *>(source)->stateChanged(state, error);
        };
        each.param_changed = [](void *source, std::uint32_t id, const spa_pod *format) {
            if (id == SPA_PARAM_Format && format)
                static_cast<VideoSource *>(source)->agree(format);
        };
        // PipeWire 1.4 does not clear user_data when a buffer gets new memory. Clear it here, because the
        // painter's number must be 0 in a new buffer.
        each.add_buffer = [](void *, pw_buffer *buffer) { buffer->user_data = nullptr; };
        each.process = [](void *source) { static_cast<VideoSource *>(source)->send(); };
        return each;
    }();
    return events;
}

void VideoSource::connect()
{
    disconnect();
    mIsLost = false;
    mCore = mContext ? pw_context_connect(mContext, nullptr, 0) : nullptr;
    if (!mCore) {
        lose(std::strerror(errno));
        return;
    }
    mStream = pw_stream_new(mCore, mSettings.nodeName.c_str(), nodeProperties());
    pw_stream_add_listener(mStream, &mStreamHook, &streamEvents(), this);
    offerFormat();
}

void VideoSource::disconnect()
{
    if (mStream) {
        // Remove the listener first: destroying the stream must not be reported as a loss of PipeWire.
        spa_hook_remove(&mStreamHook);
        pw_stream_destroy(std::exchange(mStream, nullptr));
    }
    if (mCore)
        pw_core_disconnect(std::exchange(mCore, nullptr));
}

void VideoSource::lose(const std::string &reason)
{
    if (std::exchange(mIsLost, true))
        return;
    tick(false);
    // A stream must not be destroyed in its own callback. The timer destroys it later and connects again.
    timespec delay = {1, 0};
    pw_loop_update_timer(mLoop, mConnectTimer, &delay, nullptr, false);
    mPainter.lost(reason);
}

void VideoSource::stateChanged(pw_stream_state state, const char *error)
{
    tick(state == PW_STREAM_STATE_STREAMING);
    if (state == PW_STREAM_STATE_PAUSED)
        mPainter.published();
    // Ignore PW_STREAM_STATE_ERROR: a consumer causes it, for example by refusing the format, and the node
    // stays usable.
    else if (state == PW_STREAM_STATE_UNCONNECTED)
        lose(error ? error : "the connection has ended");
}

void VideoSource::offerFormat()
{
    std::array<std::uint8_t, PodMemory> memory{};
    spa_pod_builder builder = SPA_POD_BUILDER_INIT(memory.data(), memory.size());
    const spa_pod *offer = formatParam(builder, mOffered, mSettings);
    if (pw_stream_get_state(mStream, nullptr) != PW_STREAM_STATE_UNCONNECTED)
        pw_stream_update_params(mStream, &offer, 1);
    else if (pw_stream_connect(mStream, PW_DIRECTION_OUTPUT, PW_ID_ANY, StreamFlags, &offer, 1) < 0)
        lose("the stream cannot be made");
}

void VideoSource::agree(const spa_pod *format)
{
    spa_video_info_raw info = {};
    spa_format_video_raw_parse(format, &info);
    mAgreed = {info.format, static_cast<int>(info.size.width), static_cast<int>(info.size.height)};
    std::array<std::uint8_t, PodMemory> memory{};
    spa_pod_builder builder = SPA_POD_BUILDER_INIT(memory.data(), memory.size());
    std::array<const spa_pod *, 2> params{buffersParam(builder, mAgreed), headerParam(builder)};
    pw_stream_update_params(mStream, params.data(), params.size());
}

void VideoSource::tick(bool ticking)
{
    const std::int64_t length = ticking ? SecondInNanoseconds / mSettings.framerate : 0;
    timespec interval = {length / SecondInNanoseconds, length % SecondInNanoseconds};
    pw_loop_update_timer(mLoop, mFrameTimer, &interval, &interval, false);
}

void VideoSource::send()
{
    pw_buffer *buffer = pw_stream_dequeue_buffer(mStream);
    // Slow consumers may hold all buffers. Drop the frame in this case.
    if (!buffer)
        return;
    const spa_data &data = buffer->buffer->datas[0];
    const bool fits = data.data && data.maxsize >= static_cast<std::uint32_t>(mAgreed.size());
    VideoFrame frame{mAgreed, fits ? static_cast<std::uint8_t *>(data.data) : nullptr,
                     reinterpret_cast<std::uintptr_t>(buffer->user_data), ++mNumber, monotonicTime()};
    if (frame.data)
        mPainter.paint(frame);
    // NOLINTBEGIN(performance-no-int-to-ptr): the pointer carries a number and is never dereferenced.
    buffer->user_data = reinterpret_cast<void *>(frame.mark);
    // NOLINTEND(performance-no-int-to-ptr)
    frame.time = monotonicTime();
    describe(*buffer->buffer, frame);
    pw_stream_queue_buffer(mStream, buffer);
    mPainter.frameSent(frame);
}

} // namespace simulator
