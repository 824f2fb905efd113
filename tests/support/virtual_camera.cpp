// A camera for tests and measurements. It publishes one PipeWire node of class Video/Source with a plain
// picture.
//
//   virtual_camera <node name> <description> [<colour as 0xRRGGBB> [<format> [<frames a second>]]]
//
// A format is a name and a size, as in "I420 320x240". The names are BGRx, I420, NV12, RGB and YUY2.
// The camera reads one command per line from standard input. It exits at the end of its input or of PipeWire.
//   pause          stop sending frames; the node stays
//   resume         send frames again
//   colour 0x...   use another colour
//   format ...     use another format, also for consumers that are already connected
//   number         draw each frame's number as 16 bars across the middle, the highest bit at the left.
//                  A white bar is a one. A green bar is before the bits and a red one behind them.
//   tell           print "sent NUMBER NANOSECONDS" (monotonic clock) for each frame that has a consumer, and
//                  "kept" instead of "sent" for a frame that is due during a pause
//   hush           stop printing

#include "simulator/picture/VideoSource.h"

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

using simulator::VideoFormat;
using simulator::VideoFrame;
using simulator::VideoSource;
using Row = std::vector<std::uint32_t>; // pixels as 0x00RRGGBB

constexpr int Bits = 16;
constexpr std::uint32_t White = 0xFFFFFF;
constexpr std::uint32_t First = 0x00FF00;
constexpr std::uint32_t Last = 0xFF0000;
constexpr long SecondInNanoseconds = 1'000'000'000;

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

spa_video_format formatNamed(const std::string &name)
{
    if (name == "BGRx")
        return SPA_VIDEO_FORMAT_BGRx;
    if (name == "RGB")
        return SPA_VIDEO_FORMAT_RGB;
    if (name == "YUY2")
        return SPA_VIDEO_FORMAT_YUY2;
    return name == "NV12" ? SPA_VIDEO_FORMAT_NV12 : SPA_VIDEO_FORMAT_I420;
}

VideoFormat formatFrom(const std::string &text)
{
    VideoFormat format;
    std::array<char, 8> name{};
    if (std::sscanf(text.c_str(), "%7s %dx%d", name.data(), &format.width, &format.height) != 3)
        std::exit(EXIT_FAILURE);
    format.id = formatNamed(name.data());
    return format;
}

void writePacked(const VideoFormat &format, const Row &row, std::uint8_t *line)
{
    for (int x = 0; x < format.width; ++x) {
        const std::uint32_t color = row[x];
        if (format.id == SPA_VIDEO_FORMAT_BGRx)
            std::memcpy(line + x * 4, &color, 4);
        else if (format.id == SPA_VIDEO_FORMAT_YUY2)
            line[x * 2] = luma(color), line[x * 2 + 1] = chroma(color)[x % 2];
        else
            line[x * 3] = color >> 16, line[x * 3 + 1] = color >> 8 & 255, line[x * 3 + 2] = color & 255;
    }
}

void writeChroma(const VideoFormat &format, const Row &row, int y, std::uint8_t *picture)
{
    const int rows = (format.height + 1) / 2;
    std::uint8_t *line = picture + format.lumaSize() + static_cast<std::ptrdiff_t>(y) * format.chromaStride();
    const bool interleaves = format.id == SPA_VIDEO_FORMAT_NV12;
    const int next = interleaves ? 2 : 1;
    std::uint8_t *v =
        interleaves ? line + 1 : line + static_cast<std::ptrdiff_t>(format.chromaStride()) * rows;
    for (int x = 0; x < format.width; x += 2) {
        line[x / 2 * next] = chroma(row[x])[0];
        v[x / 2 * next] = chroma(row[x])[1];
    }
}

/// Writes one line of a frame in the frame's format.
void write(const VideoFormat &format, const Row &row, int y, std::uint8_t *picture)
{
    std::uint8_t *line = picture + static_cast<std::ptrdiff_t>(y) * format.stride();
    if (!format.isPlanar()) {
        writePacked(format, row, line);
        return;
    }
    std::transform(row.begin(), row.end(), line, luma);
    if (y % 2 == 0)
        writeChroma(format, row, y / 2, picture);
}

long now()
{
    timespec time = {};
    ::clock_gettime(CLOCK_MONOTONIC, &time);
    return time.tv_sec * SecondInNanoseconds + time.tv_nsec;
}

/// A video source that obeys the commands on standard input.
class Camera final : private simulator::FramePainter {
public:
    Camera(pw_main_loop *loop, const VideoSource::Settings &settings, const VideoFormat &format);

    void obey(const std::string &command);

private:
    bool wantsFrame() override;
    void paint(VideoFrame &frame) override;
    void frameSent(const VideoFrame &frame) override;
    void lost(const std::string & /*reason*/) override { pw_main_loop_quit(mLoop); }
    void readCommands();
    void paintNumber(const VideoFrame &frame) const;
    void say(const char *what, std::uint32_t number, long time) const;

    pw_main_loop *const mLoop;
    std::string mInput;
    std::uint32_t mColor = Last;
    // Increases with each command. A buffer that was painted before the last command is painted again.
    std::uintptr_t mLook = 1;
    std::uint32_t mNumber = 0;
    bool mPaused = false;
    bool mNumbered = false;
    bool mTells = false;
    VideoSource mSource;
};

Camera::Camera(pw_main_loop *loop, const VideoSource::Settings &settings, const VideoFormat &format)
    : mLoop(loop)
    , mSource(pw_main_loop_get_loop(loop), settings, format, *this)
{
    pw_loop_add_io(
        pw_main_loop_get_loop(loop), STDIN_FILENO, SPA_IO_IN | SPA_IO_HUP, false,
        [](void *camera, int, std::uint32_t) { static_cast<Camera *>(camera)->readCommands(); }, this);
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
    else if (word == "format")
        mSource.setFormat(formatFrom(argument));
    ++mLook;
}

bool Camera::wantsFrame()
{
    if (mPaused && mTells)
        say("kept", mNumber, now());
    return !mPaused;
}

void Camera::paint(VideoFrame &frame)
{
    const Row row(static_cast<std::size_t>(frame.format.width), mColor);
    const bool isNew = std::exchange(frame.mark, mLook) != mLook;
    for (int y = 0; isNew && y < frame.format.height; ++y)
        write(frame.format, row, y, frame.data);
    if (mNumbered)
        paintNumber(frame);
}

void Camera::paintNumber(const VideoFrame &frame) const
{
    const auto [width, height] = std::pair(frame.format.width, frame.format.height);
    Row row(static_cast<std::size_t>(width));
    for (int x = 0; x < width; ++x) {
        const int bar = x * (Bits + 2) / width;
        const bool isOne = bar > 0 && bar <= Bits && (frame.number >> (Bits - bar) & 1U) != 0;
        row[static_cast<std::size_t>(x)] = bar == 0 ? First : bar > Bits ? Last : isOne ? White : 0;
    }
    for (int y = height / 4 * 2 - 16; y < height / 4 * 2 + 16; ++y)
        write(frame.format, row, y, frame.data);
}

void Camera::frameSent(const VideoFrame &frame)
{
    mNumber = frame.number;
    if (mTells)
        say("sent", frame.number, frame.time);
}

void Camera::say(const char *what, std::uint32_t number, long time) const
{
    std::printf("%s %u %ld\n", what, number, time);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char **argv)
{
    if (argc < 3)
        return EXIT_FAILURE;
    pw_init(nullptr, nullptr);
    pw_main_loop *loop = pw_main_loop_new(nullptr);
    {
        const VideoFormat format =
            argc > 4 ? formatFrom(argv[4]) : VideoFormat{SPA_VIDEO_FORMAT_I420, 320, 240};
        const VideoSource::Settings settings{argv[1], argv[2], argc > 5 ? std::atoi(argv[5]) : 30, false};
        Camera camera(loop, settings, format);
        if (argc > 3)
            camera.obey(std::string("colour ") + argv[3]);
        pw_main_loop_run(loop);
    }
    pw_main_loop_destroy(loop);
    pw_deinit();
    return EXIT_SUCCESS;
}
