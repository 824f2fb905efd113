#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>

namespace agent_check {

/// A consumer of a PipeWire node. It counts frames and ignores their contents. It runs in the caller's
/// thread.
class PictureWatcher {
public:
    /// Connects to the node with the `object.serial` property `serial`.
    explicit PictureWatcher(std::uint64_t serial);
    /// Disconnects from the node.
    ~PictureWatcher();
    PictureWatcher(const PictureWatcher &) = delete;
    PictureWatcher &operator=(const PictureWatcher &) = delete;

    /// Runs the PipeWire loop until `frames` new frames have arrived. Returns the time between the first and
    /// the last of them, or nothing if not all arrive within `limit`.
    std::optional<std::chrono::nanoseconds> waitForFrames(int frames, std::chrono::milliseconds limit);
    /// Returns the frame rate in the negotiated format, in frames per second. 0 before the first frame and
    /// for a variable rate.
    [[nodiscard]] double announcedRate() const;

private:
    struct Stream;
    std::unique_ptr<Stream> mStream;
};

} // namespace agent_check
