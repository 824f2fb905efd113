#pragma once

#include <QByteArray>
#include <QString>

#include <memory>
#include <mutex>

/// An open log file. Each line is one write, and is there whole or not at all; any thread may write.
class LogFile {
public:
    /// Creates an empty file, or empties the one that is there; errors show when it is opened.
    static void create(const QString &path);
    /// Opens a file that is there for writing behind its end; null when that cannot be done.
    static std::shared_ptr<LogFile> open(const QString &path);

    ~LogFile();
    LogFile(const LogFile &) = delete;
    LogFile &operator=(const LogFile &) = delete;

    /// Failures are nobody's to mend: the line is lost.
    void writeLine(const QByteArray &line);
    void synchronize();

private:
    explicit LogFile(int descriptor);
    void takeBack(qint64 written);

    const int mDescriptor;
    std::mutex mWriting;
};
