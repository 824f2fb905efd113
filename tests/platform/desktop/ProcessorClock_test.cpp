#include "platform/desktop/ProcessorClock.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class ProcessorClockTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void theMaximumClockIsTakenFirst();
    void theFastestCoreCounts();
    void elseTheBaseFrequency();
    void elseTheNominalClockOfTheFirmware();
    void elseTheClockInTheModelName_data();
    void elseTheClockInTheModelName();
    void elseTheClockInTheDeviceTree();
    void elseTheClockInTheFirmwareTable();
    void theMomentaryClockIsNeverUsed_data();
    void theMomentaryClockIsNeverUsed();
    void malformedValuesAreNotUsed_data();
    void malformedValuesAreNotUsed();
    void aTruncatedFirmwareTableIsReadToItsEnd();
    void thisMachineHasAClock();

private:
    void fileHolds(const QString &path, const QByteArray &bytes);
    std::uint64_t frequency() { return platform::makeProcessorClock(mRoot->path())->frequency(); }

    std::unique_ptr<QTemporaryDir> mRoot;
};

namespace {
const QString Cores = QStringLiteral("sys/devices/system/cpu/");
const QString MaximumFile = Cores + QStringLiteral("cpu0/cpufreq/cpuinfo_max_freq");
const QString BaseFile = Cores + QStringLiteral("cpu0/cpufreq/base_frequency");
const QString NominalFile = Cores + QStringLiteral("cpu0/acpi_cppc/nominal_freq");
const QString CpuInfo = QStringLiteral("proc/cpuinfo");
const QString DeviceTreeCores = QStringLiteral("sys/firmware/devicetree/base/cpus/");
const QString DeviceTreeClock = DeviceTreeCores + QStringLiteral("cpu@0/clock-frequency");
const QString FirmwareTable = QStringLiteral("sys/firmware/dmi/tables/DMI");
const QByteArray Named = "processor\t: 0\nmodel name\t: Some(R) CPU @ 2.40GHz\ncpu MHz\t\t: 800.012\n";
const QByteArray Unnamed = "processor\t: 0\nmodel name\t: Virtual CPU\ncpu MHz\t\t: 1001.000\n\n"
                           "processor\t: 1\nmodel name\t: Virtual CPU\ncpu MHz\t\t: 2699.998\n";
constexpr std::uint64_t Megahertz = 1'000'000;

/// An SMBIOS structure with a formatted part of 26 bytes and one string.
QByteArray smbiosStructure(int type, int megahertz)
{
    QByteArray structure(26, '\0');
    structure[0] = static_cast<char>(type);
    structure[1] = static_cast<char>(structure.size());
    structure[0x16] = static_cast<char>(megahertz % 256);
    structure[0x17] = static_cast<char>(megahertz / 256);
    return structure + QByteArray("text\0\0", 6);
}

const QByteArray TwoProcessors =
    smbiosStructure(1, 60000) + smbiosStructure(4, 1800) + smbiosStructure(4, 2000) + smbiosStructure(4, 0);
}

void ProcessorClockTest::init()
{
    mRoot = std::make_unique<QTemporaryDir>();
}

void ProcessorClockTest::fileHolds(const QString &path, const QByteArray &bytes)
{
    const QString whole = mRoot->filePath(path);
    QVERIFY(QDir().mkpath(QFileInfo(whole).path()));
    QFile file(whole);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

void ProcessorClockTest::theMaximumClockIsTakenFirst()
{
    fileHolds(MaximumFile, "3400000\n");
    fileHolds(CpuInfo, Named);
    QCOMPARE(frequency(), 3400 * Megahertz);
}

void ProcessorClockTest::theFastestCoreCounts()
{
    fileHolds(MaximumFile, "1400000\n");
    fileHolds(Cores + QStringLiteral("cpu10/cpufreq/cpuinfo_max_freq"), "2200000\n");
    fileHolds(Cores + QStringLiteral("cpu11/cpufreq/cpuinfo_max_freq"), "1400000\n");
    fileHolds(Cores + QStringLiteral("cpufreq/cpuinfo_max_freq"), "9000000\n");
    QCOMPARE(frequency(), 2200 * Megahertz);
}

void ProcessorClockTest::elseTheBaseFrequency()
{
    fileHolds(MaximumFile, "");
    fileHolds(BaseFile, "2100000\n");
    fileHolds(NominalFile, "1900\n");
    fileHolds(CpuInfo, Named);
    QCOMPARE(frequency(), 2100 * Megahertz);
}

void ProcessorClockTest::elseTheNominalClockOfTheFirmware()
{
    fileHolds(NominalFile, "1900\n");
    fileHolds(CpuInfo, Named);
    QCOMPARE(frequency(), 1900 * Megahertz);
}

void ProcessorClockTest::elseTheClockInTheModelName_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<quint64>("megahertz");
    QTest::newRow("gigahertz") << QByteArray("Some(R) CPU 4500 @ 2.40GHz") << quint64(2400);
    QTest::newRow("megahertz") << QByteArray("Old CPU @ 800MHz") << quint64(800);
    QTest::newRow("without the sign") << QByteArray("Old CPU 3.00GHz") << quint64(3000);
    QTest::newRow("more behind it") << QByteArray("Old CPU 1.7GHz (Family 6)") << quint64(1700);
}

void ProcessorClockTest::elseTheClockInTheModelName()
{
    QFETCH(QByteArray, name);
    fileHolds(CpuInfo, "processor : 0\nmodel name\t: " + name + "\ncpu MHz : 400.0\n");
    fileHolds(FirmwareTable, TwoProcessors);
    QTEST(quint64(frequency() / Megahertz), "megahertz");
}

void ProcessorClockTest::elseTheClockInTheDeviceTree()
{
    fileHolds(CpuInfo, "processor : 0\nBogoMIPS : 108.00\n");
    fileHolds(DeviceTreeClock, QByteArray("\x47\x86\x8c\x00", 4));
    QCOMPARE(frequency(), 1200 * Megahertz);
    fileHolds(DeviceTreeCores + QStringLiteral("cpu@100/clock-frequency"),
              QByteArray("\0\0\0\x01\x2a\x05\xf2\0", 8));
    QCOMPARE(frequency(), 5000 * Megahertz);
}

void ProcessorClockTest::elseTheClockInTheFirmwareTable()
{
    fileHolds(CpuInfo, Unnamed);
    fileHolds(FirmwareTable, TwoProcessors);
    QCOMPARE(frequency(), 2000 * Megahertz);
}

void ProcessorClockTest::theMomentaryClockIsNeverUsed_data()
{
    QTest::addColumn<bool>("maySlowDown");
    QTest::newRow("virtual machine") << false;
    QTest::newRow("slowed down") << true;
}

void ProcessorClockTest::theMomentaryClockIsNeverUsed()
{
    QFETCH(bool, maySlowDown);
    if (maySlowDown)
        fileHolds(MaximumFile, "");
    fileHolds(CpuInfo, Unnamed);
    QCOMPARE(frequency(), std::uint64_t(0));
}

void ProcessorClockTest::malformedValuesAreNotUsed_data()
{
    QTest::addColumn<QByteArray>("maximum");
    QTest::addColumn<QByteArray>("cpuinfo");
    QTest::newRow("nothing") << QByteArray() << QByteArray();
    QTest::newRow("words") << QByteArray("fast\n")
                           << QByteArray("model name : CPU @ fastGHz\ncpu MHz : much\n");
    QTest::newRow("zero") << QByteArray("0\n") << QByteArray("model name : CPU @ 0.00GHz\ncpu MHz : 0\n");
    QTest::newRow("negative") << QByteArray("-1\n") << QByteArray("cpu MHz : -2400\n");
    QTest::newRow("not finite") << QByteArray("inf") << QByteArray("cpu MHz : nan\n");
    QTest::newRow("huge") << QByteArray("1e300") << QByteArray("cpu MHz : 99999999999999999999999\n");
    QTest::newRow("bytes") << QByteArray("\xff\0\x80", 3) << QByteArray(100'000, '\xfe');
}

void ProcessorClockTest::malformedValuesAreNotUsed()
{
    QFETCH(QByteArray, maximum);
    QFETCH(QByteArray, cpuinfo);
    QCOMPARE(frequency(), std::uint64_t(0));
    fileHolds(CpuInfo, cpuinfo);
    QCOMPARE(frequency(), std::uint64_t(0));
    for (const auto &file : {MaximumFile, BaseFile, NominalFile, FirmwareTable, DeviceTreeClock})
        fileHolds(file, maximum);
    QCOMPARE(frequency(), std::uint64_t(0));
}

void ProcessorClockTest::aTruncatedFirmwareTableIsReadToItsEnd()
{
    for (int size = 0; size < TwoProcessors.size(); ++size) {
        fileHolds(FirmwareTable, TwoProcessors.left(size));
        QVERIFY(frequency() <= 2000 * Megahertz);
    }
    fileHolds(FirmwareTable, QByteArray(1000, '\x04'));
    QCOMPARE(frequency(), std::uint64_t(0));
}

void ProcessorClockTest::thisMachineHasAClock()
{
    // A frequency of 0 is valid, because some systems report no processor clock.
    const std::uint64_t hertz = platform::makeProcessorClock()->frequency();
    QVERIFY(hertz == 0 || (hertz > 100'000'000 && hertz < 20'000'000'000));
}

QTEST_GUILESS_MAIN(ProcessorClockTest)
#include "ProcessorClock_test.moc"
