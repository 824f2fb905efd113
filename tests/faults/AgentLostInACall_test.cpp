#include "agent/NotificationNames.h"
#include "agent/RemoteNames.h"
#include "cameras/KS7AnimatingStatusTableView.h"
#include "platform/desktop/Workspace.h"
#include "platform/power/PowerManagement.h"
#include "tests/support/PaneFixture.h"
#include "tests/support/RecordingAgent.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <algorithm>
#include <thread>

using namespace std::chrono_literals;

namespace {

const QString Kitchen = QStringLiteral("00-11-22-33-44-55");
const QString Desk = QStringLiteral("66-77-88-99-AA-BB");

} // namespace

/// Tests the loss of the agent inside each remote call and each user action. A hanging agent costs one
/// timeout, a dead agent none. The pane makes no further call, receives one death notification and connects
/// to the next agent.
class AgentLostInACallTest : public QObject {
    Q_OBJECT

private:
    using Deed = void (AgentLostInACallTest::*)();

    std::unique_ptr<RecordingAgent> mAgent;
    std::unique_ptr<PaneFixture> mPane;
    QStringList mHeard;

    PaneFixture &pane() { return *mPane; }
    RecordingAgent &agent() { return *mAgent; }
    KS7SettingsWindowController &controller() { return pane().controller(); }
    int deaths() { return pane().localCenter->postCount(platform::NSConnectionDidDieNotification); }
    int rows() { return controller().numberOfRowsInTableView(pane().outlets().cameraListTable); }

    void startAgent()
    {
        mAgent.reset();
        mAgent = std::make_unique<RecordingAgent>();
        agent().knowTwoCameras(Kitchen, Desk);
        agent().answer(QStringLiteral("connectedCamHasBTAddress"), {true});
        agent().publishBoth();
    }
    void turn() { pane().turn(); }

    // Actions of the user, the agent or the machine, each of which makes remote calls.

    void showAgain() { pane().pane->willSelect(); }
    void refresh()
    {
        controller().cameraStatusChanged();
        turn();
    }
    void pollMeters()
    {
        pane().outlets().startButton->click();
        pane().runLoop->advance(100ms);
    }
    void chooseCamera() { controller().setActiveCamera(nullptr); }
    void removeCamera() { controller().removeCamera(nullptr); }
    void rename()
    {
        controller().showCameraProperties(nullptr);
        pane().outlets().cameraNameText->setText(QStringLiteral("Door"));
        controller().propertiesOkay(nullptr);
    }
    void changePasskey()
    {
        controller().changePIN(nullptr);
        pane().outlets().newPINText->setText(QStringLiteral("1234"));
        controller().pinOkay(nullptr);
        pane().runLoop->advance(500ms);
    }
    void hearOfNewPasskey()
    {
        controller().passKeySet({NotificationNames::PassKeySet,
                                 nullptr,
                                 {{UserInfoKeys::Result, 0}, {UserInfoKeys::PassKey, QStringLiteral("1")}}});
    }
    void plugIn() { controller().enableUSBOptions(); }
    /// Starts a firmware update that loses its agent. The pane would wait for the update's end until the host
    /// quits. So the run loop reports a quit as soon as the agent is lost.
    void updateFirmware()
    {
        controller().installFirmware(nullptr);
        controller().firmwareContinue(nullptr);
        pane().runLoop->onSlice = [this] {
            turn();
            pane().runLoop->quitting = !controller().isConnected();
        };
        controller().firmwareContinue(nullptr);
        pane().runLoop->onSlice = nullptr;
        pane().runLoop->quitting = false;
    }
    void fallAsleep()
    {
        pane().power->send(platform::kIOMessageSystemWillSleep, this);
        turn();
    }

    static const QHash<QString, Deed> &deeds()
    {
        static const QHash<QString, Deed> all{
            {QStringLiteral("showing the pane again"), &AgentLostInACallTest::showAgain},
            {QStringLiteral("a refresh"), &AgentLostInACallTest::refresh},
            {QStringLiteral("the meters' timer"), &AgentLostInACallTest::pollMeters},
            {QStringLiteral("choosing a camera"), &AgentLostInACallTest::chooseCamera},
            {QStringLiteral("removing a camera"), &AgentLostInACallTest::removeCamera},
            {QStringLiteral("a new name"), &AgentLostInACallTest::rename},
            {QStringLiteral("a new passkey"), &AgentLostInACallTest::changePasskey},
            {QStringLiteral("word of a new passkey"), &AgentLostInACallTest::hearOfNewPasskey},
            {QStringLiteral("a camera at the cable"), &AgentLostInACallTest::plugIn},
            {QStringLiteral("a firmware update"), &AgentLostInACallTest::updateFirmware},
            {QStringLiteral("going to sleep"), &AgentLostInACallTest::fallAsleep},
        };
        return all;
    }
    /// Test data: each remote call that the pane makes, and the action that makes it.
    static void everyCall()
    {
        QTest::addColumn<QString>("deed");
        QTest::addColumn<QString>("call");
        const auto calls = [](const char *deed, std::initializer_list<const char *> methods) {
            for (const char *method : methods)
                QTest::addRow("%s: %s", deed, method)
                    << QString::fromLatin1(deed) << QString::fromLatin1(method);
        };
        calls("showing the pane again", {"flush"});
        calls("a refresh",
              {"cameraDict", "sortedDeviceList", "indexOfPreferredKS7Cam", "connectedCamHasBTAddress",
               "getPreferredKS7Cam"});
        calls("the meters' timer", {"getAudioLevel_l"});
        calls("choosing a camera", {"setPreferredDeviceAddress"});
        calls("removing a camera", {"removeCameraAtIndex", "checkRemoveCurrentCam"});
        calls("a new name", {"validateName", "setName"});
        calls("a new passkey", {"connectedCamHasBTAddress", "setPassKey"});
        calls("word of a new passkey", {"removeCameraAtIndex"});
        calls("a camera at the cable", {"connectedCamNeedsFirmwareUpdate"});
        calls("a firmware update", {"startUpdate"});
        calls("going to sleep", {"cameraDict", "getPreferredKS7Cam"});
    }
    void paneIsLeftWithoutAgent()
    {
        QVERIFY(pane().turnUntil([this] { return !controller().isConnected(); }));
        QVERIFY(pane().turnUntil([this] { return deaths() > 0; }));
        QCOMPARE(rows(), 0);
        QVERIFY(!controller().isStreaming());
        QVERIFY(!controller().hasLevelsTimer());
        QVERIFY(!pane().sheets->isUp(pane().outlets().pinSheet));
        QVERIFY(!pane().sheets->isUp(pane().outlets().firmwareSheet));
    }
    /// Checks that the pane has made `call` exactly once and no call after it. Posts are not calls.
    void heardLastAndOnce(const QString &call)
    {
        const auto isCall = [&](const QString &line) { return line.section(QLatin1Char(' '), 0, 0) == call; };
        auto lines = agent().journal();
        lines.erase(
            std::remove_if(lines.begin(), lines.end(),
                           [](const QString &line) { return line.startsWith(QLatin1String("post ")); }),
            lines.end());
        QVERIFY2(!lines.isEmpty() && isCall(lines.last()), qPrintable(lines.join(QLatin1Char('\n'))));
        QCOMPARE(std::count_if(lines.cbegin(), lines.cend(), isCall), 1);
    }
    void connectsToTheNextAgent()
    {
        const int before = deaths();
        startAgent();
        agent().post(NotificationNames::AgentStarted);
        QVERIFY(pane().turnUntil([this] { return controller().isConnected() && rows() == 2; }));
        QCOMPARE(deaths(), before);
    }
    /// Makes a call time out, but does not run the event loop, so the pane does not yet know of the agent's
    /// death.
    void loseAgentUnheard()
    {
        agent().hangIn(QStringLiteral("cameraDict"));
        controller().cameraStatusChanged();
        QVERIFY(controller().isConnected());
    }
    /// Checks that the pane uses its agent no longer, although the agent's death is not reported yet. After a
    /// turn of the event loop the pane handles the death notification, which stops the preview.
    void lateDeathIsTakenIn()
    {
        QVERIFY(!controller().isConnected());
        QCOMPARE(deaths(), 0);
        controller().startVideo(nullptr);
        QVERIFY(controller().isStreaming());
        pane().takeLog();
        turn();
        QCOMPARE(deaths(), 1);
        QCOMPARE(pane().takeLog(),
                 (QStringList{QStringLiteral("connectionDidDie:"), QStringLiteral("cameraStatusChanged")}));
        QVERIFY(!controller().isStreaming());
        QVERIFY(!pane().capture->sessions.back()->isRunning());
    }
    /// Starts a refresh in which the agent does not reply to cameraDict. Runs `deed` in another thread during
    /// that call.
    void hangInARefreshWhile(const std::function<void()> &deed)
    {
        agent().hangIn(QStringLiteral("cameraDict"));
        agent().takeJournal();
        std::thread others([&] {
            while (!agent().journal().contains(QStringLiteral("cameraDict")))
                std::this_thread::yield();
            deed();
        });
        controller().cameraStatusChanged();
        others.join();
    }
    void takeBothNames(RecordingAgent &successor)
    {
        successor.knowTwoCameras(Kitchen, Desk);
        QVERIFY(successor.takeOver(RemoteNames::AgentServer));
        QVERIFY(successor.takeOver(RemoteNames::AgentServerUSB));
    }
    /// Checks that the pane is connected to `successor` and calls no other agent.
    void endsConnectedTo(const RecordingAgent &successor)
    {
        QVERIFY(pane().turnUntil([this] { return controller().isConnected() && rows() == 2; }));
        QCOMPARE(deaths(), 1);
        QVERIFY(successor.journal().contains(QStringLiteral("cameraDict")));
        agent().takeJournal();
        refresh();
        QCOMPARE(agent().journal(), QStringList());
        QVERIFY(controller().isConnected());
    }
    void doTheDeed(const QString &deed)
    {
        agent().takeJournal();
        (this->*deeds().value(deed))();
    }

private Q_SLOTS:
    void init()
    {
        mHeard.clear();
        startAgent();
        mPane = std::make_unique<PaneFixture>();
        pane().talkOver();
        pane().capture->addDevice(QStringLiteral("KS-7 Wireless Webcam"));
        pane().keepLog();
        pane().defaults->agentWrites(QStringLiteral("KS7On"), true);
        pane().show();
        turn();
        QCOMPARE(rows(), 2);
    }
    void cleanup()
    {
        mPane.reset();
        mAgent.reset();
    }

    void anAgentThatHangsCostsOneCall_data() { everyCall(); }
    void anAgentThatHangsCostsOneCall()
    {
        QFETCH(QString, deed);
        QFETCH(QString, call);
        agent().hangIn(call);
        doTheDeed(deed);
        paneIsLeftWithoutAgent();
        heardLastAndOnce(call);
        QCOMPARE(deaths(), 1);
        connectsToTheNextAgent();
    }

    void anAgentThatDiesInACallIsReportedOnce_data() { everyCall(); }
    void anAgentThatDiesInACallIsReportedOnce()
    {
        QFETCH(QString, deed);
        QFETCH(QString, call);
        agent().dieIn(call);
        doTheDeed(deed);
        paneIsLeftWithoutAgent();
        heardLastAndOnce(call);
        QCOMPARE(deaths(), 1);
        connectsToTheNextAgent();
    }

    void aDeathReportedAfterHidingIsHandled()
    {
        loseAgentUnheard();
        pane().hide();
        lateDeathIsTakenIn();
    }

    void aDeathReportedAfterASessionSwitchIsHandled()
    {
        loseAgentUnheard();
        pane().workspaceCenter->deliver(platform::NSWorkspaceSessionDidResignActiveNotification);
        lateDeathIsTakenIn();
    }

    void thePaneConnectsToTheSuccessorOfAHungAgent()
    {
        RecordingAgent successor;
        hangInARefreshWhile([&] {
            takeBothNames(successor);
            successor.post(NotificationNames::AgentStarted);
        });
        endsConnectedTo(successor);
    }

    void thePaneConnectsToASuccessorThatStartsAfterTheTimeout()
    {
        RecordingAgent successor;
        hangInARefreshWhile([&] { takeBothNames(successor); });
        successor.post(NotificationNames::AgentStarted);
        endsConnectedTo(successor);
    }

    void thePaneConnectsToASuccessorThatTakesTheNamesAfterTheTimeout()
    {
        RecordingAgent successor;
        loseAgentUnheard();
        takeBothNames(successor);
        successor.post(NotificationNames::AgentStarted);
        endsConnectedTo(successor);
    }

    void thePaneConnectsToASuccessorAfterTheDeathNotification()
    {
        RecordingAgent successor;
        loseAgentUnheard();
        paneIsLeftWithoutAgent();
        takeBothNames(successor);
        successor.post(NotificationNames::AgentStarted);
        endsConnectedTo(successor);
    }

    void aDirectChangeOfOwnerEndsTheConnection()
    {
        RecordingAgent successor;
        takeBothNames(successor);
        paneIsLeftWithoutAgent();
        successor.post(NotificationNames::AgentStarted);
        endsConnectedTo(successor);
    }

    void aUSBServerAloneIsNotAConnection()
    {
        agent().release(RemoteNames::AgentServer);
        paneIsLeftWithoutAgent();
        pane().hide();
        agent().takeJournal();
        showAgain();
        turn();
        QVERIFY(!controller().isConnected());
        QCOMPARE(rows(), 0);
        QCOMPARE(pane().launcher->launches, 1);
        QCOMPARE(pane().sheets->alertTitles, QStringList{QStringLiteral("Installation Error")});
        QVERIFY(!agent().journal().contains(QStringLiteral("flush")));
        const int before = deaths();
        agent().release(RemoteNames::AgentServerUSB);
        QVERIFY(pane().turnUntil([&] { return deaths() == before + 1; }));
        agent().publishBoth();
        agent().post(NotificationNames::AgentStarted);
        QVERIFY(pane().turnUntil([this] { return controller().isConnected() && rows() == 2; }));
        QVERIFY(agent().journal().filter(QStringLiteral("connectedCamHasBTAddress")).size() > 0);
    }

    void thePaneConnectsToAHungAgentThatRestartsItself()
    {
        hangInARefreshWhile([this] { agent().post(NotificationNames::AgentStarted); });
        agent().replyAgain();
        QVERIFY(pane().turnUntil([this] { return controller().isConnected() && rows() == 2; }));
        QCOMPARE(deaths(), 1);
    }

    void theDeathIsHandledBeforePostsMadeDuringTheCall()
    {
        pane().takeLog();
        hangInARefreshWhile([this] { agent().post(NotificationNames::USBDeviceDisconnected); });
        const auto hadHeard = [this] {
            mHeard += pane().takeLog();
            return mHeard.contains(QStringLiteral("USB device disconnected"));
        };
        QVERIFY(pane().turnUntil(hadHeard));
        QCOMPARE(
            mHeard,
            (QStringList{QStringLiteral("cameraStatusChanged"), QStringLiteral("connectionDidDie:"),
                         QStringLiteral("cameraStatusChanged"), QStringLiteral("USB device disconnected")}));
    }

    void theMachineSleepsThoughTheAgentHangs()
    {
        agent().hang();
        fallAsleep();
        QCOMPARE(pane().power->allowed, std::vector<void *>{this});
        paneIsLeftWithoutAgent();
    }

    void anAgentThatHangsBetweenTwoTicksOfTheMetersCostsOneCall()
    {
        pollMeters();
        agent().hang();
        agent().takeJournal();
        pane().runLoop->advance(1s);
        QCOMPARE(agent().journal(), QStringList{QStringLiteral("getAudioLevel_l")});
        paneIsLeftWithoutAgent();
    }
};

QTEST_MAIN(AgentLostInACallTest)

#include "AgentLostInACall_test.moc"
