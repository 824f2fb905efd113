#include "platform/base/RunLoop.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QObject>
#include <QThread>
#include <QTimer>

#include <vector>

namespace platform {
namespace {

class QtTimer final : public Timer {
public:
    QtTimer(std::chrono::milliseconds interval, RunLoop::Work tick)
    {
        mTimer.setTimerType(Qt::PreciseTimer);
        // Call a copy of `tick`: the call may destroy this timer, and with it the function that is running.
        QObject::connect(&mTimer, &QTimer::timeout, &mTimer, [tick = std::move(tick)] {
            const auto copy = tick;
            copy();
        });
        mTimer.start(interval);
    }

private:
    QTimer mTimer;
};

class QtRunLoop final : public RunLoop {
public:
    void performAfterDelay(const void *target, std::chrono::milliseconds delay, Work work) override
    {
        auto *timer = new QTimer(&mContext);
        timer->setSingleShot(true);
        timer->setTimerType(Qt::PreciseTimer);
        mPending.push_back({target, timer});
        QObject::connect(timer, &QTimer::timeout, timer, [this, timer, work = std::move(work)] {
            std::erase_if(mPending, [timer](const Pending &pending) { return pending.timer == timer; });
            timer->deleteLater();
            const auto copy = work;
            copy();
        });
        timer->start(delay);
    }

    void performOnMainThread(Work work) override
    {
        QMetaObject::invokeMethod(&mContext, std::move(work), Qt::QueuedConnection);
    }

    void cancelPreviousPerformRequests(const void *target) override
    {
        std::erase_if(mPending, [target](const Pending &pending) {
            if (pending.target != target)
                return false;
            delete pending.timer;
            return true;
        });
    }

    std::unique_ptr<Timer> scheduledTimer(std::chrono::milliseconds interval, Work tick) override
    {
        return std::make_unique<QtTimer>(interval, std::move(tick));
    }

    bool runFor(std::chrono::milliseconds slice) override
    {
        QEventLoop loop;
        bool elapsed = false;
        QTimer::singleShot(slice, Qt::PreciseTimer, &loop, [&] {
            elapsed = true;
            loop.quit();
        });
        run(loop);
        return elapsed;
    }

    bool runUntilWoken() override
    {
        Waiting waiting;
        mWaiting.push_back(&waiting);
        run(waiting.loop);
        std::erase(mWaiting, &waiting);
        return waiting.woken;
    }

    void wake() override
    {
        for (auto *waiting : mWaiting) {
            waiting->woken = true;
            waiting->loop.quit();
        }
    }

    void pause(std::chrono::microseconds duration) override
    {
        QThread::usleep(static_cast<unsigned long>(duration.count()));
    }

private:
    /// One runUntilWoken() in progress. It ends on wake() or when the application quits.
    struct Waiting {
        QEventLoop loop;
        bool woken = false;
    };

    /// Runs the nested loop until its quit() or until the application quits. Returns at once if the
    /// application is already quitting.
    static void run(QEventLoop &loop)
    {
        // Deliver a queued QEvent::Quit first, because QEventLoop::exec() would discard it. Qt posts one when
        // the last window closes.
        if (auto *application = QCoreApplication::instance())
            QCoreApplication::sendPostedEvents(application, QEvent::Quit);
        loop.exec();
    }

    struct Pending {
        const void *target;
        QTimer *timer;
    };
    QObject mContext;
    std::vector<Pending> mPending;
    std::vector<Waiting *> mWaiting;
};

} // namespace

std::shared_ptr<RunLoop> makeQtRunLoop()
{
    return std::make_shared<QtRunLoop>();
}

} // namespace platform
