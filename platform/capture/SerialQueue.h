#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace platform {

/// Runs work that may block, one piece after the other, away from the main thread. Its thread exists only
/// while there is work, and outlives the worker then.
class SerialQueue {
public:
    using Clock = std::chrono::steady_clock;
    using Work = std::function<void()>;

    SerialQueue();
    SerialQueue(const SerialQueue &) = delete;
    SerialQueue &operator=(const SerialQueue &) = delete;

    /// Runs `work` after what was posted before. Whatever it captures is destroyed on the worker's thread.
    void post(Work work);
    /// Whether a piece of work has been under way for longer than `patience`.
    [[nodiscard]] bool isStalled(std::chrono::milliseconds patience) const;
    /// False when there still is work at `deadline`.
    bool waitUntilIdle(Clock::time_point deadline);

private:
    struct Queue;
    static void drain(const std::shared_ptr<Queue> &queue);

    const std::shared_ptr<Queue> mQueue;
};

} // namespace platform
