#include "cameras/KS7AnimatingStatusTableView.h"
#include "platform/desktop/Workspace.h"
#include "tests/support/PaneFixture.h"

#include <QPushButton>
#include <QTest>

/// Tests the pane while another user's session is active, and when the pane's session is active again.
class ControllerPowerSessionTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<PaneFixture> mPane;
    std::shared_ptr<FakeCaptureDevice> mCamera;

    void showPaneWithPreview()
    {
        mCamera = mPane->capture->addDevice(QStringLiteral("KS-7 Wireless Webcam"));
        mPane->agent.addCamera(QStringLiteral("00-11-22-33-44-55"), QStringLiteral("Kitchen"), 4);
        mPane->agent.prefer(QStringLiteral("00-11-22-33-44-55"));
        mPane->defaults->agentWrites(QStringLiteral("KS7On"), true);
        mPane->show();
        mPane->outlets().startButton->click();
        mPane->takeJournal();
    }
    void switchAway()
    {
        mPane->workspaceCenter->deliver(platform::NSWorkspaceSessionDidResignActiveNotification);
    }
    void comeBack()
    {
        mPane->workspaceCenter->deliver(platform::NSWorkspaceSessionDidBecomeActiveNotification);
    }
    [[nodiscard]] KS7SettingsWindowController &controller() const { return mPane->controller(); }

private Q_SLOTS:
    void init() { mPane = std::make_unique<PaneFixture>(); }
    void cleanup()
    {
        mPane.reset();
        mCamera.reset();
    }

    void switchingAwayReleasesTheAgentAndTheCamera()
    {
        showPaneWithPreview();
        switchAway();
        QVERIFY(controller().isSwitchedOut());
        QVERIFY(!controller().isConnected());
        QVERIFY(!controller().isStreaming());
        QVERIFY(!controller().hasLevelsTimer());
        QVERIFY(!mPane->capture->sessions.back()->isRunning());
        QVERIFY(!mCamera->isOpen());
        const auto journal = mPane->takeJournal();
        QVERIFY(journal.indexOf(QStringLiteral("stop session"))
                < journal.indexOf(QStringLiteral("close device")));
    }

    void theLinkIsClosedBeforeThePreviewStops()
    {
        showPaneWithPreview();
        mPane->sheets->beginSheet(mPane->outlets().pinSheet, nullptr, [](QWidget *, int, void *) {});
        mPane->takeJournal();
        switchAway();
        const auto journal = mPane->takeJournal();
        const auto sheetEnded =
            journal.indexOf(QStringLiteral("end ") + mPane->outlets().pinSheet->objectName());
        const auto refreshed = journal.indexOf(QStringLiteral("synchronize"));
        const auto stopped = journal.indexOf(QStringLiteral("stop session"));
        QVERIFY(sheetEnded >= 0);
        QVERIFY2(sheetEnded < refreshed, "the refresh is that of the connection's end");
        QVERIFY(refreshed < stopped);
        QVERIFY2(journal.filter(QStringLiteral("remote ")).isEmpty(), "nothing is asked over a closed link");
    }

    void switchingAwayStopsAPreviewWithoutAnAgentToo()
    {
        showPaneWithPreview();
        controller().closeConnections();
        controller().startVideo(nullptr);
        QVERIFY(controller().isStreaming());
        switchAway();
        QVERIFY(!controller().isStreaming());
        QVERIFY(!mCamera->isOpen());
    }

    void theLogRecordsBothSwitches()
    {
        mPane->keepLog();
        mPane->show();
        mPane->takeLog();
        const QStringList lost{QStringLiteral("connectionDidDie:"), QStringLiteral("cameraStatusChanged")};
        switchAway();
        QCOMPARE(
            mPane->takeLog(),
            QStringList{QStringLiteral("Got switched out for fast user switching. Need to stop streaming")}
                + lost);
        comeBack();
        QCOMPARE(
            mPane->takeLog(),
            QStringList{QStringLiteral("Came back after being user switched. Maybe reconnect to agent.")});
        comeBack();
        QCOMPARE(mPane->takeLog(), QStringList());
    }

    void comingBackReconnectsToTheAgent()
    {
        showPaneWithPreview();
        switchAway();
        mPane->takeJournal();
        comeBack();
        QVERIFY(!controller().isSwitchedOut());
        QVERIFY(controller().isConnected());
        QVERIFY(!controller().isStreaming());
        QCOMPARE(mPane->takeJournal(QStringLiteral("connect ")).count(QStringLiteral("KS7AgentServer")), 1);
    }

    void afterComingBackTheListSaysHowToUpdateIt()
    {
        showPaneWithPreview();
        const auto *table = mPane->outlets().cameraListTable;
        switchAway();
        comeBack();
        QCOMPARE(table->placeholderText(),
                 QStringLiteral("The list of cameras is out of date. Leave this page or close this window, "
                                "and open it again."));
        QCOMPARE(mPane->outlets().addButton->toolTip(), QStringLiteral("Search for cameras to add"));
        mPane->hide();
        mPane->show();
        QCOMPARE(table->numberOfRows(), 1);
    }

    void aPreviewAfterComingBackReopensTheCamera()
    {
        showPaneWithPreview();
        switchAway();
        comeBack();
        controller().startVideo(nullptr);
        QCOMPARE(mPane->capture->sessions.size(), std::size_t(2));
        QVERIFY(mPane->capture->sessions.back()->isRunning());
        QVERIFY(mCamera->isOpen());
    }

    void comingBackWhileConnectedOnlyClearsTheFlag()
    {
        showPaneWithPreview();
        switchAway();
        controller().setupConnections();
        mPane->takeJournal();
        comeBack();
        QVERIFY(!controller().isSwitchedOut());
        QVERIFY(mPane->takeJournal(QStringLiteral("connect ")).isEmpty());
    }

    void activationWithoutResignDoesNothing()
    {
        showPaneWithPreview();
        controller().closeConnections();
        mPane->takeJournal();
        comeBack();
        QVERIFY(!controller().isSwitchedOut());
        QVERIFY(!controller().isConnected());
        QVERIFY(mPane->takeJournal().isEmpty());
    }

    void anAgentThatEndedMeanwhileIsLaunchedOnReturn()
    {
        showPaneWithPreview();
        switchAway();
        mPane->agent.running = false;
        comeBack();
        QCOMPARE(mPane->launcher->launches, 1);
        QVERIFY(!controller().isConnected());
        QVERIFY(!controller().isSwitchedOut());
    }

    void aHiddenPaneReceivesNoSessionChange()
    {
        showPaneWithPreview();
        mPane->hide();
        switchAway();
        QVERIFY(!controller().isSwitchedOut());
        comeBack();
        QVERIFY(!controller().isConnected());
    }

    void aPaneShownTwiceHandlesASwitchTwice()
    {
        mPane->keepLog();
        mPane->show();
        mPane->pane->willSelect();
        mPane->takeLog();
        switchAway();
        QCOMPARE(mPane->takeLog().count(
                     QStringLiteral("Got switched out for fast user switching. Need to stop streaming")),
                 2);
    }

    void oneHideRemovesTheSessionObserversOfEveryShowing()
    {
        mPane->keepLog();
        showPaneWithPreview();
        mPane->pane->willSelect();
        mPane->hide();
        mPane->takeJournal();
        mPane->takeLog();
        switchAway();
        QVERIFY(!controller().isSwitchedOut());
        comeBack();
        QVERIFY(!controller().isConnected());
        QCOMPARE(mPane->takeJournal(), QStringList());
        QCOMPARE(mPane->takeLog(), QStringList());
    }

    void showingClearsTheFlag()
    {
        showPaneWithPreview();
        switchAway();
        mPane->hide();
        QVERIFY(controller().isSwitchedOut());
        mPane->show();
        QVERIFY(!controller().isSwitchedOut());
    }
};

QTEST_MAIN(ControllerPowerSessionTest)
#include "ControllerPowerSession_test.moc"
