#pragma once

#include <functional>
#include <memory>

namespace platform {

/// Runs work that may block, one piece after the other, away from the main thread. Its thread exists only
/// while there is work.
class SerialWorker {
public:
    using Work = std::function<void()>;

    SerialWorker();
    /// Waits a moment for the work that is left; what hangs is left to itself.
    ~SerialWorker();
    SerialWorker(const SerialWorker &) = delete;
    SerialWorker &operator=(const SerialWorker &) = delete;

    /// Runs `work` after what was posted before. Whatever it captures is destroyed on the worker's thread.
    void post(Work work);

private:
    struct Queue;
    static void drain(const std::shared_ptr<Queue> &queue);

    std::shared_ptr<Queue> mQueue;
};

} // namespace platform
