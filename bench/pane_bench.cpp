// The pane in a window of its own, with an agent in another process. What is measured goes to the standard
// output, a line each: name, a tab, and the number. See main() for what can be asked.
#include "agent/NotificationNames.h"
#include "agent/RemoteNames.h"
#include "bench/AgentProcess.h"
#include "bench/BareClient.h"
#include "cameras/KS7AnimatingStatusTableView.h"
#include "pane/Composition.h"
#include "pane/KS7SettingsWindowController.h"
#include "pane/KSPreferencesPanePref.h"
#include "platform/Desktop.h"
#include "platform/RunLoop.h"

#include <QAbstractTableModel>
#include <QApplication>
#include <QDBusInterface>
#include <QDBusReply>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QHeaderView>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include <gst/gst.h>

#include <chrono>
#include <cstdio>
#include <ctime>
#include <malloc.h>

using namespace std::chrono_literals;

namespace {

void tell(const QString &name, double value)
{
    std::printf("%s\t%.9g\n", qPrintable(name), value);
    std::fflush(stdout);
}

/// Turns of the loop until nothing has happened for a while.
void settle(std::chrono::milliseconds quiet = 300ms)
{
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < quiet.count())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
}

/// Runs the loop as a program does, asleep between events.
void runFor(std::chrono::milliseconds time)
{
    QEventLoop loop;
    QTimer::singleShot(time, &loop, &QEventLoop::quit);
    loop.exec();
}

class PaneWindow {
public:
    PaneWindow()
    {
        mWindow.setLayout(new QVBoxLayout);
        mWindow.resize(900, 600);
        mWindow.layout()->addWidget(mPane->mainView());
    }
    void show()
    {
        mPane->mainView()->show();
        mWindow.show();
        mPane->willSelect();
    }
    void hide()
    {
        mPane->didUnselect();
        mWindow.hide();
    }
    [[nodiscard]] KS7SettingsWindowController &controller() const
    {
        return *mPane->mSettingsWindowController;
    }
    [[nodiscard]] KS7AnimatingStatusTableView *table() const { return controller().outlets.cameraListTable; }

private:
    KSPreferencesPanePref *const mPane = sharedPane();
    QWidget mWindow;
};

/// Counts what is painted in a table's viewport.
class PaintCounter : public QObject {
public:
    explicit PaintCounter(QAbstractItemView *view) { view->viewport()->installEventFilter(this); }
    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == QEvent::Paint;
        return false;
    }
    int count = 0;
};

/// A model that holds texts and knows nothing else.
class TextModel : public QAbstractTableModel {
public:
    void setTexts(const QStringList &texts, int rows)
    {
        beginResetModel();
        mTexts = texts;
        mRows = rows;
        endResetModel();
    }
    [[nodiscard]] int rowCount(const QModelIndex &) const override { return mRows; }
    [[nodiscard]] int columnCount(const QModelIndex &) const override { return 1; }
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override
    {
        return role == Qt::DisplayRole ? mTexts.value(index.row()) : QVariant();
    }

private:
    QStringList mTexts;
    int mRows = 0;
};

/// The bare table beside ours, of the same size and row height.
class BareTable {
public:
    explicit BareTable(const QTableView &ours)
    {
        mView.setModel(&mModel);
        mView.resize(ours.size());
        mView.horizontalHeader()->setStretchLastSection(true);
        mView.verticalHeader()->setDefaultSectionSize(ours.verticalHeader()->defaultSectionSize());
        mView.show();
    }
    void showTexts(const QStringList &texts, int rows)
    {
        mModel.setTexts(texts, rows);
        mView.viewport()->repaint();
    }

private:
    TextModel mModel;
    QTableView mView;
};

class Refreshes {
public:
    explicit Refreshes(int cameras)
        : mCameras(cameras)
    {
        mAgent.haveCameras(cameras);
        mWindow.show();
        settle();
        mAgent.takeCalls();
        refreshOurs();
        settle();
        noteCalls();
    }

    void measure(int times)
    {
        BareTable bare(*mWindow.table());
        settle();
        const QString name = QStringLiteral("refresh %1/").arg(mCameras);
        for (int time = 0; time < times; ++time) {
            tell(name + QStringLiteral("ours"), refreshOurs());
            settle(20ms);
            tell(name + QStringLiteral("bare"), refreshBare(bare));
            settle(20ms);
            tell(QStringLiteral("paint %1/ours").arg(mCameras), paintOurs());
        }
    }

private:
    // One refresh alone; what follows from it, like a second notification, would show here.
    void noteCalls()
    {
        mCalls = mAgent.takeCalls();
        tell(QStringLiteral("calls %1").arg(mCameras), static_cast<double>(mCalls.size()));
    }

    double refreshOurs()
    {
        PaintCounter paints(mWindow.table());
        QElapsedTimer clock;
        clock.start();
        mClient.post(NotificationNames::CameraListChanged);
        while (paints.count == 0)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        return static_cast<double>(clock.nsecsElapsed()) / 1e6;
    }

    double refreshBare(BareTable &table)
    {
        QElapsedTimer clock;
        clock.start();
        mClient.post(QStringLiteral("KS7HeardByNobodyElse"));
        mClient.hear();
        table.showTexts(mClient.call(mCalls), mCameras);
        return static_cast<double>(clock.nsecsElapsed()) / 1e6;
    }

    double paintOurs()
    {
        QElapsedTimer clock;
        clock.start();
        mWindow.table()->viewport()->repaint();
        return static_cast<double>(clock.nsecsElapsed()) / 1e6;
    }

    const int mCameras;
    AgentProcess mAgent;
    BareClient mClient;
    PaneWindow mWindow;
    QStringList mCalls;
};

/// How often the threads of this process have gone to sleep so far: each time, something woke them.
double wakeUps()
{
    double sum = 0;
    const auto tasks = QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const auto &task : tasks) {
        QFile status(QStringLiteral("/proc/self/task/%1/status").arg(task));
        if (!status.open(QIODevice::ReadOnly))
            continue;
        const QByteArray text = status.readAll();
        const auto key = QByteArrayLiteral("\nvoluntary_ctxt_switches:");
        sum += text.mid(text.indexOf(key) + key.size()).trimmed().split('\n').constFirst().toDouble();
    }
    return sum;
}

double processorTime()
{
    timespec used = {};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used);
    return static_cast<double>(used.tv_sec) * 1e3 + static_cast<double>(used.tv_nsec) / 1e6;
}

void tellWhatHappensIn(std::chrono::milliseconds time, const QString &name)
{
    const double wakes = wakeUps();
    const double used = processorTime();
    runFor(time);
    // Two are the measuring's own: going to sleep until the end, and the end.
    tell(QStringLiteral("wake-ups ") + name, wakeUps() - wakes);
    tell(QStringLiteral("processor ") + name, processorTime() - used);
}

void idle(std::chrono::milliseconds time)
{
    tellWhatHappensIn(time, QStringLiteral("idle/empty"));
    const AgentProcess agent;
    PaneWindow window;
    window.show();
    runFor(3s);
    tellWhatHappensIn(time, QStringLiteral("idle/shown"));
    window.hide();
    runFor(2s);
    tellWhatHappensIn(time, QStringLiteral("idle/hidden"));
}

void metersOfThePane(std::chrono::milliseconds time)
{
    const auto runLoop = platform::makeDesktopServices().runLoop;
    PaneWindow window;
    window.show();
    runFor(2s);
    const auto timer = runLoop->scheduledTimer(100ms, [&] { window.controller().setLevels(nullptr); });
    runFor(500ms);
    tellWhatHappensIn(time, QStringLiteral("meters/ours"));
}

void metersOfABareClient(std::chrono::milliseconds time)
{
    const QString interface = platform::bus::busName(QStringLiteral("KS7DeviceControllerProxy"));
    const auto call = QDBusMessage::createMethodCall(platform::bus::busName(RemoteNames::AgentServer),
                                                     platform::bus::objectPath(RemoteNames::AgentServer),
                                                     interface, QStringLiteral("getAudioLevel_l"));
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] { QDBusConnection::sessionBus().call(call); });
    timer.setTimerType(Qt::PreciseTimer);
    timer.start(100ms);
    runFor(500ms);
    tellWhatHappensIn(time, QStringLiteral("meters/bare"));
}

void openings()
{
    const AgentProcess agent;
    PaneWindow window;
    const auto openAndClose = [&] {
        window.show();
        settle(50ms);
        window.hide();
        settle(10ms);
    };
    for (int time = 0; time < 20; ++time)
        openAndClose();
    const auto before = ::mallinfo2().uordblks;
    for (int time = 0; time < 100; ++time)
        openAndClose();
    tell(QStringLiteral("growth"), static_cast<double>(::mallinfo2().uordblks) - static_cast<double>(before));
}

void tellThreads()
{
    const auto tasks = QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const auto &task : tasks) {
        QFile name(QStringLiteral("/proc/self/task/%1/comm").arg(task));
        if (name.open(QIODevice::ReadOnly))
            tell(QStringLiteral("thread ") + QString::fromUtf8(name.readAll().trimmed()), 1);
    }
}

void open()
{
    const AgentProcess agent;
    PaneWindow window;
    window.show();
    settle(1500ms);
    tell(QStringLiteral("gstreamer"), gst_is_initialized());
    tellThreads();
}

/// The least that opening takes: for counting its instructions.
void openOnly()
{
    const AgentProcess agent;
    PaneWindow window;
    window.show();
    window.table()->viewport()->repaint();
}

/// The time of each event's handling, so that the longest is known.
class TimedApplication : public QApplication {
public:
    using QApplication::QApplication;
    bool notify(QObject *receiver, QEvent *event) override
    {
        QElapsedTimer clock;
        clock.start();
        const bool handled = QApplication::notify(receiver, event);
        longest = std::max(longest, static_cast<double>(clock.nsecsElapsed()) / 1e6);
        return handled;
    }
    double longest = 0;
};

template <class Action>
void tellLongestBlock(TimedApplication &application, const char *name, Action action)
{
    settle(100ms);
    application.longest = 0;
    QElapsedTimer clock;
    clock.start();
    action();
    const double direct = static_cast<double>(clock.nsecsElapsed()) / 1e6;
    settle(100ms);
    tell(QStringLiteral("block ") + QString::fromLatin1(name), std::max(direct, application.longest));
}

void actions(TimedApplication &application)
{
    const AgentProcess agent;
    PaneWindow window;
    const auto &outlets = window.controller().outlets;
    tellLongestBlock(application, "open", [&] { window.show(); });
    tellLongestBlock(application, "hide", [&] { window.hide(); });
    tellLongestBlock(application, "show again", [&] { window.show(); });
    tellLongestBlock(application, "choose a camera", [&] { window.table()->clickRow(1); });
    tellLongestBlock(application, "search", [&] { outlets.addButton->click(); });
    tellLongestBlock(application, "remove a camera", [&] { outlets.removeButton->click(); });
    tellLongestBlock(application, "status menu", [&] { window.controller().statusMenuCheckbox(nullptr); });
    tellLongestBlock(application, "switch off and on",
                     [&] { window.controller().enableKS7Checkbox(nullptr); });
    tellLongestBlock(application, "video size", [&] { window.controller().optimizeForChanged(nullptr); });
}

} // namespace

int main(int argc, char **argv)
{
    TimedApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    const QString what = words.value(1);
    const int number = words.value(2).toInt();
    if (what == QLatin1String("refresh"))
        Refreshes(number).measure(words.value(3).toInt());
    else if (what == QLatin1String("idle"))
        idle(std::chrono::seconds(number));
    else if (what == QLatin1String("openings"))
        openings();
    else if (what == QLatin1String("open"))
        open();
    else if (what == QLatin1String("open-only"))
        openOnly();
    else if (what == QLatin1String("actions"))
        actions(application);
    else if (what == QLatin1String("meters")) {
        const AgentProcess agent;
        words.value(3) == QLatin1String("ours") ? metersOfThePane(std::chrono::seconds(number))
                                                : metersOfABareClient(std::chrono::seconds(number));
    } else {
        std::fputs("usage: pane_bench refresh CAMERAS TIMES | idle SECONDS | meters SECONDS ours|bare | "
                   "openings | open | "
                   "open-only | actions\n",
                   stderr);
        return 2;
    }
    return 0;
}
