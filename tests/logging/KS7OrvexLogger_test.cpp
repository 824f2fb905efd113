#include "logging/KS7OrvexLogger.h"

#include "platform/base/RunLoop.h"
#include "platform/desktop/Workspace.h"
#include "tests/support/Timeout.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QTest>

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <functional>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <syslog.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

// This test replaces the C library's functions for the system log, the clock and the disk. The replacements
// record their calls in these variables.
std::mutex systemLogLock;
QList<std::pair<int, QByteArray>> systemLog;
thread_local int clockReadings = 0;
thread_local int diskWaits = 0;

void recordSystemLog(int priority, const char *format, va_list arguments)
{
    const std::lock_guard lock(systemLogLock);
    systemLog.append({priority, QString::vasprintf(format, arguments).toUtf8()});
}

} // namespace

extern "C" void syslog(int priority, const char *format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    recordSystemLog(priority, format, arguments);
    va_end(arguments);
}

// Code compiled with _FORTIFY_SOURCE calls this function instead of syslog().
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" void __syslog_chk(int priority, int, const char *format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    recordSystemLog(priority, format, arguments);
    va_end(arguments);
}
// NOLINTEND(bugprone-reserved-identifier)

extern "C" int clock_gettime(clockid_t clock, timespec *now) noexcept
{
    ++clockReadings;
    return static_cast<int>(::syscall(SYS_clock_gettime, clock, now));
}

extern "C" int fsync(int descriptor)
{
    ++diskWaits;
    return static_cast<int>(::syscall(SYS_fsync, descriptor));
}

namespace {

const QString AppName = QStringLiteral("KS-7 System Preferences");
constexpr uid_t Nobody = 65534;
constexpr int ManySeconds = 60;

QString stampPattern()
{
    return QStringLiteral("\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3} ");
}

bool matches(const QString &pattern, const QString &text)
{
    return QRegularExpression(QRegularExpression::anchoredPattern(pattern)).match(text).hasMatch();
}

QString fileNameAt(std::time_t second)
{
    return AppName + QLatin1Char(' ')
        + QDateTime::fromSecsSinceEpoch(second).toString(QStringLiteral("yyyy-MM-dd 'at' HH.mm.ss"))
        + QStringLiteral(".log");
}

/// Redirects a standard stream to a descriptor until the destructor runs.
class Redirection {
public:
    Redirection(std::FILE *stream, int descriptor)
        : mStream(stream)
    {
        std::fflush(stream);
        mBefore = ::dup(::fileno(stream));
        ::dup2(descriptor, ::fileno(stream));
    }
    ~Redirection()
    {
        std::fflush(mStream);
        ::dup2(mBefore, ::fileno(mStream));
        ::close(mBefore);
    }
    Redirection(const Redirection &) = delete;
    Redirection &operator=(const Redirection &) = delete;

private:
    std::FILE *mStream;
    int mBefore = -1;
};

/// Returns the bytes that `work` writes to a standard stream.
QByteArray written(std::FILE *stream, const std::function<void()> &work)
{
    int ends[2] = {-1, -1};
    if (::pipe2(ends, O_CLOEXEC) != 0)
        qFatal("no pipe");
    QByteArray text;
    std::thread reader([&] {
        char block[4096];
        for (ssize_t count = ::read(ends[0], block, sizeof block); count > 0;
             count = ::read(ends[0], block, sizeof block))
            text.append(block, static_cast<int>(count));
    });
    {
        const Redirection toThePipe(stream, ends[1]);
        ::close(ends[1]);
        work();
    }
    reader.join();
    ::close(ends[0]);
    return text;
}

class RecordingWorkspace : public platform::Workspace {
public:
    bool openURL(const QUrl &) override { return false; }
    bool openBluetoothSettings() override { return false; }
    bool openFile(const QString &path) override
    {
        isInMainThread &= QThread::currentThread() == QCoreApplication::instance()->thread();
        opened.append(path);
        OrvexLog(u"opened");
        return true;
    }
    bool selectFile(const QString &path) override
    {
        isInMainThread &= QThread::currentThread() == QCoreApplication::instance()->thread();
        selected.append(path);
        OrvexLog(u"selected");
        return true;
    }
    QStringList opened;
    QStringList selected;
    bool isInMainThread = true;
};

/// Sets a time zone in which the local hour is 15. A twelve-hour clock would show a different hour.
void beInTheAfternoon()
{
    constexpr int Afternoon = 15;
    const int hour = QDateTime::currentDateTimeUtc().time().hour();
    qputenv("TZ", QByteArray("TST").append(QByteArray::number(hour - Afternoon)));
}

} // namespace

class KS7OrvexLoggerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { beInTheAfternoon(); }
    void init();
    void cleanup();

    void withoutADefaultLoggerNothingIsWritten();
    void errorsReachTheSystemConsoleWithoutADefaultLogger();
    void errorsReachTheDefaultLoggerToo();
    void theNameIsTheProgramsUntilOneIsSet();

    void aNewLoggerStartsAFileInItsFolder();
    void withoutFileLoggingThereIsNoFolder();
    void aLineHasATimeAndTheMessage();
    void theTimeIsWallClockTime();
    void aLaterLineHasALaterTime();
    void aNewTimeZoneIsNoticed();
    void aLineIsInTheFileAtOnce();
    void aMessageWithANewlineGetsNoSecondOne();
    void malformedTextIsLogged();
    void longMessagesAreNotCut();

    void standardOutputHasTheNameToo();
    void aLineIsOnStandardOutputAtOnce();
    void fileAndStandardOutputHaveTheSameTime();
    void theSystemLogHasOnlyTheMessage();
    void twoSinksUseTheMessageAsAFormat();
    void conversionsWithoutArgumentsAreUnchanged();
    void withAllSinksOffTheClockIsNotRead();
    void aPercentSignInTheNameIsPartOfTheFormat();
    void errnoIsPreserved();

    void functionsFormat();
    void aSecondDefaultLoggerKeepsTheFirst();

    void everySwitchToOnStartsAFile();
    void switchingOnTwiceKeepsTheFile();
    void linesWhileOffAreNotWritten();
    void twoFilesOfOneSecondAreOne();
    void anEmptiedFileContinuesAtItsBeginning();
    void anotherFolderStartsAFile();
    void anotherFolderHasTheLinesThatFollow();
    void theHomeFolderIsShownAsATilde();
    void theSeparatorIsWrittenOnDemand();
    void theFileIsSyncedOnRequest();
    void withoutAFileNothingWaitsForTheDisk();

    void openingAndRevealing();
    void openingAndRevealingFromAnotherThread();
    void nothingToOpenOrReveal();

    void aFileInTheFoldersPlace();
    void aFolderThatFailsEndsTheFile();
    void aFolderThatCannotBeWritten();
    void aFolderInTheFilesPlace();
    void theNextFileRecoversFromAFailure();
    void failuresOfTheFirstLoggerAreNotPrinted();
    void aFolderThatGoesAwayWhileLogging();
    void aDeviceThatIsFull();
    void aDiskThatFillsUpTearsNoLine();
    void aDestroyedLoggerClosesItsFile();

    void manyThreadsTearNoLine();
    void manyThreadsWhileTheFileIsSwitched();

private:
    QString folder() { return mHome->filePath(QStringLiteral("Library/Logs/KS7_Logs/") + AppName); }
    QString latestFile() { return latestFile(folder()); }
    QString latestFile(const QString &inFolder);
    QStringList files(const QString &inFolder);
    QStringList lines() { return lines(folder()); }
    QStringList lines(const QString &inFolder);
    QByteArray contents(const QString &path);
    QDateTime timeOfLine(int line);
    void nextSecond();
    void everyFileNameSoonIs(const std::function<bool(const QString &)> &make);
    KS7OrvexLogger *loggerToFile() { return KS7OrvexLogger::createDefaultLoggerToFile(true, false); }
    int openDescriptors() { return static_cast<int>(QDir(QStringLiteral("/proc/self/fd")).count()); }

    /// Runs the calls that are queued for the main thread.
    static void settle() { QCoreApplication::processEvents(); }

    std::shared_ptr<platform::RunLoop> mRunLoop = platform::makeQtRunLoop();
    std::unique_ptr<QTemporaryDir> mHome;
};

void KS7OrvexLoggerTest::init()
{
    mHome = std::make_unique<QTemporaryDir>();
    qputenv("HOME", QFile::encodeName(mHome->path()));
    gMainLogger = nullptr;
    KS7OrvexLogger::setAppName(AppName);
    systemLog.clear();
}

void KS7OrvexLoggerTest::cleanup()
{
    // Delete the default logger, which the product keeps until the process ends. So each test starts without
    // a logger.
    delete gMainLogger;
    gMainLogger = nullptr;
    delete gAppName;
    gAppName = nullptr;
}

QStringList KS7OrvexLoggerTest::files(const QString &inFolder)
{
    return QDir(inFolder).entryList(QDir::Files, QDir::Name);
}

QString KS7OrvexLoggerTest::latestFile(const QString &inFolder)
{
    const QStringList all = files(inFolder);
    return all.isEmpty() ? QString() : inFolder + QLatin1Char('/') + all.last();
}

QByteArray KS7OrvexLoggerTest::contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Returns the lines of the latest log file, without the separator line at its beginning.
QStringList KS7OrvexLoggerTest::lines(const QString &inFolder)
{
    const QByteArray bytes = contents(latestFile(inFolder));
    // Pass the size, because otherwise Qt 5 stops at the first zero byte.
    QStringList all = QString::fromUtf8(bytes.constData(), bytes.size()).split(QLatin1Char('\n'));
    if (all.size() < 2 || !matches(QStringLiteral("===== \\S.* ====="), all.takeFirst())
        || !all.takeLast().isEmpty())
        return {QStringLiteral("no separator, or a line without an end")};
    return all;
}

QDateTime KS7OrvexLoggerTest::timeOfLine(int line)
{
    return QDateTime::fromString(lines().value(line).left(23), QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz"));
}

void KS7OrvexLoggerTest::nextSecond()
{
    const std::time_t now = std::time(nullptr);
    QTRY_VERIFY_WITH_TIMEOUT(std::time(nullptr) != now, Timeout);
}

void KS7OrvexLoggerTest::everyFileNameSoonIs(const std::function<bool(const QString &)> &make)
{
    QVERIFY(QDir().mkpath(folder()));
    const std::time_t now = std::time(nullptr);
    for (int second = 0; second < ManySeconds; ++second)
        QVERIFY(make(folder() + QLatin1Char('/') + fileNameAt(now + second)));
}

void KS7OrvexLoggerTest::withoutADefaultLoggerNothingIsWritten()
{
    const auto log = [] {
        OrvexLog(u"one %d", 1);
        orvexlog("two %d", 2);
        flushOrvexLog();
    };
    QCOMPARE(written(stdout, [&] { QCOMPARE(written(stderr, log), QByteArray()); }), QByteArray());
    QVERIFY(systemLog.isEmpty());
    QVERIFY(QDir(mHome->path()).isEmpty());
}

void KS7OrvexLoggerTest::errorsReachTheSystemConsoleWithoutADefaultLogger()
{
    const QString camera = QStringLiteral("Desk %d");
    const QByteArray text = written(stderr, [&] { OrvexErrorLog(u"lost %@: %d", &camera, 5); });
    QCOMPARE(text, QByteArray("KS-7 System Preferences: lost Desk %d: 5\n"));
    QCOMPARE(systemLog.size(), 1);
    QCOMPARE(systemLog[0].first, LOG_ERR);
    QCOMPARE(systemLog[0].second, QByteArray("KS-7 System Preferences: lost Desk %d: 5"));
}

void KS7OrvexLoggerTest::errorsReachTheDefaultLoggerToo()
{
    loggerToFile();
    written(stderr, [] { OrvexErrorLog(u"lost %d", 5); });
    QCOMPARE(lines().size(), 1);
    QVERIFY(matches(stampPattern() + QStringLiteral("lost 5"), lines()[0]));
}

void KS7OrvexLoggerTest::theNameIsTheProgramsUntilOneIsSet()
{
    delete gAppName;
    gAppName = nullptr;
    QCOMPARE(KS7OrvexLogger::getAppName(), QStringLiteral("logging_KS7OrvexLogger_test"));
    KS7OrvexLogger::setAppName(QStringLiteral("one"));
    KS7OrvexLogger::setAppName(*gAppName + QStringLiteral(" two"));
    QCOMPARE(KS7OrvexLogger::getAppName(), QStringLiteral("one two"));
}

void KS7OrvexLoggerTest::aNewLoggerStartsAFileInItsFolder()
{
    const std::time_t before = std::time(nullptr);
    loggerToFile();
    const QStringList found = files(folder());
    QCOMPARE(found.size(), 1);
    QVERIFY(found[0] >= fileNameAt(before) && found[0] <= fileNameAt(std::time(nullptr)));
    QCOMPARE(lines(), QStringList());
}

void KS7OrvexLoggerTest::withoutFileLoggingThereIsNoFolder()
{
    KS7OrvexLogger::createDefaultLoggerToFile(false, false);
    OrvexLog(u"unseen");
    QVERIFY(QDir(mHome->path()).isEmpty());
}

void KS7OrvexLoggerTest::aLineHasATimeAndTheMessage()
{
    loggerToFile();
    OrvexLog(u"Camera list changed");
    gMainLogger->log(QString());
    QCOMPARE(lines().size(), 2);
    QVERIFY(matches(stampPattern() + QStringLiteral("Camera list changed"), lines()[0]));
    QVERIFY(matches(stampPattern(), lines()[1]));
}

void KS7OrvexLoggerTest::theTimeIsWallClockTime()
{
    loggerToFile();
    // Allow 2 ms on both sides, because the logger's clock and this test's clock may differ by a millisecond.
    const auto nowAnd = [](int ms) {
        const QDateTime time = QDateTime::currentDateTime().addMSecs(ms);
        return time.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz"));
    };
    for (int turn = 0; turn < 50; ++turn) {
        const QString before = nowAnd(-2);
        gMainLogger->log(QStringLiteral("x"));
        const QString after = nowAnd(2);
        const QString stamp = lines().last().left(23);
        const QString all = before + QStringLiteral(" | ") + stamp + QStringLiteral(" | ") + after;
        QVERIFY2(before <= stamp && stamp <= after, qPrintable(all));
    }
}

void KS7OrvexLoggerTest::aLaterLineHasALaterTime()
{
    loggerToFile();
    // nextSecond() waits for a new second of std::time(), which is a few milliseconds behind the logger's
    // clock. So the logger's clock then shows a new second, too.
    nextSecond();
    OrvexLog(u"x");
    nextSecond();
    OrvexLog(u"x");
    const auto second = [this](int line) { return timeOfLine(line).toSecsSinceEpoch(); };
    QVERIFY2(second(1) > second(0), qPrintable(lines().join(QLatin1Char('|'))));
}

void KS7OrvexLoggerTest::aNewTimeZoneIsNoticed()
{
    loggerToFile();
    qputenv("TZ", "AAA0");
    nextSecond();
    OrvexLog(u"x");
    qputenv("TZ", "BBB-5");
    nextSecond();
    OrvexLog(u"x");
    beInTheAfternoon();
    QVERIFY2(timeOfLine(0).secsTo(timeOfLine(1)) >= 5 * 3600, qPrintable(lines().join(QLatin1Char('|'))));
}

void KS7OrvexLoggerTest::aLineIsInTheFileAtOnce()
{
    loggerToFile();
    for (int line = 1; line <= 100; ++line) {
        OrvexLog(u"line %d", line);
        QCOMPARE(lines().size(), line);
    }
}

void KS7OrvexLoggerTest::aMessageWithANewlineGetsNoSecondOne()
{
    loggerToFile();
    OrvexLog(u"one\n");
    OrvexLog(u"two\n\n");
    OrvexLog(u"\n");
    QCOMPARE(lines().size(), 4);
    QVERIFY(lines()[0].endsWith(QStringLiteral(" one")));
    QVERIFY(lines()[2].isEmpty());
    QVERIFY(matches(stampPattern(), lines()[3]));
}

void KS7OrvexLoggerTest::malformedTextIsLogged()
{
    loggerToFile();
    QString text = QStringLiteral("a") + QChar(0xD800) + QStringLiteral("b") + QChar(0xDC00) + QChar(0xD83D);
    gMainLogger->log(text);
    text = QStringLiteral("a") + QChar(0) + QStringLiteral("b\u202e\u00fc");
    gMainLogger->log(text);
    QCOMPARE(lines().size(), 2);
    QVERIFY(lines()[0].contains(QLatin1Char('b')));
    QVERIFY(lines()[1].endsWith(text));
}

void KS7OrvexLoggerTest::longMessagesAreNotCut()
{
    loggerToFile();
    const QString text(1'000'000, QChar(0x00fc));
    gMainLogger->log(text);
    gMainLogger->log(QStringLiteral("short"));
    QVERIFY(lines()[0].endsWith(text));
    QVERIFY(matches(stampPattern() + QStringLiteral("short"), lines()[1]));
}

void KS7OrvexLoggerTest::standardOutputHasTheNameToo()
{
    KS7OrvexLogger::createDefaultLoggerToFile(false, true);
    const QByteArray text = written(stdout, [] {
        OrvexLog(u"Camera list changed");
        OrvexLog(u"ended\n");
        OrvexLog(u"");
    });
    const QString prefix = stampPattern() + AppName + QStringLiteral(": ");
    QVERIFY2(matches(prefix + QStringLiteral("Camera list changed\n") + prefix + QStringLiteral("ended\n")
                         + prefix + QStringLiteral("\n"),
                     QString::fromUtf8(text)),
             text.constData());
    QVERIFY(files(folder()).isEmpty());
}

void KS7OrvexLoggerTest::aLineIsOnStandardOutputAtOnce()
{
    KS7OrvexLogger::createDefaultLoggerToFile(false, true);
    QTemporaryFile output;
    QVERIFY(output.open());
    // Buffer stdout fully, as for a pipe. In a terminal each line would appear at once even if the logger did
    // not flush.
    QCOMPARE(std::setvbuf(stdout, nullptr, _IOFBF, BUFSIZ), 0);
    QList<int> linesThere;
    {
        const Redirection toTheFile(stdout, output.handle());
        for (int line = 0; line < 3; ++line) {
            OrvexLog(u"line %d", line);
            linesThere.append(static_cast<int>(contents(output.fileName()).count('\n')));
        }
    }
    QCOMPARE(linesThere, (QList<int>{1, 2, 3}));
}

void KS7OrvexLoggerTest::fileAndStandardOutputHaveTheSameTime()
{
    KS7OrvexLogger::createDefaultLoggerToFile(true, true);
    int readings = 0;
    const QString text = QString::fromUtf8(written(stdout, [&] {
        const int before = clockReadings;
        gMainLogger->log(QStringLiteral("x"));
        readings = clockReadings - before;
    }));
    QCOMPARE(readings, 1);
    constexpr int StampSize = 24;
    QVERIFY(matches(stampPattern(), text.left(StampSize)));
    QCOMPARE(text.left(StampSize), lines()[0].left(StampSize));
}

void KS7OrvexLoggerTest::theSystemLogHasOnlyTheMessage()
{
    KS7OrvexLogger::createDefaultLoggerToFile(false, false)->setLogToConsole(true);
    OrvexLog(u"K\u00fcche");
    OrvexLog(u"ended\n");
    gMainLogger->setLogToConsole(false);
    OrvexLog(u"unseen");
    QCOMPARE(systemLog,
             (QList<std::pair<int, QByteArray>>{{LOG_ERR,
                                                 "K\xc3\xbc"
                                                 "che"},
                                                {LOG_ERR, "ended\n"}}));
}

void KS7OrvexLoggerTest::twoSinksUseTheMessageAsAFormat()
{
    KS7OrvexLogger::createDefaultLoggerToFile(true, true)->setLogToConsole(true);
    const QByteArray text = written(stdout, [] {
        errno = ENOENT;
        gMainLogger->log(QStringLiteral("50%% %m"));
    });
    const QByteArray expected = QByteArray("50% ") + std::strerror(ENOENT);
    QCOMPARE(systemLog[0].second, expected);
    QVERIFY2(text.endsWith(QByteArray(": " + expected + '\n')), text.constData());
    QVERIFY(lines()[0].endsWith(QStringLiteral(" 50%% %m")));
}

void KS7OrvexLoggerTest::conversionsWithoutArgumentsAreUnchanged()
{
    KS7OrvexLogger::createDefaultLoggerToFile(true, true)->setLogToConsole(true);
    const QString message = QStringLiteral("%s%n%d %5.3f %@ %* %");
    const QByteArray text = written(stdout, [&] { OrvexLog(u"%@", &message); });
    QCOMPARE(systemLog[0].second, message.toUtf8());
    QVERIFY2(text.endsWith(QByteArray(": " + message.toUtf8() + '\n')), text.constData());
    QVERIFY(lines()[0].endsWith(message));
}

void KS7OrvexLoggerTest::withAllSinksOffTheClockIsNotRead()
{
    KS7OrvexLogger::createDefaultLoggerToFile(false, false);
    const int before = clockReadings;
    gMainLogger->log(QStringLiteral("unseen"));
    OrvexLog(u"unseen %d", 1);
    gMainLogger->setLogToConsole(true);
    gMainLogger->log(QStringLiteral("system log only"));
    QCOMPARE(clockReadings, before);
    gMainLogger->setLogToFile(true);
    gMainLogger->log(QStringLiteral("file"));
    QVERIFY(clockReadings > before);
}

void KS7OrvexLoggerTest::aPercentSignInTheNameIsPartOfTheFormat()
{
    KS7OrvexLogger::setAppName(QStringLiteral("50%% off"));
    KS7OrvexLogger::createDefaultLoggerToFile(false, true);
    const QByteArray text = written(stdout, [] { OrvexLog(u"on"); });
    QVERIFY2(matches(stampPattern() + QStringLiteral("50% off: on\n"), QString::fromUtf8(text)),
             text.constData());
}

void KS7OrvexLoggerTest::errnoIsPreserved()
{
    loggerToFile();
    errno = EDOM;
    OrvexLog(u"%d %f", 1, 2.0);
    QCOMPARE(errno, EDOM);
}

void KS7OrvexLoggerTest::functionsFormat()
{
    loggerToFile();
    const QString camera = QStringLiteral("Desk");
    OrvexLog(u"%@ %d %s", &camera, 7, "K\xc3\xbc");
    orvexlog("\xc3\xbc%@ %5.2f", &camera, 1.5);
    orvexlog(nullptr);
    QVERIFY(lines()[0].endsWith(QStringLiteral(" Desk 7 K\u00fc")));
    QVERIFY(lines()[1].endsWith(QStringLiteral(" \u00fcDesk  1.50")));
    QCOMPARE(lines().size(), 3);
}

void KS7OrvexLoggerTest::aSecondDefaultLoggerKeepsTheFirst()
{
    std::unique_ptr<KS7OrvexLogger> first(loggerToFile());
    QVERIFY(KS7OrvexLogger::createDefaultLoggerToFile(false, false) != first.get());
    OrvexLog(u"unseen");
    first->log(QStringLiteral("still here"));
    QCOMPARE(lines().size(), 1);
}

void KS7OrvexLoggerTest::everySwitchToOnStartsAFile()
{
    KS7OrvexLogger::createDefaultLoggerToFile(false, false);
    gMainLogger->setLogToFile(true);
    OrvexLog(u"first");
    gMainLogger->setLogToFile(false);
    OrvexLog(u"neither");
    nextSecond();
    gMainLogger->setLogToFile(true);
    OrvexLog(u"second");
    const QStringList found = files(folder());
    QCOMPARE(found.size(), 2);
    const QString pattern = QStringLiteral("===== .* =====\n") + stampPattern();
    QVERIFY(matches(pattern + QStringLiteral("first\n"),
                    QString::fromUtf8(contents(folder() + QLatin1Char('/') + found[0]))));
    QVERIFY(matches(pattern + QStringLiteral("second\n"),
                    QString::fromUtf8(contents(folder() + QLatin1Char('/') + found[1]))));
}

void KS7OrvexLoggerTest::switchingOnTwiceKeepsTheFile()
{
    loggerToFile();
    OrvexLog(u"one");
    nextSecond();
    gMainLogger->setLogToFile(true);
    OrvexLog(u"two");
    QCOMPARE(files(folder()).size(), 1);
    QCOMPARE(lines().size(), 2);
}

void KS7OrvexLoggerTest::linesWhileOffAreNotWritten()
{
    loggerToFile();
    const int open = openDescriptors();
    gMainLogger->setLogToFile(false);
    OrvexLog(u"unseen");
    gMainLogger->markLog();
    QCOMPARE(lines(), QStringList());
    QCOMPARE(openDescriptors(), open);
}

void KS7OrvexLoggerTest::anEmptiedFileContinuesAtItsBeginning()
{
    loggerToFile();
    OrvexLog(u"gone");
    const QString file = latestFile(folder());
    QVERIFY(QFile::resize(file, 0));
    OrvexLog(u"first");
    QVERIFY(matches(stampPattern() + QStringLiteral("first\n"), QString::fromUtf8(contents(file))));
}

void KS7OrvexLoggerTest::twoFilesOfOneSecondAreOne()
{
    loggerToFile();
    const auto startsTwoAtOnce = [&] {
        for (const QString &name : files(folder()))
            QFile::remove(folder() + QLatin1Char('/') + name);
        const std::time_t before = std::time(nullptr);
        gMainLogger->createLogFile();
        OrvexLog(u"gone");
        gMainLogger->createLogFile();
        return std::time(nullptr) == before;
    };
    QTRY_VERIFY_WITH_TIMEOUT(startsTwoAtOnce(), Timeout);
    QCOMPARE(files(folder()).size(), 1);
    QCOMPARE(lines(), QStringList());
}

void KS7OrvexLoggerTest::anotherFolderStartsAFile()
{
    loggerToFile();
    OrvexLog(u"kept");
    const QString same = folder();
    gMainLogger->setLogFileLocation(same);
    QCOMPARE(lines().size(), 1);
    gMainLogger->setLogToFile(false);
    const QString other = mHome->filePath(QStringLiteral("a/b"));
    gMainLogger->setLogFileLocation(other);
    QCOMPARE(files(other).size(), 1);
    QCOMPARE(contents(other + QLatin1Char('/') + files(other)[0]), QByteArray());
}

void KS7OrvexLoggerTest::anotherFolderHasTheLinesThatFollow()
{
    loggerToFile();
    OrvexLog(u"here");
    const QString other = mHome->filePath(QStringLiteral("a/b"));
    gMainLogger->setLogFileLocation(other);
    QCOMPARE(lines(other), QStringList());
    OrvexLog(u"there");
    QCOMPARE(lines(other).size(), 1);
    QVERIFY(matches(stampPattern() + QStringLiteral("there"), lines(other)[0]));
    QCOMPARE(lines().size(), 1);
    QVERIFY(lines()[0].endsWith(QStringLiteral(" here")));
}

void KS7OrvexLoggerTest::theHomeFolderIsShownAsATilde()
{
    loggerToFile();
    gMainLogger->setLogFileLocation(QStringLiteral("~/logs"));
    const QString other = mHome->filePath(QStringLiteral("logs"));
    QCOMPARE(files(other).size(), 1);
    OrvexLog(u"there");
    // setLogFileLocation() compares its argument, with the "~", to the present path, where "~" is expanded.
    // So the same argument counts as a new location, and a second file starts in the same folder.
    nextSecond();
    gMainLogger->setLogFileLocation(QStringLiteral("~/logs"));
    QCOMPARE(files(other).size(), 2);
}

void KS7OrvexLoggerTest::theSeparatorIsWrittenOnDemand()
{
    loggerToFile();
    OrvexLog(u"one");
    gMainLogger->markLog();
    OrvexLog(u"two");
    QCOMPARE(lines().size(), 3);
    QVERIFY(matches(QStringLiteral("===== \\S+ \\S+.* ====="), lines()[1]));
}

void KS7OrvexLoggerTest::theFileIsSyncedOnRequest()
{
    loggerToFile();
    const auto waits = [](const std::function<void()> &work) {
        diskWaits = 0;
        work();
        return diskWaits;
    };
    QCOMPARE(waits([] { OrvexLog(u"a line alone"); }), 0);
    QCOMPARE(waits([] { gMainLogger->flush(); }), 1);
    QCOMPARE(waits([] { flushOrvexLog(); }), 1);
    QCOMPARE(waits([] { gMainLogger->markLog(); }), 1);
    QCOMPARE(waits([] { gMainLogger->createLogFile(); }), 1);
    QCOMPARE(waits([] { gMainLogger->setLogToFile(true); }), 1);
    QCOMPARE(waits([] { gMainLogger->setLogToFile(false); }), 1);
    QCOMPARE(waits([] { gMainLogger->setLogToFile(false); }), 1);
    QCOMPARE(waits([] { gMainLogger->markLog(); }), 0);
}

void KS7OrvexLoggerTest::withoutAFileNothingWaitsForTheDisk()
{
    const int before = diskWaits;
    KS7OrvexLogger::createDefaultLoggerToFile(false, false);
    gMainLogger->flush();
    gMainLogger->setLogToFile(false);
    gMainLogger->markLog();
    QCOMPARE(diskWaits, before);
}

void KS7OrvexLoggerTest::openingAndRevealing()
{
    const auto workspace = std::make_shared<RecordingWorkspace>();
    loggerToFile()->setWorkspace(workspace, mRunLoop);
    gMainLogger->openLogFile();
    gMainLogger->revealLogFile();
    settle();
    QCOMPARE(workspace->opened, QStringList(latestFile()));
    QCOMPARE(workspace->selected, QStringList(latestFile()));
    QCOMPARE(lines().size(), 2);
}

void KS7OrvexLoggerTest::openingAndRevealingFromAnotherThread()
{
    const auto workspace = std::make_shared<RecordingWorkspace>();
    loggerToFile()->setWorkspace(workspace, mRunLoop);
    std::thread([] {
        gMainLogger->openLogFile();
        gMainLogger->revealLogFile();
    }).join();
    settle();
    QCOMPARE(workspace->opened, QStringList(latestFile()));
    QCOMPARE(workspace->selected, QStringList(latestFile()));
    QVERIFY(workspace->isInMainThread);
}

void KS7OrvexLoggerTest::nothingToOpenOrReveal()
{
    const auto workspace = std::make_shared<RecordingWorkspace>();
    loggerToFile()->openLogFile();
    gMainLogger->setWorkspace(workspace, mRunLoop);
    QVERIFY(QFile::remove(latestFile()));
    gMainLogger->openLogFile();
    gMainLogger->revealLogFile();
    KS7OrvexLogger withoutFile;
    withoutFile.initLoggingToFile(false, false);
    withoutFile.setWorkspace(workspace, mRunLoop);
    withoutFile.openLogFile();
    withoutFile.revealLogFile();
    settle();
    QVERIFY(workspace->opened.isEmpty() && workspace->selected.isEmpty());
}

void KS7OrvexLoggerTest::aFileInTheFoldersPlace()
{
    QVERIFY(QDir().mkpath(QFileInfo(folder()).path()));
    QFile file(folder());
    QVERIFY(file.open(QIODevice::WriteOnly));
    KS7OrvexLogger::createDefaultLoggerToFile(false, true);
    const QByteArray text = written(stdout, [] {
        gMainLogger->setLogToFile(true);
        OrvexLog(u"and on");
    });
    const QByteArray report = "Preferences: KS-7 System Preferences: Couldn't create log file folder at "
        + folder().toUtf8() + '\n';
    QVERIFY2(text.contains(report), text.constData());
    QCOMPARE(text.count('\n'), 2);
}

void KS7OrvexLoggerTest::aFolderThatFailsEndsTheFile()
{
    const auto workspace = std::make_shared<RecordingWorkspace>();
    loggerToFile()->setWorkspace(workspace, mRunLoop);
    const int descriptors = openDescriptors();
    const QString blocked = mHome->filePath(QStringLiteral("blocked"));
    QVERIFY(QFile(blocked).open(QIODevice::WriteOnly));
    gMainLogger->setLogFileLocation(blocked + QStringLiteral("/logs"));
    const QStringList before = lines();
    OrvexLog(u"nowhere to go");
    gMainLogger->revealLogFile();
    settle();
    QCOMPARE(lines(), before);
    QCOMPARE(openDescriptors(), descriptors - 1);
    QVERIFY(workspace->selected.isEmpty());
}

void KS7OrvexLoggerTest::aFolderThatCannotBeWritten()
{
    QVERIFY(QDir().mkpath(folder()));
    const bool superuser = ::geteuid() == 0;
    const QByteArray path = QFile::encodeName(folder());
    QCOMPARE(::chmod(path.constData(), 0555), 0);
    QCOMPARE(::chmod(QFile::encodeName(mHome->path()).constData(), 0755), 0);
    KS7OrvexLogger::createDefaultLoggerToFile(false, true);
    QVERIFY(!superuser || ::seteuid(Nobody) == 0);
    const QByteArray text = written(stdout, [] { gMainLogger->setLogToFile(true); });
    QVERIFY(!superuser || ::seteuid(0) == 0);
    const QString expected =
        AppName + QStringLiteral(": Couldn't create log file at ") + folder() + QLatin1Char('/');
    QVERIFY2(text.contains(expected.toUtf8()), text.constData());
    ::chmod(path.constData(), 0755);
}

void KS7OrvexLoggerTest::aFolderInTheFilesPlace()
{
    everyFileNameSoonIs([](const QString &path) { return QDir().mkpath(path); });
    KS7OrvexLogger::createDefaultLoggerToFile(false, true);
    const QByteArray text = written(stdout, [] { gMainLogger->setLogToFile(true); });
    const QString expected =
        AppName + QStringLiteral(": Couldn't open log file for writing at ") + folder() + QLatin1Char('/');
    QVERIFY2(text.contains(expected.toUtf8()), text.constData());
    // The logger could not open the file, but revealLogFile() still shows its path.
    const auto workspace = std::make_shared<RecordingWorkspace>();
    gMainLogger->setWorkspace(workspace, mRunLoop);
    gMainLogger->revealLogFile();
    settle();
    QCOMPARE(workspace->selected.size(), 1);
    QVERIFY(workspace->selected[0].startsWith(folder() + QLatin1Char('/') + AppName));
}

void KS7OrvexLoggerTest::theNextFileRecoversFromAFailure()
{
    everyFileNameSoonIs([](const QString &path) { return QDir().mkpath(path); });
    const auto workspace = std::make_shared<RecordingWorkspace>();
    loggerToFile()->setWorkspace(workspace, mRunLoop);
    // The logger knows the file's path, although it could not open the file.
    gMainLogger->revealLogFile();
    settle();
    QCOMPARE(workspace->selected.size(), 1);
    OrvexLog(u"nowhere to go");
    QVERIFY(QDir(folder()).removeRecursively());
    gMainLogger->createLogFile();
    OrvexLog(u"there again");
    QCOMPARE(files(folder()).size(), 1);
    QCOMPARE(lines().size(), 1);
    QVERIFY(matches(stampPattern() + QStringLiteral("there again"), lines()[0]));
}

void KS7OrvexLoggerTest::failuresOfTheFirstLoggerAreNotPrinted()
{
    QVERIFY(QDir().mkpath(QFileInfo(folder()).path()));
    QFile file(folder());
    QVERIFY(file.open(QIODevice::WriteOnly));
    const auto start = [] { KS7OrvexLogger::createDefaultLoggerToFile(true, true); };
    QCOMPARE(written(stdout, start), QByteArray());
    const std::unique_ptr<KS7OrvexLogger> first(gMainLogger);
    QCOMPARE(written(stdout, start).count("Couldn't create log file folder"), 1);
}

void KS7OrvexLoggerTest::aFolderThatGoesAwayWhileLogging()
{
    loggerToFile();
    QVERIFY(QDir(mHome->filePath(QStringLiteral("Library"))).removeRecursively());
    OrvexLog(u"into the void");
    gMainLogger->markLog();
    flushOrvexLog();
    gMainLogger->createLogFile();
    OrvexLog(u"there again");
    QCOMPARE(lines().size(), 1);
}

void KS7OrvexLoggerTest::aDeviceThatIsFull()
{
    everyFileNameSoonIs([](const QString &path) { return QFile::link(QStringLiteral("/dev/full"), path); });
    KS7OrvexLogger::createDefaultLoggerToFile(true, true);
    int error = 0;
    const QByteArray text = written(stdout, [&error] {
        OrvexLog(u"one");
        gMainLogger->markLog();
        errno = EDOM;
        OrvexLog(u"two");
        error = errno;
    });
    QCOMPARE(text.count('\n'), 2);
    QCOMPARE(error, EDOM);
}

void KS7OrvexLoggerTest::aDiskThatFillsUpTearsNoLine()
{
    loggerToFile();
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit before = {};
    QCOMPARE(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const rlimit full = {777, before.rlim_max};
    QCOMPARE(::setrlimit(RLIMIT_FSIZE, &full), 0);
    for (int line = 0; line < 100; ++line)
        OrvexLog(u"line %d of a disk that is filling up", line);
    QCOMPARE(::setrlimit(RLIMIT_FSIZE, &before), 0);
    std::signal(SIGXFSZ, SIG_DFL);
    OrvexLog(u"room again");
    const QStringList all = lines();
    QVERIFY(all.size() > 5 && all.size() < 20);
    for (const QString &line : all)
        QVERIFY2(
            matches(stampPattern() + QStringLiteral("(line \\d+ of a disk that is filling up|room again)"),
                    line),
            qPrintable(line));
    QVERIFY(all.last().endsWith(QStringLiteral("room again")));
}

void KS7OrvexLoggerTest::aDestroyedLoggerClosesItsFile()
{
    const int before = openDescriptors();
    {
        KS7OrvexLogger logger;
        logger.initLoggingToFile(true, false);
        QCOMPARE(openDescriptors(), before + 1);
        for (int turn = 0; turn < 20; ++turn)
            logger.createLogFile();
        QCOMPARE(openDescriptors(), before + 1);
    }
    QCOMPARE(openDescriptors(), before);
}

namespace {

constexpr int Threads = 64;
constexpr int LinesOfAThread = 200;

void logFromManyThreads()
{
    std::vector<std::thread> threads;
    threads.reserve(Threads);
    for (int thread = 0; thread < Threads; ++thread)
        threads.emplace_back([thread] {
            for (int line = 0; line < LinesOfAThread; ++line)
                OrvexLog(u"thread %d line %d %s", thread, line, "to and fro, to and fro, to and fro");
        });
    for (std::thread &thread : threads)
        thread.join();
}

/// Returns the number of lines. Returns -1 if a line is incomplete or mixed with another one, or if a
/// thread's lines are out of order.
int wholeLines(const QStringList &lines, const QString &prefix)
{
    static const QRegularExpression pattern(
        QStringLiteral("^%1%2thread (\\d+) line (\\d+) to and fro, to and fro, to and fro$")
            .arg(stampPattern(), prefix));
    std::vector<int> last(Threads, -1);
    for (const QString &line : lines) {
        const auto match = pattern.match(line);
        const int thread = match.captured(1).toInt();
        const int number = match.captured(2).toInt();
        if (!match.hasMatch() || number <= last[static_cast<std::size_t>(thread)])
            return -1;
        last[static_cast<std::size_t>(thread)] = number;
    }
    return static_cast<int>(lines.size());
}

} // namespace

void KS7OrvexLoggerTest::manyThreadsTearNoLine()
{
    KS7OrvexLogger::createDefaultLoggerToFile(true, false)->setLogToConsole(true);
    logFromManyThreads();
    QCOMPARE(wholeLines(lines(), QString()), Threads * LinesOfAThread);
    QCOMPARE(systemLog.size(), Threads * LinesOfAThread);
}

void KS7OrvexLoggerTest::manyThreadsWhileTheFileIsSwitched()
{
    KS7OrvexLogger *logger = loggerToFile();
    logger->setWorkspace(std::make_shared<RecordingWorkspace>(), mRunLoop);
    std::atomic<bool> done = false;
    std::thread switching([&] {
        for (bool on = false; !done; on = !on)
            logger->setLogToFile(on);
    });
    std::thread others([&] {
        while (!done) {
            logger->markLog();
            logger->flush();
            logger->revealLogFile();
            logger->setLogToConsole(false);
            logger->setLogToStdOut(false);
        }
    });
    logFromManyThreads();
    done = true;
    switching.join();
    others.join();
    for (const QString &name : files(folder())) {
        const QString text = QString::fromUtf8(contents(folder() + QLatin1Char('/') + name));
        QVERIFY(text.isEmpty() || text.endsWith(QLatin1Char('\n')));
        QStringList all = text.split(QLatin1Char('\n'));
        all.takeLast();
        const QStringList threads = all.filter(QStringLiteral("thread"));
        const int separators =
            static_cast<int>(all.filter(QRegularExpression(QStringLiteral("^===== .* =====$"))).size());
        const int revealed = static_cast<int>(
            all.filter(QRegularExpression(QStringLiteral("^%1selected$").arg(stampPattern()))).size());
        QCOMPARE(wholeLines(threads, QString()), int(threads.size()));
        QCOMPARE(int(threads.size()) + separators + revealed, int(all.size()));
    }
}

QTEST_GUILESS_MAIN(KS7OrvexLoggerTest)
#include "KS7OrvexLogger_test.moc"
