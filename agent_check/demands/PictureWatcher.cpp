#include "agent_check/demands/PictureWatcher.h"

#include "platform/capture/PipeWireSocket.h"

#include <pipewire/pipewire.h>
#include <spa/param/video/format-utils.h>

#include <array>
#include <string>

using namespace std::chrono;

namespace agent_check {

namespace {

constexpr std::size_t PodMemory = 512;
constexpr auto Turn = 20ms;

} // namespace

struct PictureWatcher::Stream {
    platform::PipeWireSocket socket;
    pw_loop *loop = nullptr;
    pw_context *context = nullptr;
    pw_core *core = nullptr;
    pw_stream *stream = nullptr;
    spa_hook hook = {};
    spa_fraction rate = {};
    int frames = 0;
    steady_clock::time_point first;
    steady_clock::time_point newest;

    void open(std::uint64_t serial);
    void close();
    void take();
    static const pw_stream_events &events();
};

const pw_stream_events &PictureWatcher::Stream::events()
{
    static const pw_stream_events events = [] {
        pw_stream_events each = {};
        each.version = PW_VERSION_STREAM_EVENTS;
        each.param_changed = [](void *self, std::uint32_t id, const spa_pod *format) {
            spa_video_info_raw info = {};
            if (id != SPA_PARAM_Format || !format || spa_format_video_raw_parse(format, &info) < 0)
                return;
            static_cast<Stream *>(self)->rate = info.framerate;
        };
        each.process = [](void *self) { static_cast<Stream *>(self)->take(); };
        return each;
    }();
    return events;
}

void PictureWatcher::Stream::open(std::uint64_t serial)
{
    pw_init(nullptr, nullptr);
    loop = pw_loop_new(nullptr);
    context = loop ? pw_context_new(loop, nullptr, 0) : nullptr;
    const int descriptor = context ? socket.duplicate() : -1;
    core = descriptor < 0 ? nullptr : pw_context_connect_fd(context, descriptor, nullptr, 0);
    if (!core)
        return;
    stream = pw_stream_new(core, "ks7-agent-check",
                           pw_properties_new(PW_KEY_MEDIA_TYPE, "Video", PW_KEY_MEDIA_CATEGORY, "Capture",
                                             PW_KEY_MEDIA_ROLE, "Camera", PW_KEY_TARGET_OBJECT,
                                             std::to_string(serial).c_str(), PW_KEY_NODE_DONT_RECONNECT,
                                             "true", nullptr));
    pw_stream_add_listener(stream, &hook, &events(), this);
    std::array<std::uint8_t, PodMemory> memory{};
    spa_pod_builder builder = SPA_POD_BUILDER_INIT(memory.data(), memory.size());
    const auto *any = static_cast<const spa_pod *>(spa_pod_builder_add_object(
        &builder, SPA_TYPE_OBJECT_Format, SPA_PARAM_EnumFormat, SPA_FORMAT_mediaType,
        SPA_POD_Id(SPA_MEDIA_TYPE_video), SPA_FORMAT_mediaSubtype, SPA_POD_Id(SPA_MEDIA_SUBTYPE_raw)));
    constexpr auto flags = static_cast<pw_stream_flags>(PW_STREAM_FLAG_AUTOCONNECT);
    pw_stream_connect(stream, PW_DIRECTION_INPUT, PW_ID_ANY, flags, &any, 1);
}

void PictureWatcher::Stream::close()
{
    if (stream) {
        spa_hook_remove(&hook);
        pw_stream_destroy(stream);
    }
    if (core)
        pw_core_disconnect(core);
    if (context)
        pw_context_destroy(context);
    if (loop)
        pw_loop_destroy(loop);
}

void PictureWatcher::Stream::take()
{
    while (pw_buffer *buffer = pw_stream_dequeue_buffer(stream)) {
        newest = steady_clock::now();
        if (frames++ == 0)
            first = newest;
        pw_stream_queue_buffer(stream, buffer);
    }
}

PictureWatcher::PictureWatcher(std::uint64_t serial)
    : mStream(std::make_unique<Stream>())
{
    mStream->open(serial);
}

PictureWatcher::~PictureWatcher()
{
    mStream->close();
}

std::optional<nanoseconds> PictureWatcher::waitForFrames(int frames, milliseconds limit)
{
    const auto deadline = steady_clock::now() + limit;
    mStream->frames = 0;
    if (!mStream->core)
        return {};
    pw_loop_enter(mStream->loop);
    while (mStream->frames < frames && steady_clock::now() < deadline)
        pw_loop_iterate(mStream->loop, int(Turn.count()));
    pw_loop_leave(mStream->loop);
    if (mStream->frames < frames)
        return {};
    return mStream->newest - mStream->first;
}

double PictureWatcher::announcedRate() const
{
    const spa_fraction &rate = mStream->rate;
    return rate.denom == 0 ? 0 : double(rate.num) / rate.denom;
}

} // namespace agent_check
