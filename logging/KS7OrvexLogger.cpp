#include "logging/KS7OrvexLogger.h"

#include "logging/LogFile.h"
#include "logging/LogFormat.h"
#include "platform/base/RunLoop.h"
#include "platform/desktop/Workspace.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <syslog.h>

KS7OrvexLogger *gMainLogger = nullptr;
QString *gAppName = nullptr;

namespace {

// The line buffer reserves UsualLine bytes and is reused. It is freed if it exceeds LongestKept.
constexpr int UsualLine = 1024;
constexpr int LongestKept = 64 * 1024;

const QString LogFolder = QStringLiteral("~/Library/Logs/KS7_Logs");

QString withTildeExpanded(const QString &path)
{
    const bool isHome = path == QLatin1String("~") || path.startsWith(QLatin1String("~/"));
    return isHome ? QDir::homePath() + path.mid(1) : path;
}

QString nameOfExecutable()
{
    return QFileInfo(QFile::symLinkTarget(QStringLiteral("/proc/self/exe"))).fileName();
}

/// Copies the low byte of each character to `out` and returns the OR of all characters. If the result is
/// below 0x80, the text is ASCII. Blocks of a fixed size let the compiler vectorise the inner loops.
unsigned copyNarrow(const char16_t *text, int size, char *out)
{
    constexpr int Block = 16;
    unsigned seen = 0;
    int at = 0;
    for (; at + Block <= size; at += Block) {
        char16_t bits = 0;
        for (int offset = 0; offset < Block; ++offset)
            bits |= text[at + offset];
        for (int offset = 0; offset < Block; ++offset)
            out[at + offset] = static_cast<char>(text[at + offset]);
        seen |= bits;
    }
    for (; at < size; ++at) {
        seen |= text[at];
        out[at] = static_cast<char>(text[at]);
    }
    return seen;
}

/// Appends `text` as UTF-8. Most messages are ASCII and need no temporary array of toUtf8().
void appendUtf8(QByteArray *line, QStringView text)
{
    const auto before = line->size();
    line->resize(before + text.size());
    if (copyNarrow(text.utf16(), static_cast<int>(text.size()), line->data() + before) < 0x80)
        return;
    line->truncate(before);
    line->append(text.toUtf8());
}

} // namespace

QString KS7OrvexLogger::logFolder()
{
    return withTildeExpanded(LogFolder);
}

QString KS7OrvexLogger::getAppName()
{
    return gAppName ? *gAppName : nameOfExecutable();
}

void KS7OrvexLogger::setAppName(const QString &name)
{
    auto *kept = new QString(name);
    delete gAppName;
    gAppName = kept;
}

KS7OrvexLogger *KS7OrvexLogger::createDefaultLoggerToFile(bool toFile, bool toStdOut)
{
    // The logger is never deleted, so that threads can still log while the process exits.
    gMainLogger = (new KS7OrvexLogger)->initLoggingToFile(toFile, toStdOut);
    return gMainLogger;
}

KS7OrvexLogger::KS7OrvexLogger() = default;

KS7OrvexLogger::~KS7OrvexLogger()
{
    const std::lock_guard lock(mLogLock);
    forgetFile();
}

KS7OrvexLogger *KS7OrvexLogger::initLoggingToFile(bool toFile, bool toStdOut)
{
    mLogToFile = toFile;
    mLogToConsole = false;
    mLogToStdOut = toStdOut;
    mAppName = getAppName();
    mLogFileLocation = logFolder() + QLatin1Char('/') + mAppName;
    forgetFile();
    if (mLogToFile)
        createLogFile();
    return this;
}

bool KS7OrvexLogger::isLogging() const
{
    return mLogToConsole || mLogToFile || mLogToStdOut;
}

void KS7OrvexLogger::log(QStringView message)
{
    // A `%m` in the message stands for the caller's errno, so read it before any other call.
    const int error = errno;
    const std::lock_guard lock(mLogLock);
    if (mLogToConsole)
        ::syslog(LOG_ERR, "%s", LogFormat::withoutArguments(message.toUtf8(), error).constData());
    const bool toFile = mLogToFile;
    const bool toStdOut = mLogToStdOut;
    if (!toFile && !toStdOut)
        return;
    mLine.reserve(UsualLine);
    mLine.truncate(0);
    mStamper.appendNow(&mLine);
    const int stampSize = mLine.size();
    appendUtf8(&mLine, message);
    if (!message.endsWith(QLatin1Char('\n')))
        mLine.append('\n');
    if (toFile && mFileHandle)
        mFileHandle->writeLine(mLine);
    if (toStdOut) {
        mLine.insert(stampSize, (mAppName + QStringLiteral(": ")).toUtf8());
        logToStdOut(mLine, error);
    }
    if (mLine.capacity() > LongestKept)
        mLine = QByteArray();
}

void KS7OrvexLogger::logToStdOut(const QByteArray &line, int error)
{
    const QByteArray text = LogFormat::withoutArguments(line, error);
    std::fwrite(text.constData(), 1, static_cast<std::size_t>(text.size()), stdout);
    std::fflush(stdout);
}

void KS7OrvexLogger::markLog()
{
    const auto file = fileHandle();
    if (!mLogToFile || !file)
        return;
    file->writeLine(QStringLiteral("===== %1 =====\n").arg(LogTime::forSeparator()).toUtf8());
    flush();
}

void KS7OrvexLogger::createLogFile()
{
    QString report;
    {
        const std::lock_guard lock(mLogLock);
        report = startFile();
    }
    // Report only after mLogLock is released. OrvexLog() logs through the default logger. If that is this
    // logger, it locks mLogLock too, which would be a deadlock.
    if (!report.isNull())
        OrvexLog(u"%@", &report);
}

/// Closes the current file and starts a new one. Returns a report if that fails, else a null string.
QString KS7OrvexLogger::startFile()
{
    forgetFile();
    if (!QFileInfo::exists(mLogFileLocation))
        QDir().mkpath(mLogFileLocation);
    if (!QFileInfo(mLogFileLocation).isDir())
        return mAppName + QStringLiteral(": Couldn't create log file folder at ") + mLogFileLocation;
    const QString name = mAppName + QLatin1Char(' ') + LogTime::forFileName() + QStringLiteral(".log");
    const QString path = mLogFileLocation + QLatin1Char('/') + name;
    LogFile::create(path);
    const auto file = LogFile::open(path);
    {
        const std::lock_guard state(mFileLock);
        mLogFilePath = path;
        mFileHandle = file;
    }
    if (!QFileInfo::exists(path))
        return mAppName + QStringLiteral(": Couldn't create log file at ") + path;
    if (!file)
        return mAppName + QStringLiteral(": Couldn't open log file for writing at ") + path;
    markLog();
    return {};
}

void KS7OrvexLogger::forgetFile()
{
    // The old file. This pointer is declared before the lock and so destroyed after the unlock, because
    // closing the file may block.
    std::shared_ptr<LogFile> closed;
    const std::lock_guard state(mFileLock);
    closed.swap(mFileHandle);
    mLogFilePath.clear();
}

void KS7OrvexLogger::flush()
{
    if (const auto file = fileHandle())
        file->synchronize();
}

std::shared_ptr<LogFile> KS7OrvexLogger::fileHandle() const
{
    const std::lock_guard state(mFileLock);
    return mFileHandle;
}

void KS7OrvexLogger::setLogToFile(bool logToFile)
{
    if (logToFile && !mLogToFile.exchange(true)) {
        createLogFile();
        return;
    }
    flush();
    mLogToFile = logToFile;
}

void KS7OrvexLogger::setLogFileLocation(const QString &path)
{
    {
        const std::lock_guard lock(mLogLock);
        if (mLogFileLocation == path)
            return;
        mLogFileLocation = withTildeExpanded(path);
    }
    createLogFile();
}

QString KS7OrvexLogger::pathOfPresentFile() const
{
    const std::lock_guard state(mFileLock);
    return !mLogFilePath.isEmpty() && QFileInfo::exists(mLogFilePath) ? mLogFilePath : QString();
}

void KS7OrvexLogger::performOnMainThread(std::function<void(platform::Workspace &)> work) const
{
    if (mWorkspace && mRunLoop)
        mRunLoop->performOnMainThread([workspace = mWorkspace, work = std::move(work)] { work(*workspace); });
}

void KS7OrvexLogger::openLogFile()
{
    QString path;
    {
        const std::lock_guard lock(mLogLock);
        path = pathOfPresentFile();
    }
    if (!path.isNull())
        performOnMainThread([path](platform::Workspace &workspace) { workspace.openFile(path); });
}

void KS7OrvexLogger::revealLogFile()
{
    const QString path = pathOfPresentFile();
    if (!path.isNull())
        performOnMainThread([path](platform::Workspace &workspace) { workspace.selectFile(path); });
}

void KS7OrvexLogger::setWorkspace(std::shared_ptr<platform::Workspace> workspace,
                                  std::shared_ptr<platform::RunLoop> runLoop)
{
    mWorkspace = std::move(workspace);
    mRunLoop = std::move(runLoop);
}

namespace {

/// Saves errno, and restores it in the destructor, so that logging does not change it for the caller.
class KeptErrno {
public:
    KeptErrno() = default;
    ~KeptErrno() { errno = mError; }
    KeptErrno(const KeptErrno &) = delete;
    KeptErrno &operator=(const KeptErrno &) = delete;
    void restore() const { errno = mError; }

private:
    const int mError = errno;
};

void logFormatted(const char16_t *format, va_list arguments)
{
    const KeptErrno kept;
    if (const QStringView text(format); !text.contains(QLatin1Char('%'))) {
        gMainLogger->log(text);
        return;
    }
    const QString message = LogFormat::format(format, arguments);
    kept.restore();
    gMainLogger->log(message);
}

void writeToSystemConsole(const QString &message)
{
    const QByteArray text = (KS7OrvexLogger::getAppName() + QStringLiteral(": ") + message).toUtf8();
    const QByteArray line = text + '\n';
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stderr);
    ::syslog(LOG_ERR, "%s", text.constData());
}

} // namespace

extern "C" void OrvexLog(const char16_t *format, ...)
{
    // Formatting costs time, so skip it while every sink is off.
    if (!gMainLogger || !gMainLogger->isLogging())
        return;
    va_list arguments;
    va_start(arguments, format);
    logFormatted(format, arguments);
    va_end(arguments);
}

extern "C" void orvexlog(const char *format, ...)
{
    if (!gMainLogger || !gMainLogger->isLogging())
        return;
    const QString text = QString::fromUtf8(format);
    va_list arguments;
    va_start(arguments, format);
    logFormatted(reinterpret_cast<const char16_t *>(text.utf16()), arguments);
    va_end(arguments);
}

extern "C" void OrvexErrorLog(const char16_t *format, ...)
{
    const KeptErrno kept;
    va_list arguments;
    va_start(arguments, format);
    const QString message = LogFormat::format(format, arguments);
    va_end(arguments);
    writeToSystemConsole(message);
    kept.restore();
    if (gMainLogger)
        gMainLogger->log(message);
}

extern "C" void flushOrvexLog()
{
    if (gMainLogger)
        gMainLogger->flush();
}
