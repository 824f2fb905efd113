#include "platform/bus/ServiceProbe.h"

#include "platform/bus/BusCall.h"
#include "platform/bus/BusNames.h"

#include <QFile>

#include <unistd.h>

namespace platform {
namespace {

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Returns the time of the boot in seconds since the epoch; 0 if the kernel does not report it.
qint64 bootTime()
{
    const auto lines = contentsOf(QStringLiteral("/proc/stat")).split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith("btime "))
            return line.mid(6).trimmed().toLongLong();
    }
    return 0;
}

/// Clock ticks from the boot to the start of the process; -1 for an unknown process.
qint64 startTicks(std::uint32_t process)
{
    const QByteArray status = contentsOf(QStringLiteral("/proc/%1/stat").arg(process));
    // Skip the second field of /proc/PID/stat: the program's name in brackets, which may contain brackets and
    // blanks.
    const auto fields = status.mid(status.lastIndexOf(')') + 1).simplified().split(' ');
    constexpr int StartTime = 22 - 3;
    return fields.size() > StartTime ? fields[StartTime].toLongLong() : -1;
}

} // namespace

ServiceProbe::ServiceProbe(QDBusConnection::BusType type)
    : mBus(type)
{
    mBus.openInBackground();
}

bool ServiceProbe::isReachable()
{
    if (!mHangs)
        mBus.reopenIfLost();
    return mBus.isOpen() && !mHangs;
}

ServiceProbe::Presence ServiceProbe::presenceOf(const QString &busName)
{
    if (!isReachable())
        return Presence::NoBus;
    if (ask(QStringLiteral("NameHasOwner"), {busName}).value(0).toBool())
        return Presence::Running;
    const QVariantList startable = ask(QStringLiteral("ListActivatableNames"));
    if (!isReachable())
        return Presence::NoBus;
    return startable.value(0).toStringList().contains(busName) ? Presence::Startable : Presence::Absent;
}

std::optional<std::uint32_t> ServiceProbe::processOf(const QString &busName)
{
    const QVariantList answer = ask(QStringLiteral("GetConnectionUnixProcessID"), {busName});
    if (answer.isEmpty())
        return {};
    return answer.first().toUInt();
}

QVariantList ServiceProbe::ask(const QString &method, const QVariantList &arguments)
{
    if (!isReachable())
        return {};
    auto question = QDBusMessage::createMethodCall(bus::Daemon, bus::DaemonPath, bus::Daemon, method);
    question.setArguments(arguments);
    const QDBusMessage reply = callAndWait(mBus.connection(), question);
    if (reply.type() == QDBusMessage::ReplyMessage)
        return reply.arguments();
    mHangs = timedOut(reply);
    return {};
}

QDateTime processStart(std::uint32_t process)
{
    const qint64 boot = bootTime();
    const qint64 ticks = startTicks(process);
    const long ticksPerSecond = ::sysconf(_SC_CLK_TCK);
    if (boot <= 0 || ticks < 0 || ticksPerSecond <= 0)
        return {};
    return QDateTime::fromSecsSinceEpoch(boot + ticks / ticksPerSecond);
}

} // namespace platform
