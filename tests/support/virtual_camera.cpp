// A camera for tests and measurements: publishes one PipeWire node of class Video/Source with a plain
// picture.
//
//   virtual_camera <node name> <description> [<colour as 0xRRGGBB> [<format> [<pictures a second>]]]
//
// A format is a name and a size, as in "I420 320x240"; there are BGRx, I420, RGB and YUY2.
// Commands on standard input, one per line; its end ends the camera:
//   pause          no picture from now on (the node stays)
//   resume         pictures again
//   colour 0x…     another colour
//   format …       another format, also while somebody watches
//   number         every picture bears its number from now on: bars across its middle, the highest of 16 bits
//                  leftmost and white for a one, a green bar before and a red one behind them
//   tell           says "sent NUMBER NANOSECONDS" for each picture that somebody watches, in the monotonic
//   clock;
//                  "kept" instead of "sent" for one that falls into a pause
//   hush           does so no longer

#include <pipewire/pipewire.h>
#include <spa/param/video/format-utils.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

using Row = std::vector<std::uint32_t>; // 0x00RRGGBB

constexpr int Bits = 16;
constexpr std::uint32_t White = 0xFFFFFF;
constexpr std::uint32_t First = 0x00FF00;
constexpr std::uint32_t Last = 0xFF0000;
constexpr long SecondInNanoseconds = 1'000'000'000;

int roundedUp(int number, int multiple)
{
    return (number + multiple - 1) / multiple * multiple;
}

std::uint8_t luma(std::uint32_t color)
{
    const int r = color >> 16 & 255, g = color >> 8 & 255, b = color & 255;
    return static_cast<std::uint8_t>((66 * r + 129 * g + 25 * b + 128) / 256 + 16);
}

std::array<std::uint8_t, 2> chroma(std::uint32_t color)
{
    const int r = color >> 16 & 255, g = color >> 8 & 255, b = color & 255;
    return {static_cast<std::uint8_t>((-38 * r - 74 * g + 112 * b + 128) / 256 + 128),
            static_cast<std::uint8_t>((112 * r - 94 * g - 18 * b + 128) / 256 + 128)};
}

/// How the bytes of a picture lie, as GStreamer and everybody else expects them.
struct Format {
    spa_video_format id = SPA_VIDEO_FORMAT_I420;
    int width = 320;
    int height = 240;

    static Format from(const std::string &text)
    {
        Format format;
        std::array<char, 8> name{};
        if (std::sscanf(text.c_str(), "%7s %dx%d", name.data(), &format.width, &format.height) != 3)
            std::exit(EXIT_FAILURE);
        const std::string wanted = name.data();
        format.id = wanted == "BGRx" ? SPA_VIDEO_FORMAT_BGRx
            : wanted == "RGB"        ? SPA_VIDEO_FORMAT_RGB
            : wanted == "YUY2"       ? SPA_VIDEO_FORMAT_YUY2
                                     : SPA_VIDEO_FORMAT_I420;
        return format;
    }
    [[nodiscard]] int stride() const
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
    [[nodiscard]] int chromaStride() const { return roundedUp(roundedUp(width, 2) / 2, 4); }
    [[nodiscard]] int lumaSize() const { return stride() * roundedUp(height, 2); }
    [[nodiscard]] int size() const
    {
        return id == SPA_VIDEO_FORMAT_I420 ? lumaSize() + chromaStride() * roundedUp(height, 2)
                                           : stride() * height;
    }
    void write(const Row &row, int y, std::uint8_t *picture) const;

private:
    void writeI420(const Row &row, int y, std::uint8_t *picture) const;
};

void Format::write(const Row &row, int y, std::uint8_t *picture) const
{
    std::uint8_t *line = picture + static_cast<std::ptrdiff_t>(y) * stride();
    for (int x = 0; x < width && id != SPA_VIDEO_FORMAT_I420; ++x) {
        const std::uint32_t color = row[x];
        if (id == SPA_VIDEO_FORMAT_BGRx)
            std::memcpy(line + x * 4, &color, 4);
        else if (id == SPA_VIDEO_FORMAT_YUY2)
            line[x * 2] = luma(color), line[x * 2 + 1] = chroma(color)[x % 2];
        else
            line[x * 3] = color >> 16, line[x * 3 + 1] = color >> 8 & 255, line[x * 3 + 2] = color & 255;
    }
    if (id == SPA_VIDEO_FORMAT_I420)
        writeI420(row, y, picture);
}

void Format::writeI420(const Row &row, int y, std::uint8_t *picture) const
{
    std::transform(row.begin(), row.end(), picture + static_cast<std::ptrdiff_t>(y) * stride(), luma);
    std::uint8_t *u = picture + lumaSize() + static_cast<std::ptrdiff_t>(y / 2) * chromaStride();
    std::uint8_t *v = u + static_cast<std::ptrdiff_t>(chromaStride()) * (roundedUp(height, 2) / 2);
    for (int x = 0; x < width && y % 2 == 0; x += 2) {
        u[x / 2] = chroma(row[x])[0];
        v[x / 2] = chroma(row[x])[1];
    }
}

long now()
{
    timespec time = {};
    ::clock_gettime(CLOCK_MONOTONIC, &time);
    return time.tv_sec * SecondInNanoseconds + time.tv_nsec;
}

/// One node, from its making to the end of the commands.
class Camera {
public:
    Camera(const char *name, const char *description, int rate, Format format);
    ~Camera();
    Camera(const Camera &) = delete;
    Camera &operator=(const Camera &) = delete;

    void obey(const std::string &command);
    /// Until there are no more commands.
    void run() { pw_main_loop_run(mLoop); }

private:
    void readCommands();
    void offerFormat(bool first);
    void agree(const spa_pod *format);
    void tick(bool ticking);
    void send();
    void paint(std::uint8_t *picture, bool isNew) const;
    void say(const char *what, long time) const;

    const int mRate;
    pw_main_loop *mLoop;
    pw_stream *mStream = nullptr;
    spa_source *mTimer = nullptr;
    spa_hook mHook = {};
    pw_stream_events mEvents = {};
    std::string mInput;
    Format mFormat; // what is offered
    Format mAgreed; // what the watchers have
    std::uint32_t mColor = Last;
    std::uintptr_t mLook = 1; // of the background: a buffer that has another one is painted anew
    unsigned mNumber = 0;
    bool mPaused = false;
    bool mNumbered = false;
    bool mTells = false;
};

Camera::Camera(const char *name, const char *description, int rate, Format format)
    : mRate(rate)
    , mLoop(pw_main_loop_new(nullptr))
    , mFormat(format)
    , mAgreed(format)
{
    mEvents.version = PW_VERSION_STREAM_EVENTS;
    mEvents.state_changed = [](void *camera, pw_stream_state, pw_stream_state state, const char *) {
        auto *self = static_cast<Camera *>(camera);
        self->tick(state == PW_STREAM_STATE_STREAMING);
        if (state == PW_STREAM_STATE_ERROR || state == PW_STREAM_STATE_UNCONNECTED)
            pw_main_loop_quit(self->mLoop);
    };
    mEvents.param_changed = [](void *camera, std::uint32_t id, const spa_pod *format) {
        if (id == SPA_PARAM_Format && format)
            static_cast<Camera *>(camera)->agree(format);
    };
    mEvents.process = [](void *camera) { static_cast<Camera *>(camera)->send(); };

    pw_loop *loop = pw_main_loop_get_loop(mLoop);
    mTimer = pw_loop_add_timer(
        loop,
        [](void *camera, std::uint64_t) {
            auto *self = static_cast<Camera *>(camera);
            if (!self->mPaused)
                pw_stream_trigger_process(self->mStream);
            else if (self->mTells)
                self->say("kept", now());
        },
        this);
    pw_loop_add_io(
        loop, STDIN_FILENO, SPA_IO_IN | SPA_IO_HUP, false,
        [](void *camera, int, std::uint32_t) { static_cast<Camera *>(camera)->readCommands(); }, this);
    mStream = pw_stream_new_simple(loop, name,
                                   pw_properties_new(PW_KEY_MEDIA_CLASS, "Video/Source", PW_KEY_NODE_NAME,
                                                     name, PW_KEY_NODE_DESCRIPTION, description, nullptr),
                                   &mEvents, this);
    offerFormat(true);
}

Camera::~Camera()
{
    if (mStream)
        pw_stream_destroy(mStream);
    pw_main_loop_destroy(mLoop);
}

void Camera::readCommands()
{
    std::array<char, 256> bytes{};
    const auto count = ::read(STDIN_FILENO, bytes.data(), bytes.size());
    if (count <= 0)
        pw_main_loop_quit(mLoop);
    else
        mInput.append(bytes.data(), static_cast<std::size_t>(count));
    for (auto end = mInput.find('\n'); end != std::string::npos; end = mInput.find('\n')) {
        obey(mInput.substr(0, end));
        mInput.erase(0, end + 1);
    }
}

void Camera::obey(const std::string &command)
{
    const auto space = command.find(' ');
    const std::string word = command.substr(0, space);
    const std::string argument = space == std::string::npos ? "" : command.substr(space + 1);
    if (word == "pause" || word == "resume")
        mPaused = word == "pause";
    else if (word == "number")
        mNumbered = true;
    else if (word == "tell" || word == "hush")
        mTells = word == "tell";
    else if (word == "colour")
        mColor = static_cast<std::uint32_t>(std::strtoul(argument.c_str(), nullptr, 0)) & White;
    else if (word == "format") {
        mFormat = Format::from(argument);
        offerFormat(false);
    }
    ++mLook;
}

void Camera::offerFormat(bool first)
{
    std::array<std::uint8_t, 1024> memory{};
    spa_pod_builder builder = SPA_POD_BUILDER_INIT(memory.data(), memory.size());
    spa_video_info_raw info = {};
    info.format = mFormat.id;
    info.size =
        SPA_RECTANGLE(static_cast<std::uint32_t>(mFormat.width), static_cast<std::uint32_t>(mFormat.height));
    info.framerate = SPA_FRACTION(static_cast<std::uint32_t>(mRate), 1);
    const spa_pod *offer = spa_format_video_raw_build(&builder, SPA_PARAM_EnumFormat, &info);
    if (first)
        pw_stream_connect(mStream, PW_DIRECTION_OUTPUT, PW_ID_ANY,
                          static_cast<pw_stream_flags>(PW_STREAM_FLAG_DRIVER | PW_STREAM_FLAG_MAP_BUFFERS),
                          &offer, 1);
    else
        pw_stream_update_params(mStream, &offer, 1);
}

void Camera::agree(const spa_pod *format)
{
    spa_video_info_raw info = {};
    spa_format_video_raw_parse(format, &info);
    mAgreed = {info.format, static_cast<int>(info.size.width), static_cast<int>(info.size.height)};
    std::array<std::uint8_t, 1024> memory{};
    spa_pod_builder builder = SPA_POD_BUILDER_INIT(memory.data(), memory.size());
    const auto buffers = static_cast<const spa_pod *>(spa_pod_builder_add_object(
        &builder, SPA_TYPE_OBJECT_ParamBuffers, SPA_PARAM_Buffers, SPA_PARAM_BUFFERS_buffers,
        SPA_POD_CHOICE_RANGE_Int(8, 4, 16), SPA_PARAM_BUFFERS_blocks, SPA_POD_Int(1), SPA_PARAM_BUFFERS_size,
        SPA_POD_Int(mAgreed.size()), SPA_PARAM_BUFFERS_stride, SPA_POD_Int(mAgreed.stride())));
    const auto header = static_cast<const spa_pod *>(spa_pod_builder_add_object(
        &builder, SPA_TYPE_OBJECT_ParamMeta, SPA_PARAM_Meta, SPA_PARAM_META_type, SPA_POD_Id(SPA_META_Header),
        SPA_PARAM_META_size, SPA_POD_Int(sizeof(spa_meta_header))));
    std::array<const spa_pod *, 2> params{buffers, header};
    pw_stream_update_params(mStream, params.data(), params.size());
}

void Camera::tick(bool ticking)
{
    timespec interval = {0, ticking ? SecondInNanoseconds / mRate : 0};
    pw_loop_update_timer(pw_main_loop_get_loop(mLoop), mTimer, &interval, &interval, false);
}

void Camera::send()
{
    pw_buffer *buffer = pw_stream_dequeue_buffer(mStream);
    if (!buffer)
        return;
    spa_data &data = buffer->buffer->datas[0];
    const auto look = reinterpret_cast<void *>(mLook);
    ++mNumber;
    if (data.data && data.maxsize >= static_cast<std::uint32_t>(mAgreed.size()))
        paint(static_cast<std::uint8_t *>(data.data), std::exchange(buffer->user_data, look) != look);
    data.chunk->offset = 0;
    data.chunk->size = static_cast<std::uint32_t>(mAgreed.size());
    data.chunk->stride = mAgreed.stride();
    const long time = now();
    if (auto *header = static_cast<spa_meta_header *>(
            spa_buffer_find_meta_data(buffer->buffer, SPA_META_Header, sizeof(spa_meta_header))))
        *header = {0, 0, time, 0, mNumber};
    pw_stream_queue_buffer(mStream, buffer);
    if (mTells)
        say("sent", time);
}

void Camera::paint(std::uint8_t *picture, bool isNew) const
{
    Row row(static_cast<std::size_t>(mAgreed.width), mColor);
    for (int y = 0; isNew && y < mAgreed.height; ++y)
        mAgreed.write(row, y, picture);
    for (int x = 0; x < mAgreed.width; ++x) {
        const int bar = x * (Bits + 2) / mAgreed.width;
        const bool isOne = bar > 0 && bar <= Bits && (mNumber >> (Bits - bar) & 1U) != 0;
        row[static_cast<std::size_t>(x)] = bar == 0 ? First : bar > Bits ? Last : isOne ? White : 0;
    }
    for (int y = mAgreed.height / 4 * 2 - 16; mNumbered && y < mAgreed.height / 4 * 2 + 16; ++y)
        mAgreed.write(row, y, picture);
}

void Camera::say(const char *what, long time) const
{
    std::printf("%s %u %ld\n", what, mNumber, time);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char **argv)
{
    if (argc < 3)
        return EXIT_FAILURE;
    pw_init(nullptr, nullptr);
    {
        const Format format = argc > 4 ? Format::from(argv[4]) : Format();
        Camera camera(argv[1], argv[2], argc > 5 ? std::atoi(argv[5]) : 30, format);
        if (argc > 3)
            camera.obey(std::string("colour ") + argv[3]);
        camera.run();
    }
    pw_deinit();
    return EXIT_SUCCESS;
}
