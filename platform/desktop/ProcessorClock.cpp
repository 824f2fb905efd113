#include "platform/desktop/ProcessorClock.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QtEndian>

#include <algorithm>
#include <cmath>

namespace platform {
namespace {

constexpr double HertzPerKilohertz = 1e3;
constexpr double HertzPerMegahertz = 1e6;
constexpr double HertzPerGigahertz = 1e9;
// Limit in bytes for reading one file. QFile::size() cannot replace it, because files in /proc report 0. The
// limit is enough for a /proc/cpuinfo with a thousand processors.
constexpr qint64 MaximumFileSize = qint64(4) << 20;

QByteArray beginningOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.read(MaximumFileSize) : QByteArray();
}

/// Rounds the frequency. Returns 0 unless it is between 1 Hz and 1000 GHz.
std::uint64_t plausible(double hertz)
{
    constexpr double Fastest = 1000 * HertzPerGigahertz;
    return hertz >= 1 && hertz < Fastest ? static_cast<std::uint64_t>(std::llround(hertz)) : 0;
}

/// Reads the frequency from a model name like "… @ 2.40GHz" or "… CPU 3.00GHz" in /proc/cpuinfo. Its field
/// "cpu MHz" is not used, because it is a core's momentary frequency.
std::uint64_t clockInModelName(const QByteArray &cpuinfo)
{
    static const QRegularExpression pattern(
        QStringLiteral("^model name\\s*:.*[@\\s]([0-9]+(?:\\.[0-9]+)?)\\s*([GM])Hz\\b"),
        QRegularExpression::MultilineOption);
    const QRegularExpressionMatch match = pattern.match(QString::fromLatin1(cpuinfo));
    const double unit = match.captured(2) == QLatin1String("G") ? HertzPerGigahertz : HertzPerMegahertz;
    return plausible(match.captured(1).toDouble() * unit);
}

/// Reads a frequency from a device tree, where a number has one or two big-endian cells of 32 bits.
std::uint64_t clockInCells(const QByteArray &cells)
{
    if (cells.size() == sizeof(quint32))
        return plausible(qFromBigEndian<quint32>(cells.constData()));
    if (cells.size() == sizeof(quint64))
        return plausible(static_cast<double>(qFromBigEndian<quint64>(cells.constData())));
    return 0;
}

// Layout of an SMBIOS structure: size of its header, type number of a processor, offset of the current speed.
constexpr int SmbiosHeaderSize = 4;
constexpr int SmbiosProcessor = 4;
constexpr int SmbiosCurrentSpeed = 0x16;

/// Returns the speed of the fastest processor in an SMBIOS table. Each structure is followed by its strings,
/// which end with two zero bytes.
std::uint64_t clockInSmbios(const QByteArray &table)
{
    const QByteArray endOfStrings(2, '\0');
    std::uint64_t fastest = 0;
    for (int at = 0; at >= 0 && at + SmbiosHeaderSize <= table.size();) {
        const int size = static_cast<unsigned char>(table.at(at + 1));
        if (size < SmbiosHeaderSize || at + size > table.size())
            break;
        if (table.at(at) == SmbiosProcessor && size >= SmbiosCurrentSpeed + int(sizeof(quint16))) {
            const auto speed = qFromLittleEndian<quint16>(table.constData() + at + SmbiosCurrentSpeed);
            fastest = std::max(fastest, plausible(speed * HertzPerMegahertz));
        }
        const int end = static_cast<int>(table.indexOf(endOfStrings, at + size));
        at = end < 0 ? -1 : end + int(endOfStrings.size());
    }
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
        if (const auto hertz = fastestCore(QStringLiteral("cpufreq/cpuinfo_max_freq"), HertzPerKilohertz))
            return hertz;
        if (const auto hertz = fastestCore(QStringLiteral("cpufreq/base_frequency"), HertzPerKilohertz))
            return hertz;
        if (const auto hertz = fastestCore(QStringLiteral("acpi_cppc/nominal_freq"), HertzPerMegahertz))
            return hertz;
        if (const auto hertz = clockInModelName(fileUnderRoot(QStringLiteral("proc/cpuinfo"))))
            return hertz;
        if (const auto hertz = clockInDeviceTree())
            return hertz;
        return clockInSmbios(fileUnderRoot(QStringLiteral("sys/firmware/dmi/tables/DMI")));
    }

private:
    [[nodiscard]] QByteArray fileUnderRoot(const QString &path) const
    {
        return beginningOf(mRoot.filePath(path));
    }

    /// Returns the highest frequency of all cores, because the first one may be an efficiency core.
    [[nodiscard]] std::uint64_t fastestCore(const QString &file, double unit) const
    {
        const QDir cores(mRoot.filePath(QStringLiteral("sys/devices/system/cpu")));
        std::uint64_t fastest = 0;
        for (const QString &core : cores.entryList({QStringLiteral("cpu[0-9]*")}, QDir::Dirs)) {
            const QByteArray number = beginningOf(cores.filePath(core + QLatin1Char('/') + file));
            fastest = std::max(fastest, plausible(number.trimmed().toDouble() * unit));
        }
        return fastest;
    }

    [[nodiscard]] std::uint64_t clockInDeviceTree() const
    {
        const QDir cores(mRoot.filePath(QStringLiteral("sys/firmware/devicetree/base/cpus")));
        std::uint64_t fastest = 0;
        for (const QString &core : cores.entryList({QStringLiteral("cpu@*")}, QDir::Dirs))
            fastest = std::max(
                fastest,
                clockInCells(beginningOf(cores.filePath(core + QStringLiteral("/clock-frequency")))));
        return fastest;
    }

    QDir mRoot;
};

} // namespace

std::shared_ptr<ProcessorClock> makeProcessorClock(const QString &sysRoot)
{
    return std::make_shared<LinuxProcessorClock>(sysRoot);
}

} // namespace platform
