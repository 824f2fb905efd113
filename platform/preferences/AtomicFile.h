#pragma once

#include <QByteArray>
#include <QString>

/// Reads and replaces files as a whole, so that no reader sees a half-written one.
namespace platform::AtomicFile {

struct Contents {
    /// 0 on success, else the errno of the failed read: ENOENT if the file does not exist.
    int error = 0;
    QByteArray bytes;
    bool operator==(const Contents &other) const = default;
};

/// Reads the file. Files that are not regular or too large for preferences are an error.
Contents read(const QString &path);

/// Whether there is no file of that name. Does not open it.
bool isAbsent(const QString &path);

/// Whether this errno of an open() means that the file does not exist.
bool meansAbsent(int error);

/// Writes the file atomically and creates missing parent folders. If the path is a symbolic link, its target
/// is replaced. Mode and owner stay; a new file has mode 0600. Returns 0 on success; otherwise an errno, and
/// the file is unchanged.
int replace(const QString &path, const QByteArray &bytes);

} // namespace platform::AtomicFile
