#include "platform/base/RunLoop.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEventLoop>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

using namespace std::chrono_literals;

/// Tests nested runs of the loop. They deliver events, sleep between events and end when the application
/// quits.
class RunLoopTest : public QObject {
    Q_OBJECT
private:
    /// Runs the application and calls `insideIt` in its event loop. Returns the application's exit code.
    static int runApplication(const std::function<void()> &insideIt);

    std::shared_ptr<platform::RunLoop> runLoop = platform::makeQtRunLoop();

private Q_SLOTS:
    void aSliceServesEventsAndEnds();
    void aSliceSleepsWhileNothingHappens();
    void aQuitInsideASliceEndsIt_data();
    void aQuitInsideASliceEndsIt();
    void aQuitBetweenSlicesIsNotLost();
    void aQuitQueuedBetweenSlicesIsNotLost();
    void slicesInsideSlicesAllEnd();
    void aWaitServesEventsUntilItIsWoken();
    void aWaitSleeps();
    void aWakeEndsEveryWait();
    void aQuitEndsAWait();
    void aPauseServesNothing();
};

int RunLoopTest::runApplication(const std::function<void()> &insideIt)
{
    QTimer::singleShot(0, QCoreApplication::instance(), insideIt);
    return QCoreApplication::exec();
}

void RunLoopTest::aSliceServesEventsAndEnds()
{
    bool served = false;
    runApplication([&] {
        runLoop->performAfterDelay(this, 1ms, [&] { served = true; });
        QVERIFY(runLoop->runFor(20ms));
        QCoreApplication::quit();
    });
    QVERIFY(served);
}

void RunLoopTest::aSliceSleepsWhileNothingHappens()
{
    QSignalSpy sleeps(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock);
    constexpr int Rounds = 10;
    runApplication([&] {
        sleeps.clear();
        for (int round = 0; round < Rounds; ++round)
            runLoop->runFor(10ms);
        QCoreApplication::quit();
    });
    // Nothing happens during the calls of runFor(), so the thread sleeps at least once in each. Over ten
    // sleeps per call would mean that it wakes up without events.
    QVERIFY(sleeps.size() >= Rounds);
    QVERIFY(sleeps.size() <= 10 * Rounds);
}

void RunLoopTest::aQuitInsideASliceEndsIt_data()
{
    QTest::addColumn<int>("code");
    QTest::newRow("0") << 0;
    QTest::newRow("1") << 1;
    QTest::newRow("-1") << -1;
}

void RunLoopTest::aQuitInsideASliceEndsIt()
{
    QFETCH(int, code);
    bool goesOn = true;
    const int ended = runApplication([&] {
        runLoop->performAfterDelay(this, 1ms, [&] { QCoreApplication::exit(code); });
        goesOn = runLoop->runFor(1h);
    });
    QVERIFY(!goesOn);
    QCOMPARE(ended, code);
}

void RunLoopTest::aQuitBetweenSlicesIsNotLost()
{
    bool goesOn = true;
    runApplication([&] {
        QVERIFY(runLoop->runFor(1ms));
        QCoreApplication::exit(0);
        goesOn = runLoop->runFor(1h);
    });
    QVERIFY(!goesOn);
}

void RunLoopTest::aQuitQueuedBetweenSlicesIsNotLost()
{
    bool goesOn = true;
    runApplication([&] {
        QVERIFY(runLoop->runFor(1ms));
        QCoreApplication::postEvent(QCoreApplication::instance(), new QEvent(QEvent::Quit));
        goesOn = runLoop->runFor(1h);
    });
    QVERIFY(!goesOn);
}

void RunLoopTest::slicesInsideSlicesAllEnd()
{
    QList<bool> goOn;
    runApplication([&] {
        runLoop->performAfterDelay(this, 1ms, [&] {
            runLoop->performAfterDelay(this, 1ms, [] { QCoreApplication::exit(0); });
            goOn.append(runLoop->runFor(1h));
        });
        goOn.append(runLoop->runFor(1h));
    });
    QCOMPARE(goOn, QList<bool>({false, false}));
}

void RunLoopTest::aWaitServesEventsUntilItIsWoken()
{
    int served = 0;
    const auto timer = runLoop->scheduledTimer(1ms, [&] {
        if (++served == 3)
            runLoop->wake();
    });
    QVERIFY(runLoop->runUntilWoken());
    QCOMPARE(served, 3);
}

void RunLoopTest::aWaitSleeps()
{
    const QSignalSpy sleeps(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock);
    runLoop->performAfterDelay(this, 300ms, [&] { runLoop->wake(); });
    QVERIFY(runLoop->runUntilWoken());
    QVERIFY2(sleeps.size() < 10, qPrintable(QString::number(sleeps.size())));
}

void RunLoopTest::aWakeEndsEveryWait()
{
    QList<bool> woken;
    runLoop->performAfterDelay(this, 1ms, [&] {
        runLoop->performAfterDelay(this, 1ms, [&] { runLoop->wake(); });
        woken.append(runLoop->runUntilWoken());
    });
    woken.append(runLoop->runUntilWoken());
    QCOMPARE(woken, QList<bool>({true, true}));
}

void RunLoopTest::aQuitEndsAWait()
{
    bool goesOn = true;
    runApplication([&] {
        runLoop->performAfterDelay(this, 1ms, [] { QCoreApplication::exit(0); });
        goesOn = runLoop->runUntilWoken();
    });
    QVERIFY(!goesOn);
}

void RunLoopTest::aPauseServesNothing()
{
    class Receiver : public QObject {
    public:
        explicit Receiver(QStringList *served)
            : mServed(served)
        {
        }
        bool event(QEvent *) override
        {
            mServed->append(QStringLiteral("event"));
            return true;
        }

    private:
        QStringList *mServed;
    };
    QStringList served;
    QStringList servedInThePause;
    Receiver receiver(&served);
    runApplication([&] {
        QCoreApplication::postEvent(&receiver, new QEvent(QEvent::User));
        runLoop->performOnMainThread([&] { served.append(QStringLiteral("queued call")); });
        runLoop->performAfterDelay(this, 1ms, [&] {
            served.append(QStringLiteral("delayed call"));
            QCoreApplication::quit();
        });
        runLoop->pause(20ms);
        servedInThePause = served;
    });
    QCOMPARE(servedInThePause, QStringList());
    QCOMPARE(served,
             QStringList(
                 {QStringLiteral("event"), QStringLiteral("queued call"), QStringLiteral("delayed call")}));
}

QTEST_MAIN(RunLoopTest)
#include "RunLoop_test.moc"
