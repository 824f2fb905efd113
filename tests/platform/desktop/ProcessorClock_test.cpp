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
    void elseTheClockInTheModelName();
    void elseTheFastestCoreWhereNothingSlowsItDown();
    void aCoreThatMayBeSlowedDownTellsNothing();
    void garbageIsNoClock_data();
    void garbageIsNoClock();
    void thisMachineHasAClock();

private:
    void fileHolds(const QString &path, const QByteArray &bytes);
    std::uint64_t frequency() { return platform::makeProcessorClock(mRoot->path())->frequency(); }

    std::unique_ptr<QTemporaryDir> mRoot;
};

namespace {
const QString MaximumFile = QStringLiteral("sys/devices/system/cpu/cpu0/cpufreq/cpuinfo_max_freq");
const QString CpuInfo = QStringLiteral("proc/cpuinfo");
const QByteArray Named = "processor\t: 0\nmodel name\t: Some(R) CPU @ 2.40GHz\ncpu MHz\t\t: 800.012\n";
const QByteArray Unnamed = "processor\t: 0\nmodel name\t: Virtual CPU\ncpu MHz\t\t: 1001.000\n\n"
                           "processor\t: 1\nmodel name\t: Virtual CPU\ncpu MHz\t\t: 2699.998\n";
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
    QCOMPARE(frequency(), std::uint64_t(3'400'000'000));
}

void ProcessorClockTest::elseTheClockInTheModelName()
{
    fileHolds(CpuInfo, Named);
    QCOMPARE(frequency(), std::uint64_t(2'400'000'000));
    fileHolds(CpuInfo, "model name\t: Old CPU @ 800MHz\ncpu MHz : 400.0\n");
    QCOMPARE(frequency(), std::uint64_t(800'000'000));
}

void ProcessorClockTest::elseTheFastestCoreWhereNothingSlowsItDown()
{
    fileHolds(CpuInfo, Unnamed);
    QCOMPARE(frequency(), std::uint64_t(2'699'998'000));
}

void ProcessorClockTest::aCoreThatMayBeSlowedDownTellsNothing()
{
    fileHolds(MaximumFile, "");
    fileHolds(CpuInfo, Unnamed);
    QCOMPARE(frequency(), std::uint64_t(0));
}

void ProcessorClockTest::garbageIsNoClock_data()
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

void ProcessorClockTest::garbageIsNoClock()
{
    QFETCH(QByteArray, maximum);
    QFETCH(QByteArray, cpuinfo);
    QCOMPARE(frequency(), std::uint64_t(0));
    fileHolds(CpuInfo, cpuinfo);
    QCOMPARE(frequency(), std::uint64_t(0));
    fileHolds(MaximumFile, maximum);
    QCOMPARE(frequency(), std::uint64_t(0));
}

void ProcessorClockTest::thisMachineHasAClock()
{
    // Some processors tell nothing; what they tell is a clock.
    const std::uint64_t hertz = platform::makeProcessorClock()->frequency();
    QVERIFY(hertz == 0 || (hertz > 100'000'000 && hertz < 20'000'000'000));
}

QTEST_GUILESS_MAIN(ProcessorClockTest)
#include "ProcessorClock_test.moc"
