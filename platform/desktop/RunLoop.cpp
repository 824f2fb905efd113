#include "platform/desktop/RunLoop.h"

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
        // The tick may destroy this very timer, so what runs is a copy.
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
        // A loop that starts throws away a quit that is still queued, as the last window's closing queues
        // one.
        if (auto *application = QCoreApplication::instance())
            QCoreApplication::sendPostedEvents(application, QEvent::Quit);
        QEventLoop loop;
        bool elapsed = false;
        QTimer::singleShot(slice, Qt::PreciseTimer, &loop, [&] {
            elapsed = true;
            loop.quit();
        });
        loop.exec();
        // An application that quits ends every loop, with whatever code, and no new one starts.
        return elapsed;
    }

    void pause(std::chrono::microseconds duration) override
    {
        QThread::usleep(static_cast<unsigned long>(duration.count()));
    }

private:
    struct Pending {
        const void *target;
        QTimer *timer;
    };
    QObject mContext;
    std::vector<Pending> mPending;
};

} // namespace

std::shared_ptr<RunLoop> makeQtRunLoop()
{
    return std::make_shared<QtRunLoop>();
}

} // namespace platform
