#pragma once

#include "simulator/picture/VideoFormat.h"

#include <pipewire/pipewire.h>

#include <cstdint>
#include <string>

namespace simulator {

/// A video frame that is about to be sent.
struct VideoFrame {
    VideoFormat format;
    /// Memory for format.size() bytes; null if the consumer's buffer is too small.
    std::uint8_t *data = nullptr;
    /// A number that the painter may change. It is stored with the buffer, so the next frame in the same
    /// buffer starts with it. In a new buffer it is 0.
    std::uintptr_t mark = 0;
    /// The frame's number. The source counts all its frames, including those with a null `data`.
    std::uint32_t number = 0;
    /// The time at which the frame is drawn, in nanoseconds of the monotonic clock.
    std::int64_t time = 0;
};

/// Draws the frames of a VideoSource. The source calls all functions in the thread of its loop.
class FramePainter {
public:
    virtual ~FramePainter() = default;

    /// Called once per frame interval while a consumer is connected. Returning false skips the frame.
    virtual bool wantsFrame() { return true; }
    virtual void paint(VideoFrame &frame) = 0;
    virtual void frameSent(const VideoFrame & /*frame*/) { }
    /// Called when the node has been published in PipeWire.
    virtual void published() { }
    /// Called when PipeWire is absent or has ended. The source tries to connect again until it is destroyed.
    virtual void lost(const std::string &reason) = 0;
};

/// A PipeWire node of class Video/Source for any number of consumers. Use it only in the thread of its loop.
/// PipeWire may start later than the source and may restart.
class VideoSource {
public:
    struct Settings {
        std::string nodeName;
        std::string nodeDescription;
        int framerate = 30;
        /// Whether the offered format contains a pixel aspect ratio of 1:1. Many real cameras offer formats
        /// without a ratio.
        bool namesAspectRatio = false;
    };

    /// Loop and painter must outlive the source. The source connects to PipeWire when the loop runs.
    VideoSource(pw_loop *loop, Settings settings, const VideoFormat &format, FramePainter &painter);
    ~VideoSource();
    VideoSource(const VideoSource &) = delete;
    VideoSource &operator=(const VideoSource &) = delete;

    /// Offers another format. Consumers that are already connected renegotiate it.
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
