#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>

namespace agent_check {

/// A consumer of one PipeWire node, on the caller's thread. It counts frames and looks at none.
class PictureWatcher {
public:
    /// Connects to the node with this `object.serial`.
    explicit PictureWatcher(std::uint64_t serial);
    /// Leaves.
    ~PictureWatcher();
    PictureWatcher(const PictureWatcher &) = delete;
    PictureWatcher &operator=(const PictureWatcher &) = delete;

    /// Runs PipeWire until so many more frames have come. The time from the first of them to the last;
    /// nothing when they have not come within `limit`.
    std::optional<std::chrono::nanoseconds> waitForFrames(int frames, std::chrono::milliseconds limit);
    /// Frames per second as announced; 0 before the first frame, and for a variable rate.
    [[nodiscard]] double announcedRate() const;

private:
    struct Stream;
    std::unique_ptr<Stream> mStream;
};

} // namespace agent_check
