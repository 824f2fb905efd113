#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

/// An open log file for any thread. Each line is one write() with O_APPEND, so that lines never mix.
class LogFile {
public:
    /// Creates an empty file or truncates the existing one. After a failure, open() returns null.
    static void create(const QString &path);
    /// Opens an existing file for appending; null on failure.
    static std::shared_ptr<LogFile> open(const QString &path);

    ~LogFile();
    LogFile(const LogFile &) = delete;
    LogFile &operator=(const LogFile &) = delete;

    /// Appends one line. The line is lost if it cannot be written.
    void writeLine(const QByteArray &line);
    void synchronize();

private:
    explicit LogFile(int descriptor);
    void takeBack(qint64 written);

    const int mDescriptor;
};
