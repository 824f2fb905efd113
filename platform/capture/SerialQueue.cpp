#include "platform/capture/SerialQueue.h"

#include "platform/base/LogCategory.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>

namespace platform {

struct SerialQueue::Queue {
    std::mutex lock;
    std::condition_variable changed;
    std::deque<Work> works;
    std::optional<Clock::time_point> begun; // Start time of the running work.
    bool draining = false;
};

SerialQueue::SerialQueue()
    : mQueue(std::make_shared<Queue>())
{
}

void SerialQueue::post(Work work)
{
    const std::lock_guard guard(mQueue->lock);
    mQueue->works.push_back(std::move(work));
    if (mQueue->draining)
        return;
    try {
        std::thread([queue = mQueue] { drain(queue); }).detach();
        mQueue->draining = true;
    } catch (const std::system_error &error) {
        // Without a thread, the work stays in the queue. The next post() tries again to start a thread.
        qCWarning(PLATFORM_LOG, "no thread could be started for the capture: %s", error.what());
    }
}

bool SerialQueue::isStalled(std::chrono::milliseconds timeout) const
{
    const std::lock_guard guard(mQueue->lock);
    return mQueue->begun && Clock::now() - *mQueue->begun > timeout;
}

bool SerialQueue::waitUntilIdle(Clock::time_point deadline)
{
    std::unique_lock guard(mQueue->lock);
    return mQueue->changed.wait_until(guard, deadline, [this] { return !mQueue->draining; });
}

void SerialQueue::drain(const std::shared_ptr<Queue> &queue)
{
    std::unique_lock guard(queue->lock);
    while (!queue->works.empty()) {
        auto work = std::move(queue->works.front());
        queue->works.pop_front();
        queue->begun = Clock::now();
        guard.unlock();
        work();
        work = nullptr;
        guard.lock();
        queue->begun.reset();
    }
    queue->draining = false;
    queue->changed.notify_all();
}

} // namespace platform
