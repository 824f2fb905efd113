#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace platform {

/// A repeating call that RunLoop::scheduledTimer() has started. The calls end when the timer is destroyed.
class Timer {
public:
    virtual ~Timer() = default;
};

/// The event loop of the host's main thread, where the pane's code runs. Delays use the monotonic clock.
class RunLoop {
public:
    using Work = std::function<void()>;
    virtual ~RunLoop() = default;

    /// Runs `work` once after `delay`. `target` identifies the call for cancelPreviousPerformRequests().
    virtual void performAfterDelay(const void *target, std::chrono::milliseconds delay, Work work) = 0;
    /// Queues `work` for the main thread, even if that thread is the caller. Any thread may call this.
    virtual void performOnMainThread(Work work) = 0;
    /// Cancels the calls that performAfterDelay() has scheduled for `target` and that have not run yet.
    virtual void cancelPreviousPerformRequests(const void *target) = 0;
    /// Calls `tick` every `interval` until the timer is destroyed.
    [[nodiscard]] virtual std::unique_ptr<Timer> scheduledTimer(std::chrono::milliseconds interval,
                                                                Work tick) = 0;
    /// Runs a nested event loop for the time `slice`. Returns false if the application is quitting; the
    /// caller must then return.
    virtual bool runFor(std::chrono::milliseconds slice) = 0;
    /// Runs a nested event loop until wake(). Returns false if the application quits earlier; the caller must
    /// then return.
    virtual bool runUntilWoken() = 0;
    /// Makes every runUntilWoken() in progress return. Main thread only.
    virtual void wake() = 0;
    /// Blocks the calling thread for `duration` without running an event loop.
    virtual void pause(std::chrono::microseconds duration) = 0;
};

std::shared_ptr<RunLoop> makeQtRunLoop();

} // namespace platform
