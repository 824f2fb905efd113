#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace platform {

/// A scheduled repeating call; destroying it invalidates it.
class Timer {
public:
    virtual ~Timer() = default;
};

/// The host's main run loop, on which everything of the pane runs. Delays run on the monotonic clock.
class RunLoop {
public:
    using Work = std::function<void()>;
    virtual ~RunLoop() = default;

    /// Runs `work` once after `delay`. `target` identifies the call for cancelPreviousPerformRequests().
    virtual void performAfterDelay(const void *target, std::chrono::milliseconds delay, Work work) = 0;
    /// Queues `work` for the main thread; it never runs inside this call. Any thread.
    virtual void performOnMainThread(Work work) = 0;
    /// Removes every delayed call of `target` that has not run yet.
    virtual void cancelPreviousPerformRequests(const void *target) = 0;
    /// Calls `tick` every `interval` until the timer is destroyed.
    [[nodiscard]] virtual std::unique_ptr<Timer> scheduledTimer(std::chrono::milliseconds interval,
                                                                Work tick) = 0;
    /// Runs a nested event loop for `slice`. Returns false when the application was told to quit; the caller
    /// must then return.
    virtual bool runFor(std::chrono::milliseconds slice) = 0;
    /// Runs a nested event loop until wake(), without a timer. Result as of runFor().
    virtual bool runUntilWoken() = 0;
    /// Ends every running runUntilWoken(). Main thread only.
    virtual void wake() = 0;
    /// Blocks the thread without running the event loop.
    virtual void pause(std::chrono::microseconds duration) = 0;
};

std::shared_ptr<RunLoop> makeQtRunLoop();

} // namespace platform
