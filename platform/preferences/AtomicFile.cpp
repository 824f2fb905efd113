#include "platform/preferences/AtomicFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform::AtomicFile {
namespace {

constexpr qint64 MaximumSize = qint64(64) << 20;
constexpr int MaximumLinks = 40;
constexpr mode_t OwnerOnly = S_IRUSR | S_IWUSR;
constexpr mode_t PermissionBits = 07777;

class Descriptor {
public:
    explicit Descriptor(int fd)
        : mFd(fd)
    {
    }
    ~Descriptor()
    {
        if (mFd >= 0)
            ::close(mFd);
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    [[nodiscard]] int get() const { return mFd; }

private:
    int mFd;
};

std::int64_t nsFrom(const timespec &time)
{
    return static_cast<std::int64_t>(time.tv_sec) * 1'000'000'000 + time.tv_nsec;
}

Stamp stampFrom(const struct stat &status)
{
    return {true, nsFrom(status.st_mtim), nsFrom(status.st_ctim), status.st_size, status.st_ino};
}

int readAll(int fd, QByteArray *bytes)
{
    QByteArray block(64 * 1024, Qt::Uninitialized);
    while (true) {
        const ssize_t count = ::read(fd, block.data(), static_cast<std::size_t>(block.size()));
        if (count == 0)
            return 0;
        if (count < 0 && errno != EINTR)
            return errno;
        if (count > 0)
            bytes->append(block.constData(), static_cast<int>(count));
        if (bytes->size() > MaximumSize)
            return EFBIG;
    }
}

int writeAll(int fd, const QByteArray &bytes)
{
    for (qint64 done = 0; done < bytes.size();) {
        const ssize_t count =
            ::write(fd, bytes.constData() + done, static_cast<std::size_t>(bytes.size() - done));
        if (count < 0 && errno != EINTR)
            return errno;
        if (count > 0)
            done += count;
    }
    return 0;
}

/// Where a write has to go: the end of a chain of links, there or not; empty for a loop.
QString targetOf(QString path)
{
    for (int links = 0; links < MaximumLinks; ++links) {
        const QFileInfo info(path);
        if (!info.isSymLink())
            return path;
        path = info.symLinkTarget();
    }
    return {};
}

/// The new contents, safe on the disk under a name of their own; removed again unless renamed.
class TemporaryFile {
public:
    explicit TemporaryFile(const QString &target)
        : mName(QFile::encodeName(target + QStringLiteral(".XXXXXX")))
        , mFile(::mkostemp(mName.data(), O_CLOEXEC))
        , mError(mFile.get() < 0 ? errno : 0)
    {
    }
    ~TemporaryFile()
    {
        if (mFile.get() >= 0 && !mRenamed)
            ::unlink(mName.constData());
    }
    TemporaryFile(const TemporaryFile &) = delete;
    TemporaryFile &operator=(const TemporaryFile &) = delete;

    /// `replaced` is what stands there now, null for a new file.
    int write(const QByteArray &bytes, const struct stat *replaced)
    {
        if (mError != 0)
            return mError;
        if (const int error = writeAll(mFile.get(), bytes))
            return error;
        if (replaced && !keepOwner(*replaced))
            return errno;
        const mode_t mode = replaced ? replaced->st_mode & PermissionBits : OwnerOnly;
        return ::fchmod(mFile.get(), mode) != 0 || ::fsync(mFile.get()) != 0 ? errno : 0;
    }

    int renameTo(const QByteArray &target, Stamp *stamp)
    {
        if (std::rename(mName.constData(), target.constData()) != 0)
            return errno;
        mRenamed = true;
        // Renaming has changed the stamp; of this file, whatever stands under its name by now.
        struct stat status = {};
        *stamp = ::fstat(mFile.get(), &status) == 0 ? stampFrom(status) : Stamp();
        return 0;
    }

private:
    /// Run by the superuser, the pane must not take the file away from its owner. Others may fail to keep the
    /// group.
    [[nodiscard]] bool keepOwner(const struct stat &replaced) const
    {
        return ::fchown(mFile.get(), replaced.st_uid, replaced.st_gid) == 0 || ::geteuid() != 0;
    }

    QByteArray mName;
    Descriptor mFile;
    int mError;
    bool mRenamed = false;
};

void syncFolder(const QString &folder)
{
    const Descriptor descriptor(
        ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor.get() >= 0)
        ::fsync(descriptor.get());
}

} // namespace

Stamp stampOf(const QString &path)
{
    struct stat status = {};
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? stampFrom(status) : Stamp();
}

Contents read(const QString &path)
{
    Contents contents;
    // Opening a pipe must not wait for somebody to write into it.
    const Descriptor file(::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status = {};
    if (file.get() < 0 || ::fstat(file.get(), &status) != 0) {
        contents.error = errno;
        contents.stamp = stampOf(path);
        return contents;
    }
    contents.stamp = stampFrom(status);
    if (S_ISREG(status.st_mode))
        contents.error = readAll(file.get(), &contents.bytes);
    else
        contents.error = S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
    return contents;
}

int replace(const QString &path, const QByteArray &bytes, Stamp *stamp)
{
    const QString target = targetOf(path);
    if (target.isEmpty())
        return ELOOP;
    const QString folder = QFileInfo(target).path();
    const QByteArray name = QFile::encodeName(target);
    struct stat status = {};
    const bool isNew = ::stat(name.constData(), &status) != 0;
    if (!isNew && !S_ISREG(status.st_mode))
        return S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
    QDir().mkpath(folder);
    TemporaryFile file(target);
    if (const int error = file.write(bytes, isNew ? nullptr : &status))
        return error;
    if (const int error = file.renameTo(name, stamp))
        return error;
    syncFolder(folder);
    return 0;
}

} // namespace platform::AtomicFile
