#include "tests/support/PaneFixture.h"

#include "agent/AgentProxyFactory.h"
#include "agent/RemoteNames.h"
#include "platform/bus/DistributedNotificationCenter.h"
#include "platform/bus/RemoteConnection.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

PaneFixture::PaneFixture()
    : runLoop(std::make_shared<FakeRunLoop>(journal))
    , localCenter(std::make_shared<RecordingNotificationCenter>(journal))
    , distributedCenter(
          std::make_shared<RecordingNotificationCenter>(journal, RecordingNotificationCenter::PostsToo))
    , workspaceCenter(std::make_shared<RecordingNotificationCenter>(journal))
    , agent(journal)
    , protocols(std::make_shared<FakeAgentProxyFactory>(agent))
    , connections(std::make_shared<FakeConnectionRegistry>(journal, agent, localCenter))
    , launcher(std::make_shared<FakeProgramLauncher>(journal))
    , defaults(std::make_shared<FakeUserDefaults>(journal))
    , power(std::make_shared<FakePowerManagement>(journal))
    , capture(std::make_shared<FakeCapture>(journal))
    , sheets(std::make_shared<FakeSheetPresenter>(journal))
    , workspace(std::make_shared<FakeWorkspace>())
    , hostClasses(std::make_shared<FakeHostClasses>())
    , keyboard(std::make_shared<FakeKeyboardModifiers>())
    , clock(std::make_shared<FakeProcessorClock>())
    , updates(std::make_shared<FakeSoftwareUpdate>(journal))
    , bundle(std::make_shared<FakeBundle>())
{
    window.setLayout(new QVBoxLayout);
    window.resize(900, 600);
}

PaneFixture::~PaneFixture()
{
    // The pane owns the view. The window is destroyed before the pane and would delete its children, so take
    // the view out of the window.
    if (pane)
        pane->mainView()->setParent(nullptr);
}

void PaneFixture::load()
{
    platform::Services services;
    services.runLoop = runLoop;
    services.localCenter = localCenter;
    services.distributedCenter = distributedCenter;
    services.workspaceCenter = workspaceCenter;
    services.connections = connections;
    services.launcher = launcher;
    services.userDefaults = defaults;
    services.power = power;
    services.capture = capture;
    services.sheets = sheets;
    services.workspace = workspace;
    services.hostClasses = hostClasses;
    services.keyboard = keyboard;
    services.processorClock = clock;
    services.updates = updates;
    services.bundle = bundle;
    if (refit)
        refit(services);
    pane = std::make_unique<KSPreferencesPanePref>();
    pane->initWithBundle(services, protocols);
}

void PaneFixture::talkOver(const std::shared_ptr<platform::SessionBus> &bus)
{
    protocols = makeDBusProtocols();
    refit = [bus](platform::Services &services) {
        services.distributedCenter =
            std::make_shared<platform::DistributedNotificationCenter>(bus, RemoteNames::Prefix);
        services.connections = std::make_shared<platform::DBusConnectionRegistry>(
            bus, services.runLoop, services.localCenter, RemoteNames::Prefix);
    };
}

void PaneFixture::show()
{
    if (!pane)
        load();
    window.layout()->addWidget(pane->mainView());
    pane->mainView()->show();
    window.show();
    pane->willSelect();
}

void PaneFixture::turn()
{
    QCoreApplication::processEvents();
    runLoop->turn();
}

void PaneFixture::hide()
{
    pane->didUnselect();
    window.hide();
}

void PaneFixture::agentPosts(const QString &name, const QVariantMap &userInfo)
{
    distributedCenter->deliver(name, userInfo);
    runLoop->turn();
}

namespace {

QDir logFolder()
{
    return QDir(QDir::homePath() + QStringLiteral("/Library/Logs/KS7_Logs/KS-7 System Preferences"));
}

} // namespace

void PaneFixture::keepLog()
{
    logFolder().removeRecursively();
    defaults->agentWrites(QStringLiteral("LogToFile"), true);
}

QStringList PaneFixture::takeLog()
{
    constexpr int StampLength = 24;
    QStringList lines;
    const auto names = logFolder().entryList(QDir::Files, QDir::Name);
    for (const auto &name : names) {
        QFile file(logFolder().filePath(name));
        if (file.open(QIODevice::ReadOnly))
            lines += QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }
    lines.erase(std::remove_if(lines.begin(), lines.end(),
                               [](const QString &line) { return line.startsWith(QLatin1String("=====")); }),
                lines.end());
    QStringList messages;
    for (const auto &line : lines.mid(std::exchange(mLogLinesTaken, static_cast<int>(lines.size()))))
        messages.append(line.mid(StampLength));
    return messages;
}

QStringList PaneFixture::takeJournal(const QString &prefix)
{
    QStringList lines;
    for (const auto &line : std::as_const(*journal)) {
        if (line.startsWith(prefix))
            lines.append(line.mid(prefix.size()));
    }
    journal->clear();
    return lines;
}
