#pragma once

#include "pane/KS7SettingsWindowController.h"
#include "pane/KSPreferencesPanePref.h"
#include "platform/bus/BusConnection.h"
#include "tests/fakes/FakeAgent.h"
#include "tests/fakes/FakeAgentProxyFactory.h"
#include "tests/fakes/FakeBundle.h"
#include "tests/fakes/FakeCapture.h"
#include "tests/fakes/FakeConnectionRegistry.h"
#include "tests/fakes/FakeHostClasses.h"
#include "tests/fakes/FakeKeyboardModifiers.h"
#include "tests/fakes/FakePowerManagement.h"
#include "tests/fakes/FakeProcessorClock.h"
#include "tests/fakes/FakeProgramLauncher.h"
#include "tests/fakes/FakeRunLoop.h"
#include "tests/fakes/FakeSheetPresenter.h"
#include "tests/fakes/FakeSoftwareUpdate.h"
#include "tests/fakes/FakeUserDefaults.h"
#include "tests/fakes/FakeWorkspace.h"
#include "tests/fakes/RecordingNotificationCenter.h"
#include "tests/support/Timeout.h"

#include <QTest>
#include <QWidget>

#include <functional>
#include <memory>

/// The whole pane with a fake for every service. Tests prepare the fakes and then call load() or show().
class PaneFixture {
public:
    PaneFixture();
    ~PaneFixture();

    /// Creates the pane with the fakes, which runs its start-up.
    void load();
    /// Uses the real agent proxies on this bus instead of the fakes. Call it before load().
    void
    talkOver(const std::shared_ptr<platform::SessionBus> &bus = std::make_shared<platform::SessionBus>());
    /// Loads the pane if necessary, puts its view into a window and shows the pane.
    void show();
    void hide();

    /// Processes Qt's events and runs the work queued in FakeRunLoop.
    void turn();
    template <class Condition>
    bool turnUntil(Condition condition)
    {
        return QTest::qWaitFor([&] { return (turn(), condition()); }, Timeout);
    }

    [[nodiscard]] KS7SettingsWindowController &controller() const { return *pane->mSettingsWindowController; }
    [[nodiscard]] Outlets &outlets() const { return controller().outlets; }
    /// Delivers a notification of the agent, then runs the work that the notification has queued.
    void agentPosts(const QString &name, const QVariantMap &userInfo = {});
    /// Returns the journal lines that begin with `prefix`, without this prefix, and clears the journal.
    QStringList takeJournal(const QString &prefix = {});
    /// Switches on the log file in the agent's preferences. Call it before load().
    void keepLog();
    /// Returns the messages logged since the last call.
    QStringList takeLog();
    QStringList takeRemoteCalls() { return takeJournal(QStringLiteral("remote ")); }

    Journal journal = std::make_shared<QStringList>();
    std::shared_ptr<FakeRunLoop> runLoop;
    std::shared_ptr<RecordingNotificationCenter> localCenter;
    std::shared_ptr<RecordingNotificationCenter> distributedCenter;
    std::shared_ptr<RecordingNotificationCenter> workspaceCenter;
    FakeAgent agent;
    /// The factory of the agent's proxies. A test may replace the fake one before load().
    std::shared_ptr<AgentProxyFactory> protocols;
    /// Hook that load() calls. It may replace fakes with real services.
    std::function<void(platform::Services &)> refit;
    std::shared_ptr<FakeConnectionRegistry> connections;
    std::shared_ptr<FakeProgramLauncher> launcher;
    std::shared_ptr<FakeUserDefaults> defaults;
    std::shared_ptr<FakePowerManagement> power;
    std::shared_ptr<FakeCapture> capture;
    std::shared_ptr<FakeSheetPresenter> sheets;
    std::shared_ptr<FakeWorkspace> workspace;
    std::shared_ptr<FakeHostClasses> hostClasses;
    std::shared_ptr<FakeKeyboardModifiers> keyboard;
    std::shared_ptr<FakeProcessorClock> clock;
    std::shared_ptr<FakeSoftwareUpdate> updates;
    std::shared_ptr<FakeBundle> bundle;
    std::unique_ptr<KSPreferencesPanePref> pane;
    QWidget window;

private:
    int mLogLinesTaken = 0;
};
