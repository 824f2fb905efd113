#include "agent/NotificationNames.h"
#include "agent/RemoteNames.h"
#include "agent/WireTypes.h"
#include "cameras/KS7AnimatingStatusTableView.h"
#include "tests/support/PaneFixture.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/RecordingAgent.h"

#include <QDeadlineTimer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

namespace {

const QString Kitchen = QStringLiteral("00-11-22-33-44-55");
const QString Search = QStringLiteral("post KS7StartDiscovering");
const QString Showing = QStringLiteral("post KS7SystemPrefsShowing");

} // namespace

/// Tests a session bus that dies, hangs or is absent while the pane is shown. The pane then reports no agent,
/// its controls keep working, and it connects over the next bus.
class BusLostTest : public QObject {
    Q_OBJECT

private:
    PrivateBus mDaemon;
    std::unique_ptr<RecordingAgent> mAgent;
    std::shared_ptr<platform::SessionBus> mBus;
    std::unique_ptr<PaneFixture> mPane;

    PaneFixture &pane() { return *mPane; }
    KS7SettingsWindowController &controller() { return pane().controller(); }
    int rows() { return controller().numberOfRowsInTableView(pane().outlets().cameraListTable); }
    int deaths() { return pane().localCenter->postCount(platform::NSConnectionDidDieNotification); }

    void startAgent()
    {
        mAgent.reset();
        mAgent = std::make_unique<RecordingAgent>();
        mAgent->answer(QStringLiteral("cameraDict"),
                       {QVariant::fromValue(CameraDictionary{{Kitchen, {{RecordKeys::Status, 1}}}})});
        mAgent->answer(QStringLiteral("sortedDeviceList"), {QStringList{Kitchen}});
        mAgent->publishBoth();
    }
    void paneHasNoAgent()
    {
        QVERIFY(pane().turnUntil([this] { return !controller().isConnected() && deaths() == 1; }));
        QCOMPARE(rows(), 0);
    }
    void loseTheBus()
    {
        mDaemon.kill();
        paneHasNoAgent();
    }
    /// Waits for the end of the bus connection and returns whether it ended. Does not run the event loop, so
    /// the pane is not notified.
    bool isLostUnheard()
    {
        const QDeadlineTimer patience(Timeout);
        while (mBus->connection().isConnected() && !patience.hasExpired())
            QThread::yieldCurrentThread();
        return !mBus->connection().isConnected();
    }
    void loseTheBusInThePause()
    {
        pane().runLoop->onPause = [this] {
            mDaemon.kill();
            QVERIFY(isLostUnheard());
            pane().runLoop->onPause = nullptr;
        };
    }
    void bringTheBusBack()
    {
        mDaemon.start();
        startAgent();
    }
    void makePane()
    {
        mPane = std::make_unique<PaneFixture>();
        pane().defaults->agentWrites(QStringLiteral("KS7On"), true);
        mBus = std::make_shared<platform::SessionBus>();
        pane().talkOver(mBus);
    }
    /// Checks that the agent receives the post "KS7SystemPrefsShowing" once, and before any call.
    void showingIsAnnounced()
    {
        QVERIFY(pane().turnUntil([this] { return mAgent->journal().contains(Showing); }));
        QCOMPARE(mAgent->journal().count(Showing), 1);
        QCOMPARE(mAgent->journal().constFirst(), Showing);
    }
    void agentIsHeardAgain()
    {
        mAgent->takeJournal();
        mAgent->post(NotificationNames::CameraListChanged);
        QVERIFY(
            pane().turnUntil([this] { return mAgent->journal().contains(QStringLiteral("cameraDict")); }));
    }
    /// Uses controls that work without an agent and controls that need one.
    void everyControlAnswers()
    {
        auto &outlets = pane().outlets();
        outlets.addButton->click();
        outlets.startButton->click();
        controller().cameraStatusChanged();
        controller().enableUSBOptions();
        pane().runLoop->turn();
        QVERIFY(!controller().isConnected());
    }

private Q_SLOTS:
    void init()
    {
        startAgent();
        makePane();
        pane().show();
        QVERIFY(pane().turnUntil([this] { return rows() == 1; }));
    }
    void cleanup()
    {
        mPane.reset();
        mBus.reset();
        mAgent.reset();
    }

    void aKilledBusLeavesThePaneWithoutAnAgent()
    {
        loseTheBus();
        everyControlAnswers();
        mDaemon.start();
    }

    void aBusThatReturnsIsUsedWhenThePaneIsShown()
    {
        loseTheBus();
        bringTheBusBack();
        pane().hide();
        pane().show();
        QVERIFY(pane().turnUntil([this] { return controller().isConnected() && rows() == 1; }));
        showingIsAnnounced();
        agentIsHeardAgain();
    }

    void anUnreportedLossDoesNotPreventTheNextShowing()
    {
        mDaemon.kill();
        bringTheBusBack();
        QVERIFY(isLostUnheard());
        QVERIFY(controller().isConnected());
        pane().pane->willSelect();
        QCOMPARE(deaths(), 1);
        QVERIFY(controller().isConnected());
        QCOMPARE(rows(), 1);
        showingIsAnnounced();
        agentIsHeardAgain();
        QCOMPARE(deaths(), 1);
    }

    void aBusThatStartsAfterThePaneIsUsedWhenThePaneIsShown()
    {
        mPane.reset();
        mDaemon.kill();
        makePane();
        pane().load();
        QVERIFY(!controller().isConnected());
        bringTheBusBack();
        pane().show();
        QVERIFY(pane().turnUntil([this] { return controller().isConnected() && rows() == 1; }));
        showingIsAnnounced();
        agentIsHeardAgain();
    }

    void aSearchIsPostedOnARestartedBus()
    {
        loseTheBus();
        bringTheBusBack();
        pane().outlets().addButton->click();
        QVERIFY(pane().turnUntil([this] { return mAgent->journal().contains(Search); }));
    }

    void thePaneConnectsToAnAgentOnTheNextBusWithoutAClick()
    {
        loseTheBus();
        const QSignalSpy opened(mBus.get(), &platform::BusConnection::opened);
        mDaemon.start();
        QVERIFY(pane().turnUntil([&] { return opened.count() == 1; }));
        QVERIFY(!controller().isConnected());
        startAgent();
        mAgent->post(NotificationNames::AgentStarted);
        QVERIFY(pane().turnUntil([this] { return controller().isConnected() && rows() == 1; }));
        agentIsHeardAgain();
    }

    void thePaneConnectsToAnAgentThatStartedBeforeItFoundTheBus()
    {
        loseTheBus();
        bringTheBusBack();
        mAgent->post(NotificationNames::AgentStarted);
        QVERIFY(pane().turnUntil([this] { return controller().isConnected() && rows() == 1; }));
        agentIsHeardAgain();
        QCOMPARE(deaths(), 1);
    }

    void severalBusesInARowAreUsed()
    {
        for (int bus = 1; bus <= 3; ++bus) {
            mDaemon.kill();
            QVERIFY(pane().turnUntil([&] { return !controller().isConnected() && deaths() == bus; }));
            bringTheBusBack();
            QVERIFY(pane().turnUntil([this] { return controller().isConnected() && rows() == 1; }));
        }
    }

    void aBusLostBetweenAttemptsIsNotAConnection_data()
    {
        QTest::addColumn<bool>("whileLoading");
        QTest::newRow("at load") << true;
        QTest::newRow("at showing") << false;
    }
    void aBusLostBetweenAttemptsIsNotAConnection()
    {
        QFETCH(bool, whileLoading);
        makePane();
        if (!whileLoading) {
            pane().load();
            controller().prefPaneDidHide();
            pane().runLoop->turn();
        }
        const int before = deaths();
        loseTheBusInThePause();
        if (whileLoading)
            pane().load();
        else
            controller().setupConnections();
        QCOMPARE(deaths(), before);
        QVERIFY(pane().turnUntil([&] { return deaths() == before + 1; }));
        QVERIFY(!controller().isConnected());
        QCOMPARE(rows(), 0);
        bringTheBusBack();
        QVERIFY(pane().turnUntil([this] { return controller().isConnected() && rows() == 1; }));
    }

    void aBusThatHangsWhileThePaneIsLoadedIsUsedWhenItReplies()
    {
        mPane.reset();
        mBus.reset();
        mDaemon.kill();
        mDaemon.start();
        startAgent();
        mDaemon.stop();
        makePane();
        pane().show();
        QVERIFY(!controller().isConnected());
        QCOMPARE(pane().sheets->alertTitles.constFirst(), QStringLiteral("Installation Error"));
        mDaemon.resume();
        QVERIFY(pane().turnUntil([this] { return controller().isConnected() && rows() == 1; }));
        agentIsHeardAgain();
    }

    void aStoppedBusCostsOneCall()
    {
        mAgent->takeJournal();
        mDaemon.stop();
        controller().cameraStatusChanged();
        paneHasNoAgent();
        everyControlAnswers();
        mDaemon.resume();
        // The resumed bus delivers its queued messages in order. When the agent has received the last one, a
        // post, it has received all of them.
        QVERIFY(pane().turnUntil([this] { return mAgent->journal().contains(Search); }));
        QCOMPARE(mAgent->takeJournal(), QStringList({QStringLiteral("cameraDict"), Search}));
        QCOMPARE(deaths(), 1);
        mAgent->post(NotificationNames::AgentStarted);
        QVERIFY(pane().turnUntil([this] { return controller().isConnected() && rows() == 1; }));
        QCOMPARE(mAgent->takeJournal().count(QStringLiteral("cameraDict")), 1);
    }
};

QTEST_MAIN(BusLostTest)

#include "BusLost_test.moc"
