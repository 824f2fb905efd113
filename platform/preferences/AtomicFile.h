#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>

/// Files that are read and replaced as a whole, never seen half written.
namespace platform::AtomicFile {

/// Tells one state of a file from the next without reading it.
struct Stamp {
    bool exists = false;
    std::int64_t modifiedNs = 0;
    /// Nobody can set it, unlike the time of the last modification.
    std::int64_t changedNs = 0;
    std::int64_t size = 0;
    std::uint64_t inode = 0;
    bool operator==(const Stamp &other) const = default;
};

struct Contents {
    /// 0, else the errno that says why the file cannot be read. A file that is not there reads as ENOENT.
    int error = 0;
    QByteArray bytes;
    Stamp stamp;
};

/// A file that cannot be looked at has the stamp of one that is not there.
Stamp stampOf(const QString &path);

/// Refuses what is no regular file, and what is too large to be anybody's preferences.
Contents read(const QString &path);

/// Replaces or creates the file, and the folders above it. A symbolic link stays and its target is replaced;
/// the mode stays, a new file is the owner's alone. 0 and the new stamp, or an errno with nothing changed.
int replace(const QString &path, const QByteArray &bytes, Stamp *stamp);

} // namespace platform::AtomicFile
