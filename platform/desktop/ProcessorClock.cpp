#include "platform/desktop/ProcessorClock.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>

namespace platform {
namespace {

constexpr double HertzPerKilohertz = 1e3;
constexpr double HertzPerMegahertz = 1e6;
constexpr double HertzPerGigahertz = 1e9;
// Enough for a processor of a thousand cores; these files tell no size beforehand.
constexpr qint64 MaximumFileSize = qint64(4) << 20;

QByteArray beginningOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.read(MaximumFileSize) : QByteArray();
}

/// 0 for what no processor runs at.
std::uint64_t plausible(double hertz)
{
    constexpr double Fastest = 1000 * HertzPerGigahertz;
    return hertz >= 1 && hertz < Fastest ? static_cast<std::uint64_t>(std::llround(hertz)) : 0;
}

/// "… @ 2.40GHz", as makers write the nominal clock into the processor's name.
std::uint64_t clockInModelName(const QString &cpuinfo)
{
    static const QRegularExpression pattern(
        QStringLiteral("^model name\\s*:.*@\\s*([0-9]+(?:\\.[0-9]+)?)\\s*([GM])Hz"),
        QRegularExpression::MultilineOption);
    const QRegularExpressionMatch match = pattern.match(cpuinfo);
    const double unit = match.captured(2) == QLatin1String("G") ? HertzPerGigahertz : HertzPerMegahertz;
    return plausible(match.captured(1).toDouble() * unit);
}

std::uint64_t fastestCore(const QString &cpuinfo)
{
    static const QRegularExpression pattern(QStringLiteral("^cpu MHz\\s*:\\s*([0-9]+(?:\\.[0-9]+)?)\\s*$"),
                                            QRegularExpression::MultilineOption);
    std::uint64_t fastest = 0;
    auto matches = pattern.globalMatch(cpuinfo);
    while (matches.hasNext())
        fastest = std::max(fastest, plausible(matches.next().captured(1).toDouble() * HertzPerMegahertz));
    return fastest;
}

class LinuxProcessorClock : public ProcessorClock {
public:
    explicit LinuxProcessorClock(const QString &sysRoot)
        : mRoot(sysRoot)
    {
    }

    std::uint64_t frequency() override
    {
        const QString scaling = mRoot.filePath(QStringLiteral("sys/devices/system/cpu/cpu0/cpufreq"));
        const QByteArray maximum = beginningOf(scaling + QStringLiteral("/cpuinfo_max_freq"));
        if (const std::uint64_t hertz = plausible(maximum.trimmed().toDouble() * HertzPerKilohertz))
            return hertz;
        const QString cpuinfo =
            QString::fromLatin1(beginningOf(mRoot.filePath(QStringLiteral("proc/cpuinfo"))));
        if (const std::uint64_t hertz = clockInModelName(cpuinfo))
            return hertz;
        // What the cores run at now is what they are built for only where nothing slows them down, as in
        // virtual machines.
        return QFile::exists(scaling) ? 0 : fastestCore(cpuinfo);
    }

private:
    QDir mRoot;
};

} // namespace

std::shared_ptr<ProcessorClock> makeProcessorClock(const QString &sysRoot)
{
    return std::make_shared<LinuxProcessorClock>(sysRoot);
}

} // namespace platform
