#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace platform {

/// Runs blocking work off the main thread, one piece after another. Its thread exists only while there is
/// work, and may outlive the queue.
class SerialQueue {
public:
    using Clock = std::chrono::steady_clock;
    using Work = std::function<void()>;

    SerialQueue();
    SerialQueue(const SerialQueue &) = delete;
    SerialQueue &operator=(const SerialQueue &) = delete;

    /// Runs `work` after the work posted before. Captured objects are destroyed on the worker's thread.
    void post(Work work);
    /// Whether a piece of work has been under way for longer than `patience`.
    [[nodiscard]] bool isStalled(std::chrono::milliseconds patience) const;
    /// Waits until the queue is empty. False when work is left at `deadline`.
    bool waitUntilIdle(Clock::time_point deadline);

private:
    struct Queue;
    static void drain(const std::shared_ptr<Queue> &queue);

    const std::shared_ptr<Queue> mQueue;
};

} // namespace platform
