#pragma once

#include "logging/LogTime.h"

#include <QByteArray>
#include <QString>
#include <QStringView>

#include <atomic>
#include <memory>
#include <mutex>

namespace platform {
class Workspace;
}

class LogFile;
class KS7OrvexLogger;

/// The process's default logger; empty until createDefaultLoggerToFile().
extern KS7OrvexLogger *gMainLogger;
/// The application's name in file names and prefixes; empty until setAppName().
extern QString *gAppName;

/// Writes each message to the system log, to standard output and to a timestamped file, as its flags say.
/// Any thread may log; lines never interleave.
class KS7OrvexLogger {
public:
    /// The name set, else the name of the running program.
    static QString getAppName();
    static void setAppName(const QString &name);
    /// The folder of everybody's log files, there or not; each application has one of its own below it.
    static QString logFolder();
    /// Makes a logger and leaves it as the default one; the one before stays alive.
    static KS7OrvexLogger *createDefaultLoggerToFile(bool toFile, bool toStdOut);

    KS7OrvexLogger();
    ~KS7OrvexLogger();
    KS7OrvexLogger(const KS7OrvexLogger &) = delete;
    KS7OrvexLogger &operator=(const KS7OrvexLogger &) = delete;
    KS7OrvexLogger *initLoggingToFile(bool toFile, bool toStdOut);

    /// Writes one line to every sink that is on. Callable from any thread, as all that follows.
    void log(const QString &message) { log(QStringView(message)); }
    void log(QStringView message);
    /// Writes a separator with the date and time into the file, and sees it to the disk.
    void markLog();
    /// Leaves the current file and starts a new one; what fails is logged through the default logger.
    void createLogFile();
    /// Sees what is in the file to the disk.
    void flush();
    /// Every switch from off to on starts a new file; switching off leaves the file open.
    void setLogToFile(bool logToFile);
    void setLogToStdOut(bool logToStdOut) { mLogToStdOut = logToStdOut; }
    void setLogToConsole(bool logToConsole) { mLogToConsole = logToConsole; }
    /// A folder other than the current one gets a new file at once, even while file logging is off.
    void setLogFileLocation(const QString &path);
    /// Show the current file, if it is still there, in the user's program or selected in its folder.
    void openLogFile();
    void revealLogFile();
    void setWorkspace(std::shared_ptr<platform::Workspace> workspace);

    /// Whether any sink is on.
    [[nodiscard]] bool isLogging() const;

private:
    static void logToStdOut(const QByteArray &line, int error);
    std::shared_ptr<LogFile> fileHandle() const;
    QString startFile();
    void forgetFile();
    QString pathOfPresentFile() const;
    std::shared_ptr<platform::Workspace> workspace() const;

    std::atomic<bool> mLogToConsole = false;
    std::atomic<bool> mLogToFile = false;
    std::atomic<bool> mLogToStdOut = false;
    QString mAppName;
    QString mLogFileLocation;
    QString mLogFilePath;
    std::shared_ptr<LogFile> mFileHandle;
    std::mutex mLogLock;

    /// Guards folder, path, handle and workspace for an instant, for the operations that must not wait for
    /// mLogLock. Taken inside it, never around it.
    mutable std::mutex mStateLock;
    std::shared_ptr<platform::Workspace> mWorkspace;
    LogTime::Stamper mStamper;
    /// The line being written; kept from one to the next.
    QByteArray mLine;
};

extern "C" {
/// Formats and logs through the default logger; nothing without one. `%@` takes a `const QString *`.
void OrvexLog(const char16_t *format, ...);
/// The same with a UTF-8 format.
void orvexlog(const char *format, ...);
/// To the system console always, and through the default logger if there is one.
void OrvexErrorLog(const char16_t *format, ...);
void flushOrvexLog();
}
