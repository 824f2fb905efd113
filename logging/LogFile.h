#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

/// An open log file for any number of threads. Each line is one appending write: it is stored whole or not at
/// all.
class LogFile {
public:
    /// Creates an empty file or truncates the existing one. A failure shows in open().
    static void create(const QString &path);
    /// Opens an existing file for appending; null on failure.
    static std::shared_ptr<LogFile> open(const QString &path);

    ~LogFile();
    LogFile(const LogFile &) = delete;
    LogFile &operator=(const LogFile &) = delete;

    /// A line that cannot be written is lost.
    void writeLine(const QByteArray &line);
    void synchronize();

private:
    explicit LogFile(int descriptor);
    void takeBack(qint64 written);

    const int mDescriptor;
};
