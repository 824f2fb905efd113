#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace platform {

/// Runs blocking functions one after another in a thread of its own. The thread exists only while there is
/// work, and may outlive the queue object.
class SerialQueue {
public:
    using Clock = std::chrono::steady_clock;
    using Work = std::function<void()>;

    SerialQueue();
    SerialQueue(const SerialQueue &) = delete;
    SerialQueue &operator=(const SerialQueue &) = delete;

    /// Runs `work` after all earlier work, and destroys its captured objects on the queue's thread.
    void post(Work work);
    /// Whether the present work has been running for longer than `timeout`.
    [[nodiscard]] bool isStalled(std::chrono::milliseconds timeout) const;
    /// Blocks until all work is done; returns false if some is left at `deadline`.
    bool waitUntilIdle(Clock::time_point deadline);

private:
    struct Queue;
    static void drain(const std::shared_ptr<Queue> &queue);

    const std::shared_ptr<Queue> mQueue;
};

} // namespace platform
