#include "platform/capture/SerialQueue.h"
#include "tests/support/Timeout.h"

#include <QDir>
#include <QTest>

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <future>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

using namespace std::chrono_literals;
using platform::SerialQueue;

namespace {

/// A gate for worker threads: pass() blocks the calling thread until the test calls open().
class Gate {
public:
    void pass()
    {
        std::unique_lock guard(mLock);
        ++mArrived;
        mChanged.notify_all();
        mChanged.wait(guard, [this] { return mOpen; });
    }
    void waitForArrival()
    {
        std::unique_lock guard(mLock);
        mChanged.wait(guard, [this] { return mArrived > 0; });
    }
    void open()
    {
        const std::lock_guard guard(mLock);
        mOpen = true;
        mChanged.notify_all();
    }

private:
    std::mutex mLock;
    std::condition_variable mChanged;
    int mArrived = 0;
    bool mOpen = false;
};

SerialQueue::Clock::time_point inTime()
{
    return SerialQueue::Clock::now() + 30s;
}

int threads()
{
    return static_cast<int>(
        QDir(QStringLiteral("/proc/self/task")).entryList(QDir::AllDirs | QDir::NoDotAndDotDot).size());
}

} // namespace

/// Tests a queue that runs blocking work outside of the main thread.
class SerialQueueTest : public QObject {
    Q_OBJECT

private:
    std::shared_ptr<Gate> mGate;
    int mThreadsAtRest = 0;

    void postWorkThatHangs(SerialQueue &worker)
    {
        worker.post([gate = mGate] { gate->pass(); });
        mGate->waitForArrival();
    }

private Q_SLOTS:
    void initTestCase() { mThreadsAtRest = threads(); }
    void init() { mGate = std::make_shared<Gate>(); }
    void cleanup()
    {
        mGate->open();
        QTRY_COMPARE_WITH_TIMEOUT(threads(), mThreadsAtRest, Timeout);
    }

    void worksInTheOrderOfPosting()
    {
        SerialQueue worker;
        std::vector<int> done;
        for (int i = 0; i < 100; ++i)
            worker.post([&done, i] { done.push_back(i); });
        QVERIFY(worker.waitUntilIdle(inTime()));
        QCOMPARE(done.size(), std::size_t(100));
        QVERIFY(std::is_sorted(done.begin(), done.end()));
    }

    void itsThreadEndsWithTheWork()
    {
        SerialQueue worker;
        QCOMPARE(threads(), mThreadsAtRest);
        postWorkThatHangs(worker);
        QCOMPARE(threads(), mThreadsAtRest + 1);
        mGate->open();
        QTRY_COMPARE_WITH_TIMEOUT(threads(), mThreadsAtRest, Timeout);
    }

    void destroysTheWorkOnItsThread()
    {
        SerialQueue worker;
        std::thread::id destroyer;
        std::shared_ptr<int> held(new int(1), [&destroyer](const int *number) {
            destroyer = std::this_thread::get_id();
            delete number;
        });
        worker.post([held = std::move(held)] {});
        QVERIFY(worker.waitUntilIdle(inTime()));
        QVERIFY(destroyer != std::thread::id());
        QVERIFY(destroyer != std::this_thread::get_id());
    }

    void destroyingTheWorkDoesNotBlockPosts()
    {
        SerialQueue worker;
        std::future<void> post;
        bool wasFree = false;
        std::shared_ptr<int> held(new int(1), [&](const int *number) {
            post = std::async(std::launch::async, [&worker] { worker.post([] {}); });
            wasFree = post.wait_for(std::chrono::milliseconds(Timeout)) == std::future_status::ready;
            delete number;
        });
        worker.post([held = std::move(held)] {});
        QVERIFY(worker.waitUntilIdle(inTime() + std::chrono::milliseconds(Timeout)));
        post.get();
        QVERIFY(wasFree);
    }

    void isStalledByWorkThatTakesTooLong()
    {
        SerialQueue worker;
        QVERIFY(!worker.isStalled(0ms));
        postWorkThatHangs(worker);
        QVERIFY(!worker.isStalled(1h));
        QTRY_VERIFY_WITH_TIMEOUT(worker.isStalled(10ms), Timeout);
        mGate->open();
        QVERIFY(worker.waitUntilIdle(inTime()));
        QVERIFY(!worker.isStalled(0ms));
    }

    void waitReportsUnfinishedWork()
    {
        SerialQueue worker;
        QVERIFY(worker.waitUntilIdle({}));
        postWorkThatHangs(worker);
        QVERIFY(!worker.waitUntilIdle(SerialQueue::Clock::now() + 10ms));
    }

    void hungWorkOutlivesTheQueue()
    {
        auto done = std::make_shared<std::atomic<bool>>(false);
        {
            SerialQueue worker;
            postWorkThatHangs(worker);
            worker.post([done] { *done = true; });
        }
        QVERIFY(!*done);
        mGate->open();
        QTRY_VERIFY_WITH_TIMEOUT(done->load(), Timeout);
    }
};

QTEST_GUILESS_MAIN(SerialQueueTest)
#include "SerialQueue_test.moc"
