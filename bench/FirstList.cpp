// A plug-in that ends a Qt program soon after the first paint of a non-empty list. It prints the time from
// the start of the process to that paint in milliseconds, and the private memory in KiB.
#include <QAbstractItemView>
#include <QCoreApplication>
#include <QEvent>
#include <QFile>
#include <QGenericPlugin>
#include <QRegularExpression>
#include <QTimer>

#include <cstdio>
#include <ctime>
#include <unistd.h>

namespace {

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Returns the milliseconds since the start of the process. The parent process stores that time in
/// KS7_BENCH_START.
double sinceStart()
{
    timespec now = {};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    const double seconds = static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
    return (seconds - qgetenv("KS7_BENCH_START").toDouble()) * 1000;
}

int privateMemory()
{
    static const QRegularExpression line(QStringLiteral("Private_\\w+:\\s+(\\d+) kB"));
    const auto text = QString::fromLatin1(contentsOf(QStringLiteral("/proc/self/smaps_rollup")));
    int sum = 0;
    for (auto found = line.globalMatch(text); found.hasNext();)
        sum += found.next().captured(1).toInt();
    return sum;
}

bool isFilledList(QObject *watched)
{
    const auto *view = qobject_cast<QAbstractItemView *>(watched->parent());
    return view && view->viewport() == watched && view->model() && view->model()->rowCount() > 0;
}

class Watcher : public QObject {
public:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && !mSeen && isFilledList(watched)) {
            mSeen = true;
            mTime = sinceStart();
            // Measure the memory one second later, after the remaining work of the start-up.
            QTimer::singleShot(1000, this, [this] { tell(); });
        }
        return false;
    }

private:
    void tell() const
    {
        std::fprintf(stderr, "first list: %.1f ms, %d KiB\n", mTime, privateMemory());
        ::_exit(0);
    }

    bool mSeen = false;
    double mTime = 0;
};

} // namespace

class FirstList : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "firstlist.json")
public:
    QObject *create(const QString &, const QString &) override
    {
        auto *watcher = new Watcher;
        QCoreApplication::instance()->installEventFilter(watcher);
        return watcher;
    }
};

#include "FirstList.moc"
