#include "agent/NotificationNames.h"
#include "agent/RemoteNames.h"
#include "cameras/KS7AnimatingStatusTableView.h"
#include "platform/bus/BusConnection.h"
#include "platform/bus/DistributedNotificationCenter.h"
#include "tests/support/PaneFixture.h"
#include "tests/support/RecordingAgent.h"
#include "tests/support/Timeout.h"
#include "widgets/Indicators.h"

#include <QCheckBox>
#include <QTest>

namespace {

const QString Kitchen = QStringLiteral("00-11-22-33-44-55");
const QString Desk = QStringLiteral("66-77-88-99-AA-BB");

/// The user info of a post that the pane itself never sends. When the agent receives it, all earlier messages
/// have arrived.
constexpr int FullStop = 77;

} // namespace

/// Tests the exact sequence of calls and posts that an agent receives from the pane on a real bus.
class ConversationTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<RecordingAgent> mAgent;
    std::unique_ptr<PaneFixture> mPane;
    std::shared_ptr<platform::SessionBus> mBus;

    PaneFixture &pane() { return *mPane; }
    RecordingAgent &agent() { return *mAgent; }
    void agentKnowsTwoCamerasAndPrefersTheDesks() { agent().knowTwoCameras(Kitchen, Desk); }
    /// The remote calls of one refresh while the row of `address` is selected.
    static QStringList refresh(const QString &address = {})
    {
        return QStringList{QStringLiteral("cameraDict"), QStringLiteral("sortedDeviceList"),
                           QStringLiteral("indexOfPreferredKS7Cam"), QStringLiteral("indexOfPreferredKS7Cam")}
        + usbQuestion(address) + usbQuestion(address) + QStringList{QStringLiteral("getPreferredKS7Cam")};
    }
    static QStringList usbQuestion(const QString &address)
    {
        const QString question = QStringLiteral("connectedCamHasBTAddress ") + address;
        return {question.trimmed()};
    }
    static QString posted(const QString &name) { return QStringLiteral("post ") + name; }
    /// Waits until every sent message has arrived, then returns the messages that the agent has received.
    QStringList heard()
    {
        pane().runLoop->turn();
        platform::DistributedNotificationCenter(mBus, RemoteNames::Prefix)
            .postNotificationName(NotificationNames::ToggleDebugLog, nullptr,
                                  {{UserInfoKeys::Value, FullStop}});
        const auto stop =
            QStringLiteral("%1 Value=%2").arg(posted(NotificationNames::ToggleDebugLog)).arg(FullStop);
        if (!QTest::qWaitFor([&] { return agent().journal().contains(stop); }, Timeout))
            return {QStringLiteral("the agent hears nothing")};
        auto lines = agent().takeJournal();
        lines.removeAll(stop);
        return lines;
    }

private Q_SLOTS:
    void init()
    {
        mAgent = std::make_unique<RecordingAgent>();
        mAgent->publishBoth();
        mBus = std::make_shared<platform::SessionBus>();
        mPane = std::make_unique<PaneFixture>();
        mPane->talkOver(mBus);
    }
    void cleanup()
    {
        mPane.reset();
        mBus.reset();
        mAgent.reset();
    }

    void startingUpAsksForOneRefresh()
    {
        pane().load();
        QCOMPARE(agent().takeJournal(), QStringList());
        QCOMPARE(heard(), refresh());
        QVERIFY(pane().controller().isConnected());
    }

    void showingWithoutAPreferredCameraEndsInASearch()
    {
        pane().load();
        heard();
        pane().show();
        QCOMPARE(heard(),
                 QStringList({posted(NotificationNames::SystemPrefsShowing), QStringLiteral("flush")})
                     + refresh()
                     + QStringList({QStringLiteral("getPreferredKS7Cam"),
                                    posted(NotificationNames::StartDiscovering)}));
    }

    void showingWithAPreferredCameraDoesNotSearch()
    {
        agentKnowsTwoCamerasAndPrefersTheDesks();
        pane().load();
        heard();
        pane().show();
        QCOMPARE(heard(),
                 QStringList({posted(NotificationNames::SystemPrefsShowing), QStringLiteral("flush")})
                     + refresh(Desk) + QStringList({QStringLiteral("getPreferredKS7Cam")}));
    }

    void showingTwiceConnectsOnceAndRefreshesTwice()
    {
        pane().show();
        heard();
        pane().pane->willSelect();
        const auto calls = heard();
        QCOMPARE(calls.count(posted(NotificationNames::SystemPrefsShowing)), 1);
        QCOMPARE(calls.count(QStringLiteral("flush")), 1);
        QCOMPARE(calls.count(QStringLiteral("cameraDict")), 1);
    }

    void fiveListChangesAreFiveRefreshes()
    {
        agentKnowsTwoCamerasAndPrefersTheDesks();
        pane().show();
        heard();
        int changes = 0;
        platform::DistributedNotificationCenter counter(mBus, RemoteNames::Prefix);
        counter.addObserver(this, NotificationNames::CameraListChanged,
                            [&](const platform::Notification &) { ++changes; });
        for (int i = 0; i < 5; ++i)
            agent().post(NotificationNames::CameraListChanged);
        QTRY_COMPARE_WITH_TIMEOUT(changes, 5, Timeout);
        QStringList expected;
        for (int i = 0; i < 5; ++i)
            expected += refresh(Desk);
        QCOMPARE(heard(), expected);
    }

    void hidingSendsNothing()
    {
        pane().show();
        heard();
        pane().hide();
        QCOMPARE(heard(), QStringList());
        QVERIFY(!pane().controller().isConnected());
    }

    void theSwitchesPostTheAgentsNotifications()
    {
        pane().keyboard->held = platform::KeyboardModifiers::OptionKey;
        pane().show();
        heard();
        const auto &outlets = pane().outlets();
        for (auto *box : {outlets.enableKS7Checkbox, outlets.statusMenuCheckbox, outlets.debugLog})
            box->click();
        pane().controller().optimizeForChanged(nullptr);
        QCOMPARE(heard(),
                 (QStringList{QStringLiteral("post KS7ToggleEnabled Value=0"),
                              QStringLiteral("post KS7ToggleStatusMenu Value=0"),
                              QStringLiteral("post KS7ToggleDebugLog Value=1"),
                              QStringLiteral("post KS7ChangedOptimizedPreference")}));
    }

    void theAgentsNotificationsAreHandled()
    {
        pane().show();
        agent().post(QStringLiteral("KS7FirmwareUpdateProgress"),
                     {{QStringLiteral("Value"), 1}, {QStringLiteral("Total"), 4}});
        QTRY_COMPARE_WITH_TIMEOUT(pane().outlets().firmwareCheckingIndicator->doubleValue(), 0.25, Timeout);
        agent().post(QStringLiteral("KS7PassKeySet"),
                     {{QStringLiteral("Result"), 0}, {QStringLiteral("PassKey"), QStringLiteral("4711")}});
        QTRY_COMPARE_WITH_TIMEOUT(pane().sheets->alerts.size(), std::size_t(1), Timeout);
        QVERIFY(pane().sheets->alerts[0].alert.message.contains(QStringLiteral("\"4711\"")));
        agent().post(QStringLiteral("KS7PassKeySet"),
                     {{QStringLiteral("Result"), 5}, {QStringLiteral("PassKey"), QStringLiteral("4712")}});
        QTRY_COMPARE_WITH_TIMEOUT(pane().sheets->alerts.size(), std::size_t(2), Timeout);
        QVERIFY(pane().sheets->alerts[1].alert.message.endsWith(QStringLiteral("Error: 5")));
    }

    void aHiddenPaneStillReceivesNotifications()
    {
        pane().show();
        pane().hide();
        heard();
        agent().post(NotificationNames::AgentStarted);
        QTRY_VERIFY_WITH_TIMEOUT(pane().controller().isConnected(), Timeout);
        QCOMPARE(heard(), refresh());
    }

    void anAgentThatHangsCostsTheRefreshOneCall()
    {
        agentKnowsTwoCamerasAndPrefersTheDesks();
        pane().show();
        heard();
        agent().hangIn(QStringLiteral("sortedDeviceList"));
        pane().controller().cameraStatusChanged();
        pane().runLoop->turn();
        QVERIFY(!pane().controller().isConnected());
        QCOMPARE(agent().takeJournal(),
                 (QStringList{QStringLiteral("cameraDict"), QStringLiteral("sortedDeviceList")}));
    }

    void anAgentThatDiesInAnyCallOfTheShowingLeavesTheNoAgentState_data()
    {
        QTest::addColumn<QString>("method");
        for (const char *method : {"flush", "cameraDict", "sortedDeviceList", "indexOfPreferredKS7Cam",
                                   "connectedCamHasBTAddress", "getPreferredKS7Cam"})
            QTest::newRow(method) << QString(QLatin1String(method));
    }
    void anAgentThatDiesInAnyCallOfTheShowingLeavesTheNoAgentState()
    {
        QFETCH(QString, method);
        agentKnowsTwoCamerasAndPrefersTheDesks();
        agent().dieIn(method);
        pane().show();
        const auto turned = [this] {
            pane().runLoop->turn();
            return !pane().controller().isConnected();
        };
        QTRY_VERIFY_WITH_TIMEOUT(turned(), Timeout);
        const auto deaths = pane().localCenter->postCount(platform::NSConnectionDidDieNotification);
        QVERIFY2(deaths >= 1, "the death was told");
        QCOMPARE(pane().controller().numberOfRowsInTableView(pane().outlets().cameraListTable), 0);
    }
};

QTEST_MAIN(ConversationTest)

#include "Conversation_test.moc"
