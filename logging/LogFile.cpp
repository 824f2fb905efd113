#include "logging/LogFile.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr mode_t DefaultMode = 0666;
// O_NONBLOCK: if the path names a pipe, open() must not block until a reader appears.
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
    const auto written =
        TEMP_FAILURE_RETRY(::write(mDescriptor, line.constData(), static_cast<std::size_t>(line.size())));
    if (written > 0 && written < line.size())
        takeBack(written);
}

void LogFile::synchronize()
{
    ::fsync(mDescriptor);
}

/// Called when only the first `written` bytes of a line fitted on the disk. Removes them, unless another
/// process has appended to the file meanwhile.
void LogFile::takeBack(qint64 written)
{
    const off_t end = ::lseek(mDescriptor, 0, SEEK_CUR);
    struct stat status = {};
    if (end < written || ::fstat(mDescriptor, &status) != 0 || status.st_size != end)
        return;
    if (::ftruncate(mDescriptor, end - written) == 0)
        ::lseek(mDescriptor, 0, SEEK_END);
}
