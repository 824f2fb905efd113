#include "simulator/picture/PictureThread.h"

#include <cstdio>

namespace simulator {

PictureThread::PictureThread(const PictureSettings &settings)
    : mSettings(settings)
    , mPicture({settings.width, settings.height})
{
    pw_init(nullptr, nullptr);
    mLoop = pw_main_loop_new(nullptr);
    mEnd = pw_loop_add_event(
        pw_main_loop_get_loop(mLoop),
        [](void *loop, std::uint64_t) { pw_main_loop_quit(static_cast<pw_main_loop *>(loop)); }, mLoop);
}

PictureThread::~PictureThread()
{
    pw_loop_destroy_source(pw_main_loop_get_loop(mLoop), mEnd);
    pw_main_loop_destroy(mLoop);
    pw_deinit();
}

void PictureThread::requestEnd()
{
    pw_loop_signal_event(pw_main_loop_get_loop(mLoop), mEnd);
}

void PictureThread::run()
{
    // Create the source in this thread: a PipeWire context makes calls on the system bus, which may block.
    const VideoSource source(pw_main_loop_get_loop(mLoop),
                             {mSettings.nodeName.toStdString(), mSettings.nodeDescription.toStdString(),
                              mSettings.framerate, true},
                             {SPA_VIDEO_FORMAT_BGRx, mSettings.width, mSettings.height}, *this);
    pw_main_loop_run(mLoop);
}

void PictureThread::paint(VideoFrame &frame)
{
    mPicture.paint(frame.data, frame.time);
}

void PictureThread::published()
{
    mHasComplained = false;
}

void PictureThread::lost(const std::string &reason)
{
    if (!std::exchange(mHasComplained, true))
        std::fprintf(stderr, "ks7-agent-simulator: no picture: %s\n", reason.c_str());
    Q_EMIT failed();
}

} // namespace simulator
