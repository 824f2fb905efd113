#include "platform/SerialWorker.h"

#include "platform/LogCategory.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <system_error>
#include <thread>

using namespace std::chrono_literals;

namespace platform {

struct SerialWorker::Queue {
    std::mutex lock;
    std::condition_variable changed;
    std::deque<Work> works;
    bool draining = false;
};

SerialWorker::SerialWorker()
    : mQueue(std::make_shared<Queue>())
{
}

SerialWorker::~SerialWorker()
{
    constexpr auto Patience = 2s;
    std::unique_lock guard(mQueue->lock);
    mQueue->changed.wait_for(guard, Patience, [this] { return !mQueue->draining; });
}

void SerialWorker::post(Work work)
{
    const std::lock_guard guard(mQueue->lock);
    mQueue->works.push_back(std::move(work));
    if (mQueue->draining)
        return;
    try {
        std::thread([queue = mQueue] { drain(queue); }).detach();
        mQueue->draining = true;
    } catch (const std::system_error &error) {
        // No thread is to be had: the work stays queued for the next post.
        qCWarning(KS7_PLATFORM, "no thread for the capture: %s", error.what());
    }
}

void SerialWorker::drain(const std::shared_ptr<Queue> &queue)
{
    std::unique_lock guard(queue->lock);
    while (!queue->works.empty()) {
        auto work = std::move(queue->works.front());
        queue->works.pop_front();
        guard.unlock();
        work();
        work = nullptr;
        guard.lock();
    }
    queue->draining = false;
    queue->changed.notify_all();
}

} // namespace platform
