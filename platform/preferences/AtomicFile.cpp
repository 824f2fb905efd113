#include "platform/preferences/AtomicFile.h"

#include <QFile>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace platform::AtomicFile {
namespace {

using std::filesystem::path;

constexpr qint64 MaximumSize = qint64(64) << 20;
constexpr int MaximumLinks = 40;
constexpr mode_t OwnerOnly = S_IRUSR | S_IWUSR;
constexpr mode_t PermissionBits = 07777;

/// Opens `file` on the descriptor, which the file will close. Returns false on failure, with errno set.
bool openDescriptor(QFile *file, int descriptor, QIODevice::OpenMode mode)
{
    return descriptor >= 0
        && file->open(descriptor, mode | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle);
}

int errorFor(const struct stat &status)
{
    if (S_ISREG(status.st_mode))
        return status.st_size > MaximumSize ? EFBIG : 0;
    return S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
}

/// Returns the target of a chain of symbolic links, which need not exist; empty for a loop. A relative link
/// is appended to its folder and not normalised: after a linked folder, `..` means the parent folder of that
/// link's target.
path targetOf(path name)
{
    for (int links = 0; links < MaximumLinks; ++links) {
        std::error_code noLink;
        const path target = read_symlink(name, noLink);
        if (noLink)
            return name;
        name = name.parent_path() / target;
    }
    return {};
}

/// Gives the file the owner of the replaced file, which matters if root runs the pane. For another user a
/// failure counts as success, because that user may not be allowed to set the group.
bool keepOwner(int fd, const struct stat &replaced)
{
    return ::fchown(fd, replaced.st_uid, replaced.st_gid) == 0 || ::geteuid() != 0;
}

/// Writes the contents, owner and mode; `replaced` is null for a new file. fchmod() must follow fchown(),
/// because fchown() clears mode bits.
int fill(QFile *file, const QByteArray &bytes, const struct stat *replaced)
{
    if (file->write(bytes) != bytes.size())
        return errno;
    if (replaced && !keepOwner(file->handle(), *replaced))
        return errno;
    const mode_t mode = replaced ? replaced->st_mode & PermissionBits : OwnerOnly;
    return ::fchmod(file->handle(), mode) != 0 || ::fsync(file->handle()) != 0 ? errno : 0;
}

int replaceTarget(const path &target, const QByteArray &bytes, const struct stat *replaced)
{
    std::string temporary = target.native() + ".XXXXXX";
    QFile file;
    if (!openDescriptor(&file, ::mkostemp(temporary.data(), O_CLOEXEC), QIODevice::WriteOnly))
        return errno;
    int error = fill(&file, bytes, replaced);
    if (error == 0 && std::rename(temporary.c_str(), target.c_str()) != 0)
        error = errno;
    if (error != 0)
        ::unlink(temporary.c_str());
    return error;
}

/// Calls fsync() on the folder. Without it, the old file may be back after a crash.
void syncFolder(const path &folder)
{
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    ::fsync(descriptor);
    ::close(descriptor);
}

} // namespace

Contents read(const QString &path)
{
    QFile file;
    struct stat status = {};
    // O_NONBLOCK: if the path names a pipe, open() must not block until a writer appears.
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (!openDescriptor(&file, descriptor, QIODevice::ReadOnly) || ::fstat(descriptor, &status) != 0)
        return {errno, {}};
    if (const int error = errorFor(status))
        return {error, {}};
    const QByteArray bytes = file.readAll();
    return file.error() == QFile::NoError ? Contents{0, bytes} : Contents{EIO, {}};
}

int replace(const QString &name, const QByteArray &bytes)
{
    const path target = targetOf(QFile::encodeName(name).toStdString());
    if (target.empty())
        return ELOOP;
    struct stat status = {};
    const bool isNew = ::stat(target.c_str(), &status) != 0;
    if (!isNew && errorFor(status) != 0)
        return errorFor(status);
    std::error_code failedBelow; // Not checked: if the folder is missing, mkostemp() fails.
    create_directories(target.parent_path(), failedBelow);
    const int error = replaceTarget(target, bytes, isNew ? nullptr : &status);
    if (error == 0)
        syncFolder(target.parent_path());
    return error;
}

} // namespace platform::AtomicFile
