#pragma once

#include "logging/LogTime.h"

#include <QByteArray>
#include <QString>
#include <QStringView>

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>

namespace platform {
class RunLoop;
class Workspace;
}

class LogFile;
class KS7OrvexLogger;

/// The process's default logger; null until createDefaultLoggerToFile().
extern KS7OrvexLogger *gMainLogger;
/// The application's name in file names and prefixes; null until setAppName().
extern QString *gAppName;

/// Writes each message to the system log, to standard output and to a timestamped file: three sinks, each
/// with a flag. Any thread may log; lines never interleave.
class KS7OrvexLogger {
public:
    /// The name given to setAppName(), else the name of the running program.
    static QString getAppName();
    static void setAppName(const QString &name);
    /// The folder that contains one log folder for each application. It may not exist.
    static QString logFolder();
    /// Makes a logger and sets it as the default one. The previous default logger stays alive.
    static KS7OrvexLogger *createDefaultLoggerToFile(bool toFile, bool toStdOut);

    KS7OrvexLogger();
    ~KS7OrvexLogger();
    KS7OrvexLogger(const KS7OrvexLogger &) = delete;
    KS7OrvexLogger &operator=(const KS7OrvexLogger &) = delete;
    KS7OrvexLogger *initLoggingToFile(bool toFile, bool toStdOut);

    /// Writes one line to every sink that is on. Thread-safe, as are the operations below.
    void log(const QString &message) { log(QStringView(message)); }
    void log(QStringView message);
    /// Writes a separator with the date and time to the file, then flushes.
    void markLog();
    /// Closes the current file and starts a new one. Failures are logged through the default logger.
    void createLogFile();
    /// Forces the file's contents to the disk.
    void flush();
    /// Every switch from off to on starts a new file; switching off leaves the file open.
    void setLogToFile(bool logToFile);
    void setLogToStdOut(bool logToStdOut) { mLogToStdOut = logToStdOut; }
    void setLogToConsole(bool logToConsole) { mLogToConsole = logToConsole; }
    /// Selects the folder of the log files. A different folder starts a new file at once, even while file
    /// logging is off.
    void setLogFileLocation(const QString &path);
    /// Opens the current file, if it still exists, in the user's default program.
    void openLogFile();
    /// Shows the current file, if it still exists, selected in the file manager.
    void revealLogFile();
    /// Required by openLogFile() and revealLogFile(); set before other threads log. Workspace and desktop
    /// services belong to the main thread, so the run loop carries the calls there.
    void setWorkspace(std::shared_ptr<platform::Workspace> workspace,
                      std::shared_ptr<platform::RunLoop> runLoop);

    /// Whether any sink is on.
    [[nodiscard]] bool isLogging() const;

private:
    static void logToStdOut(const QByteArray &line, int error);
    std::shared_ptr<LogFile> fileHandle() const;
    QString startFile();
    void forgetFile();
    QString pathOfPresentFile() const;
    void performOnMainThread(std::function<void(platform::Workspace &)> work) const;

    std::atomic<bool> mLogToConsole = false;
    std::atomic<bool> mLogToFile = false;
    std::atomic<bool> mLogToStdOut = false;
    QString mAppName;
    QString mLogFileLocation;
    QString mLogFilePath;
    std::shared_ptr<LogFile> mFileHandle;
    std::mutex mLogLock;

    /// Guards mLogFilePath and mFileHandle while they are copied or replaced. markLog(), flush() and
    /// revealLogFile() do not take mLogLock, yet another thread may be replacing the file.
    mutable std::mutex mFileLock;
    std::shared_ptr<platform::Workspace> mWorkspace;
    std::shared_ptr<platform::RunLoop> mRunLoop;
    LogTime::Stamper mStamper;
    /// Buffer of the line being written, reused for the next one.
    QByteArray mLine;
};

extern "C" {
/// Formats and logs through the default logger; does nothing without one. `%@` takes a `const QString *`.
void OrvexLog(const char16_t *format, ...);
/// Like OrvexLog(), with a UTF-8 format.
void orvexlog(const char *format, ...);
/// Writes to the system console, and to the default logger if there is one.
void OrvexErrorLog(const char16_t *format, ...);
void flushOrvexLog();
}
