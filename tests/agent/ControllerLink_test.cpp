#include "agent/AgentProgram.h"
#include "agent/NotificationNames.h"
#include "agent/RemoteNames.h"
#include "cameras/KS7AnimatingStatusTableView.h"
#include "platform/sheets/Sheets.h"
#include "tests/support/PaneFixture.h"

#include <QDir>
#include <QPushButton>
#include <QTest>

using namespace std::chrono_literals;

namespace {

const QString AgentErrorTitle = QStringLiteral("Installation Error");
const QString BluetoothErrorTitle = QStringLiteral("Bluetooth Error");

/// A stand-in both for the host's manager class and for the manager object that the class returns.
class HostManager : public QObject {
    Q_OBJECT
public:
    Q_INVOKABLE QObject *prefPanesManager() { return manager; }
    Q_INVOKABLE void showAll(QObject *sender)
    {
        ++shownAll;
        lastSender = sender;
    }
    QObject *manager = this;
    int shownAll = 0;
    QObject *lastSender = this;
};

/// A host object without invokable methods.
class SilentHost : public QObject {
    Q_OBJECT
};

} // namespace

class ControllerLinkTest : public QObject {
    Q_OBJECT

private:
    PaneFixture *mPane = nullptr;

    PaneFixture &pane() { return *mPane; }
    /// Shows the pane and runs the work that its start-up has queued.
    void showPane()
    {
        pane().show();
        pane().runLoop->turn();
        pane().takeJournal();
    }
    void startWithoutAgent() { pane().agent.running = false; }
    QStringList journalOf(const QStringList &beginnings)
    {
        QStringList lines;
        for (const auto &line : pane().takeJournal()) {
            for (const auto &beginning : beginnings) {
                if (line.startsWith(beginning))
                    lines.append(line);
            }
        }
        return lines;
    }
    QStringList linkJournal()
    {
        return journalOf({QStringLiteral("connect"), QStringLiteral("launch"), QStringLiteral("pause"),
                          QStringLiteral("alert")});
    }
    int refreshes()
    {
        return static_cast<int>(pane().takeRemoteCalls().filter(QStringLiteral("cameraDict")).size());
    }
    void noteWhenTheRowsGo()
    {
        QObject::connect(pane().outlets().cameraListTable->model(), &QAbstractItemModel::rowsRemoved, this,
                         [this] { pane().journal->append(QStringLiteral("rows gone")); });
    }
    void agentErrorShown()
    {
        startWithoutAgent();
        pane().load();
        QCOMPARE(pane().sheets->alertTitles, QStringList{AgentErrorTitle});
    }
    void hostOffers(const QString &className, QObject *object)
    {
        pane().hostClasses->classes.insert(className, object);
    }

    static QString attempt() { return QStringLiteral("connect KS7AgentServer"); }
    static QString usbAttempt() { return QStringLiteral("connect KS7AgentServerUSB"); }
    static QString pause() { return QStringLiteral("pause 100000"); }

private Q_SLOTS:
    void init() { mPane = new PaneFixture; }
    void cleanup()
    {
        delete mPane;
        mPane = nullptr;
    }

    void aRunningAgentIsReachedAtTheFirstAttempt()
    {
        pane().load();
        QCOMPARE(linkJournal(), (QStringList{attempt(), pause(), usbAttempt()}));
        QVERIFY(pane().controller().isConnected());
        QCOMPARE(pane().launcher->launches, 0);
    }

    void aMissingAgentIsLaunchedOnceAndLookedUpAgain()
    {
        startWithoutAgent();
        pane().agent.appearsAtAttempt = 4;
        pane().load();
        QCOMPARE(linkJournal(),
                 (QStringList{attempt(), QStringLiteral("launch"), pause(), attempt(), pause(), attempt(),
                              pause(), attempt(), pause(), usbAttempt()}));
        QVERIFY(pane().controller().isConnected());
        QVERIFY(pane().sheets->alertTitles.isEmpty());
    }

    void anAgentThatAppearsAtTheLastAttemptIsUsed()
    {
        startWithoutAgent();
        pane().agent.appearsAtAttempt = 21;
        pane().load();
        QVERIFY(pane().controller().isConnected());
        QVERIFY(pane().sheets->alertTitles.isEmpty());
    }

    void anAgentThatNeverAppearsCostsTwentyOneAttempts()
    {
        agentErrorShown();
        QStringList expected{attempt(), QStringLiteral("launch"), pause()};
        for (int i = 1; i < 21; ++i)
            expected << attempt() << pause();
        expected << QStringLiteral("alert Installation Error") << usbAttempt();
        QCOMPARE(linkJournal(), expected);
        QVERIFY(!pane().controller().isConnected());
    }

    void theAgentErrorSaysWhatToDo()
    {
        agentErrorShown();
        const auto &shown = pane().sheets->alerts.front();
        QCOMPARE(shown.alert.defaultButton, QStringLiteral("OK"));
        QCOMPARE(
            shown.alert.message,
            QStringLiteral("The KS-7 Preferences cannot be loaded at this time. Please try re-installing "
                           "your KS-7 software."));
        QCOMPARE(shown.window, pane().sheets->applicationMainWindow());
    }

    void aMissingUSBServerShowsNoAlert()
    {
        pane().agent.usbServerRunning = false;
        pane().load();
        QVERIFY(pane().controller().isConnected());
        QVERIFY(pane().sheets->alertTitles.isEmpty());
        QVERIFY(!pane().connections->last(RemoteNames::AgentServerUSB));
    }

    void aSecondSetupWhileConnectedDoesNothing()
    {
        pane().load();
        pane().takeJournal();
        pane().controller().setupConnections();
        QVERIFY(linkJournal().isEmpty());
    }

    void theAgentsDeathLeavesThePaneWithoutAnAgent()
    {
        showPane();
        pane().connections->killAgent();
        QVERIFY(!pane().controller().isConnected());
        QVERIFY2(linkJournal().isEmpty(), "nothing reconnects by itself");
    }

    void aDeathEmptiesTheTableAndStopsThePreview()
    {
        pane().keepLog();
        pane().capture->addDevice(QStringLiteral("KS-7 Wireless Webcam"));
        pane().agent.addCamera(QStringLiteral("a"), QStringLiteral("Kitchen"), 4);
        pane().agent.prefer(QStringLiteral("a"));
        pane().show();
        pane().controller().startVideo(nullptr);
        pane().sheets->beginSheet(pane().outlets().pinSheet, nullptr, [](QWidget *, int, void *) {});
        QCOMPARE(pane().outlets().cameraListTable->numberOfRows(), 1);
        noteWhenTheRowsGo();
        pane().takeJournal();
        pane().takeLog();
        pane().connections->killAgent();
        QCOMPARE(pane().outlets().cameraListTable->numberOfRows(), 0);
        QVERIFY(!pane().outlets().startButton->isEnabled());
        QVERIFY(!pane().controller().isStreaming());
        QCOMPARE(pane().takeLog(),
                 (QStringList{QStringLiteral("connectionDidDie:"), QStringLiteral("cameraStatusChanged")}));
        // When the agent dies, the pane first ends its sheets, then empties the table, then reads the
        // preferences, and finally stops the preview.
        const auto journal = pane().takeJournal();
        QCOMPARE(journal.mid(0, 3),
                 (QStringList{QStringLiteral("end ") + pane().outlets().pinSheet->objectName(),
                              QStringLiteral("rows gone"), QStringLiteral("synchronize")}));
        QCOMPARE(journal.last(), QStringLiteral("stop session"));
        QCOMPARE(journal.count(QStringLiteral("stop session")), 1);
        QVERIFY(journal.filter(QStringLiteral("remote ")).isEmpty());
    }

    void theUSBConnectionsDeathEndsBothConnections()
    {
        pane().show();
        const auto device = pane().connections->last(RemoteNames::AgentServer);
        pane().connections->die(RemoteNames::AgentServerUSB);
        QVERIFY(!pane().controller().isConnected());
        QVERIFY2(device->isValid(), "the other one is let go, not ended");
    }

    void aDeathEndsThePasskeyAndFirmwareSheets()
    {
        pane().show();
        auto *pin = pane().outlets().pinSheet;
        auto *firmware = pane().outlets().firmwareSheet;
        auto *properties = pane().outlets().propertiesSheet;
        for (auto *sheet : {pin, firmware, properties})
            pane().sheets->beginSheet(sheet, nullptr, [](QWidget *, int, void *) {});
        pane().takeJournal();
        pane().connections->die(RemoteNames::AgentServer);
        QCOMPARE(journalOf({QStringLiteral("end ")}),
                 (QStringList{QStringLiteral("end ") + pin->objectName(),
                              QStringLiteral("end ") + firmware->objectName()}));
        QVERIFY(pane().sheets->isUp(properties));
    }

    void theDeathsOfOtherConnectionsAreIgnored()
    {
        pane().keepLog();
        showPane();
        pane().takeLog();
        const int somebodyElses = 0;
        pane().localCenter->deliver(platform::NSConnectionDidDieNotification, {}, &somebodyElses);
        QVERIFY(pane().controller().isConnected());
        QCOMPARE(pane().takeJournal(), QStringList());
        QCOMPARE(pane().takeLog(), QStringList{QStringLiteral("connectionDidDie:")});
    }

    void everyDeathIsIgnoredWithoutAConnection()
    {
        pane().keepLog();
        startWithoutAgent();
        showPane();
        pane().takeLog();
        pane().localCenter->deliver(platform::NSConnectionDidDieNotification, {}, nullptr);
        QVERIFY2(pane().takeJournal().isEmpty(), "a death about nobody is not the missing USB connection's");
        QCOMPARE(pane().takeLog(), QStringList{QStringLiteral("connectionDidDie:")});
    }

    void hidingClosesBothConnectionsAndTheNextShowingReconnects()
    {
        pane().show();
        const auto device = pane().connections->last(RemoteNames::AgentServer);
        pane().hide();
        QVERIFY(!pane().controller().isConnected());
        QVERIFY(!device->isValid());
        pane().takeJournal();
        pane().show();
        QVERIFY(pane().controller().isConnected());
        QCOMPARE(linkJournal(), (QStringList{attempt(), pause(), usbAttempt()}));
    }

    void aUSBServerWithoutItsAgentIsClosedToo()
    {
        startWithoutAgent();
        int pauses = 0;
        pane().runLoop->onPause = [&] { pane().agent.running = ++pauses == 21; };
        pane().load();
        QVERIFY(!pane().connections->last(RemoteNames::AgentServer));
        const auto usb = pane().connections->last(RemoteNames::AgentServerUSB);
        QVERIFY(usb && usb->isValid());
        pane().controller().closeConnections();
        QVERIFY(!usb->isValid());
    }

    void theAgentsStartReconnects()
    {
        startWithoutAgent();
        pane().show();
        pane().agent.running = true;
        pane().takeJournal();
        pane().agentPosts(NotificationNames::AgentStarted);
        QVERIFY(pane().controller().isConnected());
        QCOMPARE(pane().launcher->launches, 2);
        QCOMPARE(pane().launcher->program, agentProgram());
    }

    void theAgentsStartWhileConnectedOnlyRefreshes()
    {
        showPane();
        pane().agentPosts(NotificationNames::AgentStarted);
        const auto connects = pane().journal->filter(QStringLiteral("connect "));
        QVERIFY(connects.isEmpty());
        QCOMPARE(refreshes(), 1);
    }

    void anUnreachableAgentsStartRefreshes()
    {
        pane().keepLog();
        pane().agent.running = false;
        showPane();
        pane().takeLog();
        pane().agentPosts(NotificationNames::AgentStarted);
        QVERIFY(!pane().controller().isConnected());
        QCOMPARE(pane().takeLog(),
                 (QStringList{QStringLiteral("Unabled to make connection to agent."),
                              QStringLiteral("cameraStatusChanged")}));
    }

    void bluetoothIsReportedOncePerLoss()
    {
        pane().show();
        pane().agentPosts(NotificationNames::NoBluetooth);
        pane().agentPosts(NotificationNames::NoBluetooth);
        QCOMPARE(pane().sheets->alertTitles, QStringList{BluetoothErrorTitle});
        QVERIFY(pane().controller().isBluetoothOff());
        pane().agentPosts(NotificationNames::FoundBluetooth);
        pane().agentPosts(NotificationNames::NoBluetooth);
        QCOMPARE(pane().sheets->alertTitles, (QStringList{BluetoothErrorTitle, BluetoothErrorTitle}));
    }

    void theBluetoothErrorSaysWhatToDo()
    {
        pane().show();
        pane().agentPosts(NotificationNames::NoBluetooth);
        const auto &shown = pane().sheets->alerts.front();
        QCOMPARE(shown.alert.defaultButton, QStringLiteral("OK"));
        QCOMPARE(
            shown.alert.message,
            QStringLiteral("KS-7 could not activate Bluetooth. Make sure that Bluetooth is available and "
                           "turned on."));
        QCOMPARE(shown.window, pane().sheets->applicationMainWindow());
        QVERIFY(pane().sheets->dismissAlert());
        // The alert has queued no call. The only pending call is makeItKey(), which show() has delayed.
        QCOMPARE(pane().runLoop->pendingCount(), 1U);
    }

    void aLossOfBluetoothStopsThePreviewAndRefreshesBeforeItIsReported()
    {
        pane().capture->addDevice(QStringLiteral("KS-7 Wireless Webcam"));
        showPane();
        pane().controller().startVideo(nullptr);
        pane().takeJournal();
        pane().agentPosts(NotificationNames::NoBluetooth);
        QVERIFY(!pane().controller().isStreaming());
        QCOMPARE(journalOf({QStringLiteral("stop session"), QStringLiteral("remote cameraDict"),
                            QStringLiteral("alert")}),
                 (QStringList{QStringLiteral("stop session"), QStringLiteral("remote cameraDict"),
                              QStringLiteral("alert ") + BluetoothErrorTitle}));
    }

    void bluetoothFoundWithoutALossDoesNothing()
    {
        showPane();
        pane().agentPosts(NotificationNames::FoundBluetooth);
        QCOMPARE(pane().takeJournal(), QStringList());
    }

    void bluetoothFoundRefreshesWithoutASheet()
    {
        pane().show();
        pane().agentPosts(NotificationNames::NoBluetooth);
        pane().takeJournal();
        pane().agentPosts(NotificationNames::FoundBluetooth);
        QCOMPARE(refreshes(), 1);
        QVERIFY(!pane().controller().isBluetoothOff());
        QCOMPARE(pane().sheets->alertTitles.size(), 1);
    }

    void hidingKeepsTheLossOfBluetooth()
    {
        pane().show();
        pane().agentPosts(NotificationNames::NoBluetooth);
        pane().hide();
        pane().show();
        QVERIFY(pane().controller().isBluetoothOff());
    }

    void afterTheAgentErrorTheHostReturnsToItsOverview()
    {
        HostManager host;
        hostOffers(QStringLiteral("NSPrefPanesManager"), &host);
        agentErrorShown();
        pane().sheets->dismissAlert();
        pane().runLoop->advance(499ms);
        QCOMPARE(host.shownAll, 0);
        pane().runLoop->advance(1ms);
        QCOMPARE(host.shownAll, 1);
        QCOMPARE(host.lastSender, nullptr);
    }

    void aManagerThatIsDestroyedMeanwhileIsNotCalled()
    {
        HostManager host;
        auto manager = std::make_unique<HostManager>();
        host.manager = manager.get();
        hostOffers(QStringLiteral("NSPrefPanesManager"), &host);
        agentErrorShown();
        pane().sheets->dismissAlert();
        manager.reset();
        pane().runLoop->advance(1s);
        QCOMPARE(host.shownAll, 0);
    }

    void aHostWithoutTheClassStaysWhereItIs()
    {
        agentErrorShown();
        const auto pending = pane().runLoop->pendingCount();
        QVERIFY(pane().sheets->dismissAlert());
        QCOMPARE(pane().runLoop->pendingCount(), pending);
    }

    void aClassWithoutAManagerStaysWhereItIs()
    {
        SilentHost host;
        hostOffers(QStringLiteral("NSPrefPanesManager"), &host);
        agentErrorShown();
        const auto pending = pane().runLoop->pendingCount();
        pane().sheets->dismissAlert();
        QCOMPARE(pane().runLoop->pendingCount(), pending);
    }

    void aManagerWithoutAnOverviewStaysWhereItIs()
    {
        HostManager host;
        SilentHost manager;
        host.manager = &manager;
        hostOffers(QStringLiteral("NSPrefPanesManager"), &host);
        agentErrorShown();
        const auto pending = pane().runLoop->pendingCount();
        pane().sheets->dismissAlert();
        QCOMPARE(pane().runLoop->pendingCount(), pending);
    }

    void aNullManagerStaysWhereItIs()
    {
        HostManager host;
        host.manager = nullptr;
        hostOffers(QStringLiteral("NSPrefPanesManager"), &host);
        agentErrorShown();
        const auto pending = pane().runLoop->pendingCount();
        pane().sheets->dismissAlert();
        QCOMPARE(pane().runLoop->pendingCount(), pending);
    }
};

QTEST_MAIN(ControllerLinkTest)

#include "ControllerLink_test.moc"
