#include "logging/LogFile.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr mode_t DefaultMode = 0666;
// A pipe in the file's place must not make the program wait for a reader.
constexpr int OpenFlags = O_WRONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK;

} // namespace

void LogFile::create(const QString &path)
{
    const int descriptor =
        ::open(QFile::encodeName(path).constData(), OpenFlags | O_CREAT | O_TRUNC, DefaultMode);
    if (descriptor >= 0)
        ::close(descriptor);
}

std::shared_ptr<LogFile> LogFile::open(const QString &path)
{
    const int descriptor = ::open(QFile::encodeName(path).constData(), OpenFlags | O_APPEND);
    return descriptor >= 0 ? std::shared_ptr<LogFile>(new LogFile(descriptor)) : nullptr;
}

LogFile::LogFile(int descriptor)
    : mDescriptor(descriptor)
{
}

LogFile::~LogFile()
{
    ::close(mDescriptor);
}

void LogFile::writeLine(const QByteArray &line)
{
    const std::lock_guard lock(mWriting);
    ssize_t written = 0;
    do
        written = ::write(mDescriptor, line.constData(), static_cast<std::size_t>(line.size()));
    while (written < 0 && errno == EINTR);
    if (written > 0 && written < line.size())
        takeBack(written);
}

void LogFile::synchronize()
{
    ::fsync(mDescriptor);
}

/// The disk was full in the middle of a line. Unless somebody else has written behind it, the beginning goes
/// too.
void LogFile::takeBack(qint64 written)
{
    const off_t end = ::lseek(mDescriptor, 0, SEEK_CUR);
    struct stat status = {};
    if (end < written || ::fstat(mDescriptor, &status) != 0 || status.st_size != end)
        return;
    if (::ftruncate(mDescriptor, end - written) == 0)
        ::lseek(mDescriptor, 0, SEEK_END);
}
