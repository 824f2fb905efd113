#include "tests/fakes/FakeRunLoop.h"

#include <algorithm>

using namespace std::chrono;

class FakeTimer final : public platform::Timer {
public:
    FakeTimer(FakeRunLoop &loop, int id)
        : mLoop(loop)
        , mLoopAlive(loop.mAlive)
        , mId(id)
    {
    }
    ~FakeTimer() override
    {
        if (mLoopAlive.lock())
            std::erase_if(mLoop.mTimers, [this](const auto &timer) { return timer.id == mId; });
    }

private:
    FakeRunLoop &mLoop;
    std::weak_ptr<bool> mLoopAlive;
    int mId;
};

FakeRunLoop::FakeRunLoop(Journal journal)
    : mJournal(std::move(journal))
{
}

void FakeRunLoop::performAfterDelay(const void *target, milliseconds delay, Work work)
{
    mDelayed.push_back({target, mNow + delay, std::move(work)});
}

void FakeRunLoop::performOnMainThread(Work work)
{
    mQueue.push_back(std::move(work));
}

void FakeRunLoop::cancelPreviousPerformRequests(const void *target)
{
    std::erase_if(mDelayed, [target](const Delayed &delayed) { return delayed.target == target; });
}

std::unique_ptr<platform::Timer> FakeRunLoop::scheduledTimer(milliseconds interval, Work tick)
{
    mTimers.push_back({++mNextTimer, interval, mNow + interval, std::move(tick)});
    return std::make_unique<FakeTimer>(*this, mNextTimer);
}

bool FakeRunLoop::runFor(milliseconds slice)
{
    note(mJournal, QStringLiteral("slice %1").arg(slice.count()));
    if (onSlice)
        onSlice();
    if (!quitting)
        advance(slice);
    return !quitting;
}

bool FakeRunLoop::runUntilWoken()
{
    note(mJournal, QStringLiteral("wait"));
    if (onSlice)
        onSlice();
    return !quitting;
}

void FakeRunLoop::pause(microseconds duration)
{
    note(mJournal, QStringLiteral("pause %1").arg(duration.count()));
    mNow += duration_cast<milliseconds>(duration);
    // Copy the function before the call, because onPause may replace or clear itself.
    if (const auto happens = onPause)
        happens();
}

void FakeRunLoop::turn()
{
    auto queue = std::move(mQueue);
    mQueue.clear();
    for (const auto &work : queue)
        work();
}

bool FakeRunLoop::runNextDue(milliseconds until)
{
    const auto earlier = [](const auto &a, const auto &b) { return a.due < b.due; };
    const auto delayed = std::min_element(mDelayed.begin(), mDelayed.end(), earlier);
    const auto timer = std::min_element(mTimers.begin(), mTimers.end(), earlier);
    const bool delayedIsDue = delayed != mDelayed.end() && delayed->due <= until;
    const bool timerIsDue = timer != mTimers.end() && timer->due <= until;
    if (delayedIsDue && !(timerIsDue && timer->due < delayed->due)) {
        const auto work = delayed->work;
        mNow = delayed->due;
        mDelayed.erase(delayed);
        work();
        return true;
    }
    if (!timerIsDue)
        return false;
    const auto tick = timer->tick;
    mNow = timer->due;
    timer->due += timer->interval;
    tick();
    return true;
}

void FakeRunLoop::advance(milliseconds time)
{
    const auto until = mNow + time;
    do {
        while (!mQueue.empty())
            turn();
    } while (runNextDue(until));
    mNow = until;
}
