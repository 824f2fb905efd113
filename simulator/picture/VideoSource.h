#pragma once

#include "simulator/picture/VideoFormat.h"

#include <pipewire/pipewire.h>

#include <cstdint>
#include <string>

namespace simulator {

/// One frame that is about to be sent.
struct VideoFrame {
    VideoFormat format;
    /// format.size() bytes; null when the consumer gave too little memory.
    std::uint8_t *data = nullptr;
    /// Belongs to the frame's memory and keeps its value between frames; 0 in new memory.
    std::uintptr_t mark = 0;
    /// Counts all frames of the source.
    std::uint32_t number = 0;
    /// Nanoseconds of the monotonic clock.
    std::int64_t time = 0;
};

/// Draws the frames of a VideoSource. All functions are called on the source's loop.
class FramePainter {
public:
    virtual ~FramePainter() = default;

    /// Called at every frame interval while a consumer is connected; false skips this frame.
    virtual bool wantsFrame() { return true; }
    virtual void paint(VideoFrame &frame) = 0;
    virtual void frameSent(const VideoFrame & /*frame*/) { }
    /// Called when the node has been published in PipeWire.
    virtual void published() { }
    /// Called when PipeWire is absent or has ended. The source tries to connect again until it is destroyed.
    virtual void lost(const std::string &reason) = 0;
};

/// One PipeWire node of class Video/Source with any number of consumers.
/// It belongs to the thread of its loop. PipeWire may start late and may restart.
class VideoSource {
public:
    struct Settings {
        std::string nodeName;
        std::string nodeDescription;
        int framerate = 30;
        /// Offers square pixels. Otherwise the format names no pixel aspect ratio, as with many cameras.
        bool namesAspectRatio = false;
    };

    /// Loop and painter must outlive the source. The first connection is made when the loop runs.
    VideoSource(pw_loop *loop, Settings settings, const VideoFormat &format, FramePainter &painter);
    ~VideoSource();
    VideoSource(const VideoSource &) = delete;
    VideoSource &operator=(const VideoSource &) = delete;

    /// Offers another format, also to the present consumers.
    void setFormat(const VideoFormat &format);

private:
    void connect();
    void disconnect();
    void lose(const std::string &reason);
    void stateChanged(pw_stream_state state, const char *error);
    void offerFormat();
    void agree(const spa_pod *format);
    void tick(bool ticking);
    void send();
    [[nodiscard]] pw_properties *nodeProperties() const;
    static const pw_stream_events &streamEvents();

    pw_loop *const mLoop;
    const Settings mSettings;
    FramePainter &mPainter;
    pw_context *mContext = nullptr;
    pw_core *mCore = nullptr;
    pw_stream *mStream = nullptr;
    spa_hook mStreamHook = {};
    spa_source *mFrameTimer = nullptr;
    spa_source *mConnectTimer = nullptr;
    VideoFormat mOffered;
    VideoFormat mAgreed;
    std::uint32_t mNumber = 0;
    bool mIsLost = true;
};

} // namespace simulator
