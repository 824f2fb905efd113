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
/// The application's name for the log files and for lines on standard output; null until setAppName().
extern QString *gAppName;

/// Writes each message to three sinks: the system log, standard output and a timestamped file. Each sink has
/// a flag. Any thread may log; lines never interleave.
class KS7OrvexLogger {
public:
    /// The name given to setAppName(), else the name of the running program.
    static QString getAppName();
    static void setAppName(const QString &name);
    /// The folder that contains one log folder for each application. The folder may be missing.
    static QString logFolder();
    /// Makes a logger and sets it as the default one. The previous default logger stays alive.
    static KS7OrvexLogger *createDefaultLoggerToFile(bool toFile, bool toStdOut);

    KS7OrvexLogger();
    ~KS7OrvexLogger();
    KS7OrvexLogger(const KS7OrvexLogger &) = delete;
    KS7OrvexLogger &operator=(const KS7OrvexLogger &) = delete;
    KS7OrvexLogger *initLoggingToFile(bool toFile, bool toStdOut);

    /// Writes one line to every sink that is on. Any thread may call this function.
    void log(const QString &message) { log(QStringView(message)); }
    void log(QStringView message);
    /// Writes a separator line with the date and time to the log file, then calls flush().
    void markLog();
    /// Closes the current log file and starts a new one. Failures are logged through the default logger.
    void createLogFile();
    /// Writes the log file's contents to the disk with fsync().
    void flush();
    /// Turns file logging on or off. Turning it on, when it was off, starts a new file. Turning it off keeps
    /// the file open.
    void setLogToFile(bool logToFile);
    void setLogToStdOut(bool logToStdOut) { mLogToStdOut = logToStdOut; }
    void setLogToConsole(bool logToConsole) { mLogToConsole = logToConsole; }
    /// Selects the folder of the log files. A different folder starts a new file at once, even while file
    /// logging is off.
    void setLogFileLocation(const QString &path);
    /// Opens the current log file, if it still exists, in the user's default program.
    void openLogFile();
    /// Shows the file manager with the current log file selected, if the file still exists.
    void revealLogFile();
    /// Sets the services that openLogFile() and revealLogFile() need. Call it before other threads log. The
    /// run loop carries the requests to the main thread, the only one that may use the workspace.
    void setWorkspace(std::shared_ptr<platform::Workspace> workspace,
                      std::shared_ptr<platform::RunLoop> runLoop);

    /// Whether at least one sink is on.
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

    /// Guards mLogFilePath and mFileHandle while they are copied or replaced. A second mutex is necessary,
    /// because createLogFile() calls markLog() and flush() while it holds mLogLock.
    mutable std::mutex mFileLock;
    std::shared_ptr<platform::Workspace> mWorkspace;
    std::shared_ptr<platform::RunLoop> mRunLoop;
    LogTime::Stamper mStamper;
    /// The line that log() is writing. It is a member, so that the next line reuses its memory.
    QByteArray mLine;
};

extern "C" {
/// Formats like printf() and logs through the default logger; does nothing without a default logger. `%@`
/// takes a `const QString *`.
void OrvexLog(const char16_t *format, ...);
/// Does the same as OrvexLog(), with a format in UTF-8.
void orvexlog(const char *format, ...);
/// Formats like printf() and writes to standard error and the system log, and to the default logger if there
/// is one.
void OrvexErrorLog(const char16_t *format, ...);
void flushOrvexLog();
}
