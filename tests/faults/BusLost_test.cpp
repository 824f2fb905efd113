#include "agent/NotificationNames.h"
#include "agent/RemoteNames.h"
#include "agent/WireTypes.h"
#include "cameras/KS7AnimatingStatusTableView.h"
#include "tests/support/PaneFixture.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/RecordingAgent.h"

#include <QPushButton>
#include <QTest>

namespace {

const QString Kitchen = QStringLiteral("00-11-22-33-44-55");
const QString Search = QStringLiteral("post KS7StartDiscovering");

} // namespace

/// A session bus that goes away under the shown pane, or stands still: the pane is left without an agent, its
/// controls go on, and what comes back is taken up.
class BusLostTest : public QObject {
    Q_OBJECT

private:
    PrivateBus mDaemon;
    std::unique_ptr<RecordingAgent> mAgent;
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
    /// A person's hand on what needs no agent, and on what would need one.
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
        mPane = std::make_unique<PaneFixture>();
        pane().defaults->agentWrites(QStringLiteral("KS7On"), true);
        pane().talkOver();
        pane().show();
        QVERIFY(pane().turnUntil([this] { return rows() == 1; }));
    }
    void cleanup()
    {
        mPane.reset();
        mAgent.reset();
    }

    void aKilledBusLeavesThePaneWithoutAnAgent()
    {
        mDaemon.kill();
        paneHasNoAgent();
        everyControlAnswers();
        mDaemon.start();
    }

    void aBusThatIsThereAgainIsTakenUpWhenThePaneIsShown()
    {
        mDaemon.kill();
        paneHasNoAgent();
        mDaemon.start();
        startAgent();
        pane().hide();
        pane().show();
        QVERIFY(pane().turnUntil([this] { return controller().isConnected() && rows() == 1; }));
        mAgent->post(NotificationNames::CameraListChanged);
        mAgent->takeJournal();
        QVERIFY(
            pane().turnUntil([this] { return mAgent->journal().contains(QStringLiteral("cameraDict")); }));
    }

    void aBusThatStandsStillCostsOneCall()
    {
        mAgent->takeJournal();
        mDaemon.stop();
        controller().cameraStatusChanged();
        paneHasNoAgent();
        everyControlAnswers();
        mDaemon.resume();
        // What was written to the bus meanwhile arrives now, in its order: the one call comes before the
        // search.
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
