#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>

namespace agent_check {

/// A consumer of one PipeWire node, on the caller's thread. It counts frames and ignores their contents.
class PictureWatcher {
public:
    /// Connects to the node with this `object.serial`.
    explicit PictureWatcher(std::uint64_t serial);
    /// Disconnects from the node.
    ~PictureWatcher();
    PictureWatcher(const PictureWatcher &) = delete;
    PictureWatcher &operator=(const PictureWatcher &) = delete;

    /// Runs PipeWire until `count` more frames have arrived. Returns the time from the first to the last of
    /// them, or nothing if they do not arrive within `limit`.
    std::optional<std::chrono::nanoseconds> waitForFrames(int frames, std::chrono::milliseconds limit);
    /// The announced frames per second. 0 before the first frame, and for a variable rate.
    [[nodiscard]] double announcedRate() const;

private:
    struct Stream;
    std::unique_ptr<Stream> mStream;
};

} // namespace agent_check
