#pragma once

#include "platform/base/RunLoop.h"
#include "tests/fakes/Journal.h"

#include <functional>
#include <memory>
#include <vector>

/// A run loop with a simulated clock. Only advance(), runFor() and pause() move the clock.
class FakeRunLoop final : public platform::RunLoop {
public:
    explicit FakeRunLoop(Journal journal);
    void performAfterDelay(const void *target, std::chrono::milliseconds delay, Work work) override;
    void performOnMainThread(Work work) override;
    void cancelPreviousPerformRequests(const void *target) override;
    std::unique_ptr<platform::Timer> scheduledTimer(std::chrono::milliseconds interval, Work tick) override;
    bool runFor(std::chrono::milliseconds slice) override;
    bool runUntilWoken() override;
    void wake() override { }
    void pause(std::chrono::microseconds duration) override;

    /// Moves the clock forward. Runs the queued work, then delayed calls and timers in the order of their due
    /// times.
    void advance(std::chrono::milliseconds time);
    /// Runs the work that is queued now. Work that is queued during the turn waits for the next turn.
    void turn();
    [[nodiscard]] std::size_t timerCount() const { return mTimers.size(); }
    [[nodiscard]] std::size_t pendingCount() const { return mDelayed.size(); }
    /// Hook that runs once in each nested run of the loop, so in runFor() and runUntilWoken().
    std::function<void()> onSlice;
    /// Hook that runs in each call of pause().
    std::function<void()> onPause;
    /// While true, runFor() and runUntilWoken() return false, as they do when the application quits.
    bool quitting = false;

private:
    friend class FakeTimer;
    struct Delayed {
        const void *target;
        std::chrono::milliseconds due;
        Work work;
    };
    struct Repeating {
        int id;
        std::chrono::milliseconds interval;
        std::chrono::milliseconds due;
        Work tick;
    };
    bool runNextDue(std::chrono::milliseconds until);

    Journal mJournal;
    std::chrono::milliseconds mNow{0};
    std::vector<Work> mQueue;
    std::vector<Delayed> mDelayed;
    std::shared_ptr<bool> mAlive = std::make_shared<bool>(true);
    std::vector<Repeating> mTimers;
    int mNextTimer = 0;
};
