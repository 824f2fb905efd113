#include "agent/NotificationNames.h"
#include "cameras/KS7AnimatingStatusTableView.h"
#include "logging/KS7OrvexLogger.h"
#include "platform/bus/Connection.h"
#include "platform/desktop/Bundle.h"
#include "platform/desktop/ProcessorClock.h"
#include "platform/desktop/Workspace.h"
#include "platform/preferences/UserDefaults.h"
#include "tests/support/PaneFixture.h"
#include "tests/support/Timeout.h"
#include "widgets/Indicators.h"

#include <QAbstractItemDelegate>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>

using namespace std::chrono_literals;
namespace Names = NotificationNames;

namespace {

/// Calls a hook when the pane reads its information dictionary, which contains the version.
class WatchedBundle final : public platform::Bundle {
public:
    WatchedBundle(std::shared_ptr<platform::Bundle> bundle, std::function<void()> onInfo)
        : mBundle(std::move(bundle))
        , mOnInfo(std::move(onInfo))
    {
    }
    [[nodiscard]] QString pathForResource(const QString &name, const QString &type) const override
    {
        return mBundle->pathForResource(name, type);
    }
    [[nodiscard]] QVariantMap infoDictionary() const override
    {
        mOnInfo();
        return mBundle->infoDictionary();
    }

private:
    std::shared_ptr<platform::Bundle> mBundle;
    std::function<void()> mOnInfo;
};

/// Calls a hook when the pane synchronises its preferences.
class WatchedDefaults final : public platform::UserDefaults {
public:
    WatchedDefaults(std::shared_ptr<platform::UserDefaults> defaults, std::function<void()> onSynchronize)
        : mDefaults(std::move(defaults))
        , mOnSynchronize(std::move(onSynchronize))
    {
    }
    std::optional<platform::PropertyListDictionary> persistentDomainForName(const QString &name) override
    {
        return mDefaults->persistentDomainForName(name);
    }
    void setPersistentDomain(const std::optional<platform::PropertyListDictionary> &domain,
                             const QString &name) override
    {
        mDefaults->setPersistentDomain(domain, name);
    }
    bool synchronize() override
    {
        mOnSynchronize();
        return mDefaults->synchronize();
    }

private:
    std::shared_ptr<platform::UserDefaults> mDefaults;
    std::function<void()> mOnSynchronize;
};

/// Calls a hook when the pane reads the processor clock. The pane does so in setupOptimizePopup(), because a
/// slow processor hides the pop-up for the picture's size.
class WatchedClock final : public platform::ProcessorClock {
public:
    explicit WatchedClock(std::function<void()> onRead)
        : mOnRead(std::move(onRead))
    {
    }
    std::uint64_t frequency() override
    {
        mOnRead();
        return 2'400'000'000;
    }

private:
    std::function<void()> mOnRead;
};

} // namespace

/// Tests start-up, showing and hiding through the calls that the services receive.
class ControllerLifecycleTest : public QObject {
    Q_OBJECT

    /// The names of the notifications that the pane has posted to other processes, in order.
    static QStringList posts(const PaneFixture &fixture)
    {
        QStringList names;
        for (const auto &post : fixture.distributedCenter->posts)
            names.append(post.name);
        return names;
    }

private Q_SLOTS:
    void anUninitialisedPaneIsNotShared()
    {
        QCOMPARE(KSPreferencesPanePref::shared(), nullptr);
        KSPreferencesPanePref pane;
        QCOMPARE(KSPreferencesPanePref::shared(), nullptr);
        QCOMPARE(pane.init(), &pane);
        QCOMPARE(KSPreferencesPanePref::shared(), &pane);
        QCOMPARE(pane.mSettingsWindowController, nullptr);
        pane.willSelect();
        pane.didUnselect();
    }

    void mainWindowIsThePanesWindow()
    {
        PaneFixture fixture;
        fixture.load();
        QCOMPARE(KSPreferencesPanePref::shared(), fixture.pane.get());
        fixture.show();
        QCOMPARE(fixture.pane->mainWindow(), &fixture.window);
    }

    void withoutAParentThePaneHasNoWindow()
    {
        PaneFixture fixture;
        fixture.show();
        fixture.hide();
        fixture.pane->mainView()->setParent(nullptr);
        QCOMPARE(fixture.pane->mainWindow(), nullptr);
        // The view is in no window, so the alert has no parent window.
        fixture.agentPosts(Names::PassKeySet, {{UserInfoKeys::Result, 9}});
        QCOMPARE(fixture.sheets->alerts.size(), std::size_t(1));
        QCOMPARE(fixture.sheets->alerts.front().window, nullptr);
    }

    void aNewControllerIsDisconnectedAndPrefersNoCamera()
    {
        PaneFixture fixture;
        fixture.agent.running = false;
        fixture.load();
        QVERIFY(!fixture.controller().isConnected());
        QVERIFY(!fixture.controller().isSwitchedOut());
        QVERIFY(!fixture.controller().isBluetoothOff());
        QVERIFY(!fixture.controller().hasLevelsTimer());
        QCOMPARE(fixture.controller().indexOfPreferred(), -1);
    }

    void initResetsTheControllersState()
    {
        PaneFixture fixture;
        fixture.agent.addCamera(QStringLiteral("a"), QStringLiteral("Kitchen"), 4);
        fixture.agent.prefer(QStringLiteral("a"));
        fixture.show();
        fixture.controller().startVideo(nullptr);
        fixture.workspaceCenter->deliver(platform::NSWorkspaceSessionDidResignActiveNotification);
        fixture.agentPosts(Names::NoBluetooth);
        fixture.agentPosts(Names::AgentStarted);
        auto &controller = fixture.controller();
        QVERIFY(controller.isConnected() && controller.isSwitchedOut() && controller.isBluetoothOff());
        QCOMPARE(controller.indexOfPreferred(), 0);
        QCOMPARE(controller.cameras().size(), 1);
        QCOMPARE(controller.init(), &controller);
        QVERIFY(!controller.isConnected() && !controller.isSwitchedOut() && !controller.isBluetoothOff());
        QVERIFY(!controller.hasLevelsTimer());
        QCOMPARE(controller.indexOfPreferred(), -1);
        QVERIFY(controller.cameras().isEmpty());
    }

    void theLogIsOpenBeforeTheAgentIsLookedUp()
    {
        PaneFixture fixture;
        fixture.keepLog();
        fixture.agent.running = false;
        fixture.load();
        fixture.runLoop->turn();
        QCOMPARE(fixture.takeLog(),
                 QStringList({QStringLiteral("Unabled to make connection to agent."),
                              QStringLiteral("cameraStatusChanged")}));
    }

    void theLogGoesIntoItsFileAndNeverToStandardOutput()
    {
        PaneFixture quiet;
        quiet.load();
        QVERIFY2(!gMainLogger->isLogging(), "without a file nothing is logged anywhere");
        PaneFixture fixture;
        fixture.keepLog();
        fixture.load();
        QVERIFY(gMainLogger->isLogging());
        gMainLogger->setLogToFile(false);
        QVERIFY2(!gMainLogger->isLogging(), "the file was all there was");
    }

    void startUpObservesTheEighteenInTheirOrder()
    {
        PaneFixture fixture;
        fixture.load();
        const QStringList expected{
            QStringLiteral("KS7StreamingStarted"),    QStringLiteral("KS7CameraListChanged"),
            QStringLiteral("KS7StoppedDiscovering"),  QStringLiteral("KS7StartedDiscovering"),
            QStringLiteral("KS7PassKeySet"),          QStringLiteral("KS7StreamingInitiated"),
            QStringLiteral("KS7PairingInitiated"),    QStringLiteral("KS7StreamingEnded"),
            QStringLiteral("KS7USBDeviceConnected"),  QStringLiteral("KS7USBDeviceDisconnected"),
            QStringLiteral("KS7AgentStarted"),        QStringLiteral("KS7PreferredCameraChanged"),
            QStringLiteral("KS7FirmwareUpdateEnded"), QStringLiteral("KS7FirmwareUpdateProgress"),
            QStringLiteral("KS7OnOffChanged"),        QStringLiteral("KS7NoBluetooth"),
            QStringLiteral("KS7FoundBluetooth"),      QStringLiteral("KS7ChangedOptimizedPreference")};
        QCOMPARE(fixture.distributedCenter->registrations, expected);
        const QStringList local{QStringLiteral("NSConnectionDidDieNotification"),
                                QStringLiteral("QuickTimeError"), QStringLiteral("GoingToSleep")};
        QCOMPARE(fixture.localCenter->registrations, local);
        QVERIFY(fixture.workspaceCenter->registrations.isEmpty());
    }

    void loadingConnectsBeforeAnythingIsObserved()
    {
        PaneFixture fixture;
        fixture.agent.running = false;
        fixture.agent.appearsAtAttempt = 2;
        fixture.load();
        QVERIFY(fixture.controller().isConnected());
        const auto journal = fixture.takeJournal();
        const auto connected = journal.lastIndexOf(QStringLiteral("connect KS7AgentServerUSB"));
        QVERIFY(connected >= 0);
        QCOMPARE(connected + 1, journal.indexOf(QStringLiteral("observe KS7StreamingStarted")));
    }

    void theLocalObserversAndThePowerHookFollowAndTheControlsComeLast()
    {
        PaneFixture fixture;
        fixture.load();
        const auto journal = fixture.takeJournal();
        const auto distributed = journal.indexOf(QStringLiteral("observe KS7ChangedOptimizedPreference"));
        QCOMPARE(journal.mid(distributed + 1),
                 QStringList({QStringLiteral("observe NSConnectionDidDieNotification"),
                              QStringLiteral("observe QuickTimeError"),
                              QStringLiteral("register for power messages"),
                              QStringLiteral("observe GoingToSleep"),
                              // setupUI() synchronises the preferences before it reads them.
                              QStringLiteral("synchronize")}));
    }

    void theTableIsTheFirstResponderFromTheStart()
    {
        PaneFixture fixture;
        fixture.load();
        QCOMPARE(fixture.pane->mainView()->focusWidget(),
                 static_cast<QWidget *>(fixture.outlets().cameraListTable));
    }

    void theControlsAreSetUpInTheirOrder()
    {
        PaneFixture fixture;
        QAbstractItemDelegate *oldDelegate = nullptr;
        QStringList steps;
        // Each watched service records which controls are already set up when the pane uses the service.
        const auto note = [&](const QString &service) {
            const auto &outlets = fixture.outlets();
            QStringList done;
            if (outlets.cameraListTable->itemDelegate() != oldDelegate)
                done.append(QStringLiteral("cell"));
            if (outlets.statusMenuCheckbox->isChecked())
                done.append(QStringLiteral("status menu"));
            if (outlets.enableKS7Checkbox->isChecked())
                done.append(QStringLiteral("enable"));
            if (outlets.levelIndicator_l->doubleValue() == 0.0)
                done.append(QStringLiteral("meters"));
            steps.append(service + QStringLiteral(": ") + done.join(QStringLiteral(", ")));
        };
        fixture.refit = [&note, &oldDelegate](platform::Services &services) {
            const auto noteStep = [&note, &oldDelegate](const char *service) {
                return [&note, &oldDelegate, name = QString::fromLatin1(service)] {
                    if (oldDelegate)
                        note(name);
                };
            };
            services.bundle = std::make_shared<WatchedBundle>(services.bundle, noteStep("version"));
            services.processorClock = std::make_shared<WatchedClock>(noteStep("clock"));
            services.userDefaults =
                std::make_shared<WatchedDefaults>(services.userDefaults, noteStep("defaults"));
        };
        fixture.load();
        auto &outlets = fixture.outlets();
        outlets.levelIndicator_l->setDoubleValue(0.7);
        outlets.statusMenuCheckbox->setChecked(false);
        outlets.enableKS7Checkbox->setChecked(false);
        oldDelegate = outlets.cameraListTable->itemDelegate();
        fixture.controller().setupUI();
        QCOMPARE(steps,
                 QStringList({QStringLiteral("version: "), QStringLiteral("defaults: cell, status menu"),
                              QStringLiteral("clock: cell, status menu, enable")}));
        QCOMPARE(outlets.levelIndicator_l->doubleValue(), 0.0);
    }

    void bothMetersStartAtZero()
    {
        PaneFixture fixture;
        fixture.load();
        fixture.outlets().levelIndicator_l->setDoubleValue(0.7);
        fixture.outlets().levelIndicator_r->setDoubleValue(0.8);
        fixture.controller().setupUI();
        QCOMPARE(fixture.outlets().levelIndicator_l->doubleValue(), 0.0);
        QCOMPARE(fixture.outlets().levelIndicator_r->doubleValue(), 0.0);
    }

    void showingWithoutAPreferredCameraRequestsDiscovery()
    {
        PaneFixture fixture;
        fixture.show();
        QCOMPARE(
            posts(fixture),
            QStringList({QStringLiteral("KS7SystemPrefsShowing"), QStringLiteral("KS7StartDiscovering")}));
        QVERIFY(fixture.distributedCenter->posts.front().userInfo.isEmpty());
    }

    void showingWithAPreferredCameraDoesNotSearch()
    {
        PaneFixture fixture;
        fixture.agent.addCamera(QStringLiteral("a"), QStringLiteral("Kitchen"), 4);
        fixture.agent.prefer(QStringLiteral("a"));
        fixture.show();
        QCOMPARE(posts(fixture), QStringList{QStringLiteral("KS7SystemPrefsShowing")});
    }

    void showingWithoutAnAgentRequestsDiscovery()
    {
        PaneFixture fixture;
        fixture.agent.running = false;
        fixture.show();
        QCOMPARE(fixture.distributedCenter->postCount(Names::StartDiscovering), 1);
    }

    void showingTwiceConnectsOnceButRepeatsTheRest()
    {
        PaneFixture fixture;
        fixture.show();
        fixture.takeJournal();
        fixture.pane->willSelect();
        const auto journal = fixture.takeJournal();
        QVERIFY(!journal.contains(QStringLiteral("connect KS7AgentServer")));
        QCOMPARE(journal.count(QStringLiteral("post KS7SystemPrefsShowing")), 1);
        QCOMPARE(journal.count(QStringLiteral("remote flush")), 1);
        QCOMPARE(journal.count(QStringLiteral("remote cameraDict")), 1);
        QCOMPARE(journal.count(QStringLiteral("updater started")), 1);
    }

    void showingGoesThroughItsStepsInOrder()
    {
        PaneFixture fixture;
        fixture.load();
        fixture.runLoop->turn();
        fixture.hide();
        fixture.keyboard->onLook = [&] { fixture.journal->append(QStringLiteral("look at the keyboard")); };
        fixture.takeJournal();
        fixture.show();
        const auto journal = fixture.takeJournal();
        const QStringList milestones{QStringLiteral("post KS7SystemPrefsShowing"),
                                     QStringLiteral("connect KS7AgentServer"),
                                     QStringLiteral("connect KS7AgentServerUSB"),
                                     QStringLiteral("remote flush"),
                                     QStringLiteral("look at the keyboard"),
                                     QStringLiteral("remote cameraDict"),
                                     QStringLiteral("post KS7StartDiscovering"),
                                     QStringLiteral("updater started"),
                                     QStringLiteral("observe NSWorkspaceSessionDidBecomeActiveNotification"),
                                     QStringLiteral("observe NSWorkspaceSessionDidResignActiveNotification")};
        QStringList seen;
        for (const auto &line : journal) {
            if (milestones.contains(line) && !seen.contains(line))
                seen.append(line);
        }
        QCOMPARE(seen, milestones);
    }

    void theSpinnerTurnsOnShowingOnlyIfItsMessageIsVisible()
    {
        PaneFixture fixture;
        fixture.load();
        fixture.outlets().discoveringMessage->hide();
        fixture.show();
        QVERIFY(!fixture.outlets().searchingIndicator->isAnimating());
        fixture.hide();
        fixture.outlets().discoveringMessage->show();
        fixture.show();
        QVERIFY(fixture.outlets().searchingIndicator->isAnimating());
    }

    void theSpinnerTurnsWhileTheWindowIsNotOnScreenYet()
    {
        PaneFixture fixture;
        fixture.load();
        fixture.outlets().discoveringMessage->show();
        QVERIFY(!fixture.outlets().discoveringMessage->isVisible());
        fixture.pane->willSelect();
        QVERIFY(fixture.outlets().searchingIndicator->isAnimating());
    }

    void aHiddenPaneDoesNotTakeTheKeyboard()
    {
        PaneFixture fixture;
        fixture.show();
        QVERIFY(QTest::qWaitForWindowActive(&fixture.window, Timeout));
        QPushButton elsewhere(&fixture.window);
        elsewhere.show();
        elsewhere.setFocus();
        fixture.pane->mainView()->hide();
        fixture.hide();
        fixture.runLoop->advance(100ms);
        QCOMPARE(fixture.window.focusWidget(), static_cast<QWidget *>(&elsewhere));
    }

    void theTableGetsTheKeyboardATenthOfASecondAfterShowing()
    {
        PaneFixture fixture;
        fixture.show();
        QVERIFY(QTest::qWaitForWindowActive(&fixture.window, Timeout));
        fixture.outlets().addButton->setFocus();
        fixture.runLoop->advance(99ms);
        QCOMPARE(fixture.window.focusWidget(), static_cast<QWidget *>(fixture.outlets().addButton));
        fixture.runLoop->advance(1ms);
        QCOMPARE(fixture.window.focusWidget(), static_cast<QWidget *>(fixture.outlets().cameraListTable));
    }

    void aDestroyedPaneIsNotCalledAnyMore()
    {
        PaneFixture fixture;
        fixture.show();
        fixture.runLoop->turn();
        fixture.distributedCenter->deliver(Names::CameraListChanged);
        fixture.distributedCenter->deliver(Names::StreamingStarted);
        fixture.takeJournal();
        fixture.pane->mainView()->setParent(nullptr);
        fixture.pane.reset();
        QCOMPARE(fixture.runLoop->pendingCount(), std::size_t(0));
        fixture.takeJournal();
        fixture.runLoop->turn();
        QCOMPARE(fixture.takeJournal(), QStringList());
    }

    void hidingDisconnectsAndStopsWatchingTheSession()
    {
        PaneFixture fixture;
        fixture.show();
        QCOMPARE(fixture.workspaceCenter->registrations.size(), 2);
        fixture.hide();
        QVERIFY(!fixture.controller().isConnected());
        QVERIFY(fixture.workspaceCenter->registrations.isEmpty());
        fixture.takeJournal();
        fixture.show();
        QVERIFY(fixture.controller().isConnected());
        QVERIFY(fixture.takeJournal().contains(QStringLiteral("connect KS7AgentServer")));
    }

    void hidingEndsThePreviewThenTheLinkThenTheWatch()
    {
        PaneFixture fixture;
        fixture.capture->addDevice(QStringLiteral("KS-7 Wireless Webcam"));
        fixture.show();
        fixture.controller().startVideo(nullptr);
        fixture.sheets->beginSheet(fixture.outlets().pinSheet, nullptr, [](QWidget *, int, void *) {});
        fixture.takeJournal();
        fixture.hide();
        const auto journal = fixture.takeJournal();
        QCOMPARE(journal.first(), QStringLiteral("stop session"));
        QVERIFY(journal.contains(QStringLiteral("end ") + fixture.outlets().pinSheet->objectName()));
        QCOMPARE(journal.mid(journal.size() - 2),
                 QStringList({QStringLiteral("forget NSWorkspaceSessionDidBecomeActiveNotification"),
                              QStringLiteral("forget NSWorkspaceSessionDidResignActiveNotification")}));
    }

    void hidingEndsAPreviewWithoutAnAgentToo()
    {
        PaneFixture fixture;
        fixture.capture->addDevice(QStringLiteral("KS-7 Wireless Webcam"));
        fixture.agent.running = false;
        fixture.show();
        fixture.controller().startVideo(nullptr);
        QVERIFY(fixture.capture->sessions.back()->isRunning());
        fixture.hide();
        QVERIFY(!fixture.capture->sessions.back()->isRunning());
    }

    void notificationsAreStillHandledWhileHidden()
    {
        PaneFixture fixture;
        fixture.show();
        fixture.hide();
        fixture.agentPosts(Names::StartedDiscovering);
        QVERIFY(fixture.outlets().searchingIndicator->isAnimating());
        fixture.agentPosts(Names::AgentStarted);
        QVERIFY(fixture.controller().isConnected());
    }

    void thePaneReceivesItsOwnPreferencePost()
    {
        int clockReads = 0;
        PaneFixture fixture;
        fixture.refit = [&clockReads](platform::Services &services) {
            services.processorClock = std::make_shared<WatchedClock>([&clockReads] { ++clockReads; });
        };
        fixture.show();
        clockReads = 0;
        fixture.controller().optimizeForChanged(nullptr);
        QCOMPARE(fixture.distributedCenter->postCount(Names::ChangedOptimizedPreference), 1);
        // Each setupOptimizePopup() reads the clock once. The observer of the post calls it, and so does
        // optimizeForChanged() itself afterwards.
        QCOMPARE(clockReads, 2);
    }
};

QTEST_MAIN(ControllerLifecycleTest)
#include "ControllerLifecycle_test.moc"
