#pragma once

#include "pane/KS7SettingsWindowController.h"
#include "pane/KSPreferencesPanePref.h"
#include "platform/bus/BusConnection.h"
#include "tests/support/Doubles.h"
#include "tests/support/Timeout.h"

#include <QTest>
#include <QWidget>

#include <functional>
#include <memory>

/// The whole pane with a double for every service. Set the world up, then load() and show() it.
class PaneFixture {
public:
    PaneFixture();
    ~PaneFixture();

    /// Loads the pane: start-up runs.
    void load();
    /// Has the pane talk to the agent over this bus and no double; before load().
    void
    talkOver(const std::shared_ptr<platform::SessionBus> &bus = std::make_shared<platform::SessionBus>());
    /// Puts the view into a window and shows the pane.
    void show();
    void hide();

    /// Turns both loops: what the bus brings and what the pane has put off.
    void turn();
    template <class Condition>
    bool turnUntil(Condition condition)
    {
        return QTest::qWaitFor([&] { return (turn(), condition()); }, Timeout);
    }

    [[nodiscard]] KS7SettingsWindowController &controller() const { return *pane->mSettingsWindowController; }
    [[nodiscard]] Outlets &outlets() const { return controller().outlets; }
    /// A broadcast of the agent, and what it queues.
    void agentPosts(const QString &name, const QVariantMap &userInfo = {});
    /// The lines of the journal since the last call that begin with `prefix`, the prefix cut off.
    QStringList takeJournal(const QString &prefix = {});
    /// Has the pane log into a file from its start, as the agent's preferences may say; before load().
    void keepLog();
    /// The messages logged since the last call.
    QStringList takeLog();
    QStringList takeRemoteCalls() { return takeJournal(QStringLiteral("remote ")); }

    Journal journal = std::make_shared<QStringList>();
    std::shared_ptr<FakeRunLoop> runLoop;
    std::shared_ptr<RecordingCenter> localCenter;
    std::shared_ptr<RecordingCenter> distributedCenter;
    std::shared_ptr<RecordingCenter> workspaceCenter;
    FakeAgent agent;
    /// How the pane talks to the agent; the double unless a test puts something else here before load().
    std::shared_ptr<AgentProxyFactory> protocols;
    /// Puts real services in the places of doubles, before the pane is loaded.
    std::function<void(platform::Services &)> refit;
    std::shared_ptr<FakeConnections> connections;
    std::shared_ptr<FakeLauncher> launcher;
    std::shared_ptr<FakeDefaults> defaults;
    std::shared_ptr<FakePower> power;
    std::shared_ptr<FakeCapture> capture;
    std::shared_ptr<FakeSheets> sheets;
    std::shared_ptr<FakeWorkspace> workspace;
    std::shared_ptr<FakeHostClasses> hostClasses;
    std::shared_ptr<FakeKeyboard> keyboard;
    std::shared_ptr<FakeClock> clock;
    std::shared_ptr<FakeUpdates> updates;
    std::shared_ptr<FakeBundle> bundle;
    std::unique_ptr<KSPreferencesPanePref> pane;
    QWidget window;

private:
    int mLogLinesTaken = 0;
};
