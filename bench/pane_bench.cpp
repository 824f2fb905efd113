// Measures the pane in a window, with its agent in another process. Prints a line per result: name, tab,
// number. main() lists the measurements.
#include "agent/KS7DeviceControllerProxy.h"
#include "agent/NotificationNames.h"
#include "agent/RemoteNames.h"
#include "bench/AgentProcess.h"
#include "bench/BareClient.h"
#include "bench/PaneWindow.h"
#include "cameras/KS7AnimatingStatusTableView.h"
#include "cameras/KS7Cam.h"
#include "pane/KS7SettingsWindowController.h"
#include "platform/base/RunLoop.h"
#include "platform/preferences/UserDefaults.h"
#include "settings/KS7Domain.h"

#include <QAbstractEventDispatcher>
#include <QAbstractTableModel>
#include <QApplication>
#include <QCheckBox>
#include <QDBusInterface>
#include <QDBusReply>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

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

/// Processes events for `quiet`, so that earlier work does not count in the next measurement.
void settle(std::chrono::milliseconds quiet = 300ms)
{
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < quiet.count())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
}

/// Runs the event loop for `time`. Like in a real program, the thread sleeps between two events.
void runFor(std::chrono::milliseconds time)
{
    QEventLoop loop;
    QTimer::singleShot(time, &loop, &QEventLoop::quit);
    loop.exec();
}

/// Counts the paint events of a view's viewport.
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

/// A model whose cells have a text and no other data.
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

/// A plain QTableView, with which the pane's table is compared. Both have the same size and row height.
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

QDBusMessage callOf(const QString &method)
{
    return QDBusMessage::createMethodCall(RemoteNames::busName(RemoteNames::AgentServer),
                                          RemoteNames::objectPath(RemoteNames::AgentServer),
                                          KS7DeviceControllerProxy::InterfaceName, method);
}

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
            tell(name + QStringLiteral("QtDBus"), refreshOverQtDBus(bare));
            settle(20ms);
            tell(QStringLiteral("paint %1/ours").arg(mCameras), paintOurs());
        }
    }

private:
    // Stores the calls of one refresh, which the compared clients repeat, and prints their number. If a
    // refresh caused a second one, this number would be higher.
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
        return refreshBy(table, [this] { mTexts = mClient.call(mCalls); });
    }

    /// Makes the calls of the pane's refresh with QtDBus alone, the D-Bus library that the pane uses.
    double refreshOverQtDBus(BareTable &table)
    {
        return refreshBy(table, [this] {
            for (const auto &words : mCalls) {
                auto call = callOf(words.section(QLatin1Char(' '), 0, 0));
                if (words.contains(QLatin1Char(' ')))
                    call << words.section(QLatin1Char(' '), 1);
                QDBusConnection::sessionBus().call(call);
            }
        });
    }

    template <class Calls>
    double refreshBy(BareTable &table, Calls makeCalls)
    {
        QElapsedTimer clock;
        clock.start();
        mClient.post(QStringLiteral("KS7HeardByNobodyElse"));
        mClient.hear();
        makeCalls();
        table.showTexts(mTexts, mCameras);
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
    QStringList mTexts;
};

/// Returns how often the threads of this process have gone to sleep. Each sleep was followed by a wake-up.
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
    // Two of the counted wake-ups belong to the measurement itself: its timer and its end.
    tell(QStringLiteral("wake-ups ") + name, wakeUps() - wakes);
    tell(QStringLiteral("processor ") + name, processorTime() - used);
}

void idle(std::chrono::milliseconds settling, std::chrono::milliseconds time)
{
    tellWhatHappensIn(time, QStringLiteral("idle/empty"));
    const AgentProcess agent;
    PaneWindow window;
    window.show();
    runFor(settling);
    tellWhatHappensIn(time, QStringLiteral("idle/shown"));
    window.hide();
    runFor(2s);
    tellWhatHappensIn(time, QStringLiteral("idle/hidden"));
}

void metersOfThePane(std::chrono::milliseconds time)
{
    const auto runLoop = platform::makeQtRunLoop();
    PaneWindow window;
    window.show();
    runFor(2s);
    const auto timer = runLoop->scheduledTimer(100ms, [&] { window.controller().setLevels(nullptr); });
    runFor(500ms);
    tellWhatHappensIn(time, QStringLiteral("meters/ours"));
}

void metersOfABareClient(std::chrono::milliseconds time)
{
    const auto call = callOf(QStringLiteral("getAudioLevel_l"));
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] { QDBusConnection::sessionBus().call(call); });
    timer.setTimerType(Qt::PreciseTimer);
    timer.start(100ms);
    runFor(500ms);
    tellWhatHappensIn(time, QStringLiteral("meters/bare"));
}

void openings(int times)
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
    for (int time = 0; time < times; ++time)
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

/// Measures the longest time in which the main thread did not return to an event loop, which may be a nested
/// one.
class TimedApplication : public QApplication {
public:
    using QApplication::QApplication;
    bool notify(QObject *receiver, QEvent *event) override
    {
        lap();
        const bool handled = QApplication::notify(receiver, event);
        lap();
        return handled;
    }
    void watchWaiting()
    {
        connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this, [this] {
            lap();
            mClock.invalidate();
        });
    }
    void forget()
    {
        mClock.invalidate();
        longest = 0;
    }
    double longest = 0;

private:
    void lap()
    {
        if (mClock.isValid())
            longest = std::max(longest, static_cast<double>(mClock.nsecsElapsed()) / 1e6);
        mClock.start();
    }

    QElapsedTimer mClock;
};

/// Runs an action and prints the longest block of the main thread from its start until `aftermath` later.
template <class Action>
void tellLongestBlock(TimedApplication &application, const char *name, Action action,
                      std::chrono::milliseconds aftermath = 300ms)
{
    runFor(300ms);
    application.forget();
    QTimer::singleShot(0, &application, action);
    runFor(aftermath);
    tell(QStringLiteral("block ") + QString::fromLatin1(name), application.longest);
}

/// Measures the firmware sheet: opens it, runs an update and closes it. During the update, a client posts the
/// notifications that an agent would post.
void firmwareActions(TimedApplication &application, const Outlets &outlets,
                     KS7SettingsWindowController &controller)
{
    BareClient agent;
    const auto proceed = [&] { outlets.firmwareContinueButton->click(); };
    tellLongestBlock(application, "open the firmware sheet", [&] { controller.installFirmware(nullptr); });
    tellLongestBlock(application, "firmware, first step", proceed);
    QTimer::singleShot(600ms, &application, [&] { agent.post(NotificationNames::FirmwareUpdateProgress); });
    QTimer::singleShot(900ms, &application, [&] { agent.post(NotificationNames::FirmwareUpdateEnded); });
    tellLongestBlock(application, "firmware, the update itself", proceed, 1200ms);
    tellLongestBlock(application, "firmware, last step", proceed);
}

void sheetActions(TimedApplication &application, const Outlets &outlets,
                  KS7SettingsWindowController &controller)
{
    tellLongestBlock(application, "open the properties sheet",
                     [&] { controller.showCameraProperties(nullptr); });
    outlets.cameraNameText->setText(QStringLiteral("Porch"));
    tellLongestBlock(application, "rename", [&] { controller.propertiesOkay(nullptr); });
    tellLongestBlock(application, "open the passkey sheet", [&] { controller.changePIN(nullptr); });
    outlets.newPINText->setText(QStringLiteral("1234"));
    tellLongestBlock(
        application, "new passkey", [&] { outlets.pinOkayButton->click(); }, 1000ms);
    firmwareActions(application, outlets, controller);
}

/// Returns whether all these methods are among the calls that the agent has received. If one is missing, an
/// action did nothing and its measured time is worthless.
bool haveBeenMade(const QStringList &methods, const QStringList &calls)
{
    return std::all_of(methods.begin(), methods.end(), [&calls](const QString &method) {
        const bool made = std::any_of(calls.begin(), calls.end(),
                                      [&method](const QString &call) { return call.startsWith(method); });
        if (!made)
            std::fprintf(stderr, "%s was not called\n", qPrintable(method));
        return made;
    });
}

/// Writes a preferences file, because the pane never creates a missing one.
void havePreferences()
{
    const QString path = platform::fileOfDomain(KS7Domain::Name);
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write("<plist version=\"1.0\"><dict><key>VideoSize2</key><integer>0</integer></dict></plist>");
}

bool actions(TimedApplication &application)
{
    application.watchWaiting();
    havePreferences();
    AgentProcess agent;
    agent.haveCameraAtTheCable();
    PaneWindow *window = nullptr;
    tellLongestBlock(
        application, "load and open",
        [&] {
            window = new PaneWindow;
            window->show();
        },
        1500ms);
    auto &controller = window->controller();
    const auto &outlets = controller.outlets;
    tellLongestBlock(application, "hide", [&] { window->hide(); });
    tellLongestBlock(application, "show again", [&] { window->show(); });
    tellLongestBlock(application, "choose a camera", [&] { window->table()->clickRow(1); });
    tellLongestBlock(application, "search", [&] { outlets.addButton->click(); });
    sheetActions(application, outlets, controller);
    tellLongestBlock(application, "status menu", [&] { outlets.statusMenuCheckbox->click(); });
    tellLongestBlock(application, "switch off", [&] { outlets.enableKS7Checkbox->click(); });
    tellLongestBlock(application, "switch on", [&] { outlets.enableKS7Checkbox->click(); });
    tellLongestBlock(application, "video size", [&] { controller.optimizeForChanged(nullptr); });
    tellLongestBlock(application, "debug log on", [&] { outlets.debugLog->click(); });
    tellLongestBlock(application, "debug log off", [&] { outlets.debugLog->click(); });
    tellLongestBlock(application, "remove a camera", [&] { controller.removeCamera(nullptr); });
    delete window;
    return haveBeenMade({QStringLiteral("setName"), QStringLiteral("setPassKey"),
                         QStringLiteral("startUpdate"), QStringLiteral("setPreferredDeviceAddress"),
                         QStringLiteral("removeCameraAtIndex"), QStringLiteral("post KS7ToggleEnabled"),
                         QStringLiteral("post KS7ToggleDebugLog")},
                        agent.takeCalls());
}

/// Measures starts and stops of the preview, with the camera of the stand-in agent.
bool previewActions(TimedApplication &application)
{
    application.watchWaiting();
    QProcess agent;
    agent.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    agent.start(QCoreApplication::applicationDirPath() + QStringLiteral("/../bin/ks7-agent-simulator"),
                QStringList());
    runFor(2s);
    PaneWindow window;
    window.show();
    auto &controller = window.controller();
    const auto streams = [&] {
        const auto camera = controller.selectedCam();
        return camera && camera->status() == kKS7CamStreaming;
    };
    while (!streams())
        runFor(100ms);
    runFor(2s);
    const auto press = [&] { controller.outlets.startButton->click(); };
    tellLongestBlock(application, "start the preview", press, 3000ms);
    const bool started = controller.isStreaming();
    if (!started)
        std::fputs("the preview did not start\n", stderr);
    tellLongestBlock(application, "stop the preview", press, 1000ms);
    tellLongestBlock(application, "start the preview again", press, 3000ms);
    tellLongestBlock(
        application, "hide during the preview", [&] { window.hide(); }, 1000ms);
    agent.terminate();
    agent.waitForFinished();
    return started;
}

} // namespace

int main(int argc, char **argv)
{
    // Do not use GLib's event dispatcher, because it never emits aboutToBlock().
    qputenv("QT_NO_GLIB", "1");
    TimedApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    const QString what = words.value(1);
    const int number = words.value(2).toInt();
    if (what == QLatin1String("refresh"))
        Refreshes(number).measure(words.value(3).toInt());
    else if (what == QLatin1String("idle"))
        idle(std::chrono::seconds(number), std::chrono::seconds(words.value(3).toInt()));
    else if (what == QLatin1String("openings"))
        openings(number);
    else if (what == QLatin1String("open"))
        open();
    else if (what == QLatin1String("actions"))
        return actions(application) ? 0 : 1;
    else if (what == QLatin1String("preview-actions"))
        return previewActions(application) ? 0 : 1;
    else if (what == QLatin1String("meters")) {
        AgentProcess agent;
        if (words.value(4) == QLatin1String("moving"))
            agent.moveLevels();
        words.value(3) == QLatin1String("ours") ? metersOfThePane(std::chrono::seconds(number))
                                                : metersOfABareClient(std::chrono::seconds(number));
    } else {
        std::fputs(
            "usage: pane_bench refresh CAMERAS TIMES | idle SETTLING SECONDS | meters SECONDS ours|bare "
            "still|moving | openings TIMES | open | actions | preview-actions\n",
            stderr);
        return 2;
    }
    return 0;
}
