#include "platform/preferences/AtomicFile.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace platform::AtomicFile {
namespace {

using std::filesystem::path;

constexpr qint64 MaximumSize = qint64(64) << 20;
constexpr qint64 SmallestBuffer = 4096;
constexpr int MaximumLinks = 40;
constexpr mode_t OwnerOnly = S_IRUSR | S_IWUSR;
constexpr mode_t PermissionBits = 07777;

/// Owner of a file descriptor, which it closes. The number is negative after a failed open().
class Descriptor {
public:
    explicit Descriptor(int number)
        : mNumber(number)
    {
    }
    ~Descriptor()
    {
        if (mNumber >= 0)
            ::close(mNumber);
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    operator int() const { return mNumber; }

private:
    const int mNumber;
};

int errorFor(const struct stat &status)
{
    if (S_ISREG(status.st_mode))
        return status.st_size > MaximumSize ? EFBIG : 0;
    return S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
}

/// Reads the whole file, up to MaximumSize. `size` is only the expected length: the file may change during
/// the reading.
Contents readToEnd(int file, qint64 size)
{
    QByteArray bytes(static_cast<int>(std::max(size + 1, SmallestBuffer)), Qt::Uninitialized);
    int filled = 0;
    for (;;) {
        const auto count =
            TEMP_FAILURE_RETRY(::read(file, bytes.data() + filled, std::size_t(bytes.size() - filled)));
        if (count <= 0) {
            bytes.truncate(filled);
            return count == 0 ? Contents{0, bytes} : Contents{EIO, {}};
        }
        filled += static_cast<int>(count);
        if (filled > MaximumSize)
            return {EFBIG, {}};
        if (filled == bytes.size())
            bytes.resize(2 * filled);
    }
}

bool writeAll(int file, const QByteArray &bytes)
{
    const char *next = bytes.constData();
    while (next != bytes.constEnd()) {
        const auto count = TEMP_FAILURE_RETRY(::write(file, next, std::size_t(bytes.constEnd() - next)));
        if (count < 0)
            return false;
        next += count;
    }
    return true;
}

/// Returns the target of a chain of symbolic links, which need not exist, and its status if it exists; empty
/// for a loop. A relative link is appended to its folder and not normalised: after a linked folder, `..`
/// means the parent folder of that link's target.
path targetOf(path name, std::optional<struct stat> *status)
{
    for (int links = 0; links < MaximumLinks; ++links) {
        struct stat found = {};
        if (::lstat(name.c_str(), &found) != 0)
            return name;
        if (!S_ISLNK(found.st_mode)) {
            *status = found;
            return name;
        }
        std::error_code removedMeanwhile;
        const path target = read_symlink(name, removedMeanwhile);
        name = name.parent_path() / target;
    }
    return {};
}

/// Gives the file the owner of the replaced file, which matters if root runs the pane. For another user a
/// failure counts as success, because that user may not be allowed to set the group.
bool keepOwner(int file, const struct stat &replaced)
{
    struct stat made = {};
    if (::fstat(file, &made) == 0 && made.st_uid == replaced.st_uid && made.st_gid == replaced.st_gid)
        return true;
    return ::fchown(file, replaced.st_uid, replaced.st_gid) == 0 || ::geteuid() != 0;
}

/// Writes the contents, owner and mode; `replaced` is null for a new file. fchmod() must follow fchown(),
/// because fchown() clears mode bits.
int fill(int file, const QByteArray &bytes, const struct stat *replaced)
{
    if (!writeAll(file, bytes) || (replaced && !keepOwner(file, *replaced)))
        return errno;
    const mode_t mode = replaced ? replaced->st_mode & PermissionBits : OwnerOnly;
    return ::fchmod(file, mode) != 0 || ::fsync(file) != 0 ? errno : 0;
}

int replaceTarget(const path &target, const QByteArray &bytes, const struct stat *replaced)
{
    std::string temporary = target.native() + ".XXXXXX";
    const Descriptor file(::mkostemp(temporary.data(), O_CLOEXEC));
    if (file < 0)
        return errno;
    int error = fill(file, bytes, replaced);
    if (error == 0 && std::rename(temporary.c_str(), target.c_str()) != 0)
        error = errno;
    if (error != 0)
        ::unlink(temporary.c_str());
    return error;
}

/// Calls fsync() on the folder. Without it, the old file may be back after a crash.
void syncFolder(const path &folder)
{
    const Descriptor descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor >= 0)
        ::fsync(descriptor);
}

} // namespace

Contents read(const QString &path)
{
    struct stat status = {};
    // O_NONBLOCK: if the path names a pipe, open() must not block until a writer appears.
    const Descriptor file(::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (file < 0 || ::fstat(file, &status) != 0)
        return {errno, {}};
    const int error = errorFor(status);
    return error != 0 ? Contents{error, {}} : readToEnd(file, status.st_size);
}

bool isAbsent(const QString &path)
{
    return ::access(QFile::encodeName(path).constData(), F_OK) != 0 && meansAbsent(errno);
}

bool meansAbsent(int error)
{
    return error == ENOENT || error == ENOTDIR;
}

int replace(const QString &name, const QByteArray &bytes)
{
    std::optional<struct stat> replaced;
    const path target = targetOf(QFile::encodeName(name).toStdString(), &replaced);
    if (target.empty())
        return ELOOP;
    if (replaced && errorFor(*replaced) != 0)
        return errorFor(*replaced);
    std::error_code ignored; // Do not check the result: if the folder is missing, mkostemp() fails.
    if (!replaced)
        create_directories(target.parent_path(), ignored);
    const int error = replaceTarget(target, bytes, replaced ? &*replaced : nullptr);
    if (error == 0)
        syncFolder(target.parent_path());
    return error;
}

} // namespace platform::AtomicFile
