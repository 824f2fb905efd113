#pragma once

#include <QByteArray>
#include <QString>

/// Reads and replaces files as a whole, so that no reader sees a half-written one.
namespace platform::AtomicFile {

struct Contents {
    /// 0, or the errno of the failed read; ENOENT when the file does not exist.
    int error = 0;
    QByteArray bytes;
    bool operator==(const Contents &other) const = default;
};

/// Refuses files that are not regular or are too large to be preferences.
Contents read(const QString &path);

/// Writes the file atomically and creates missing parent folders. A symbolic link stays and its target is
/// replaced. Mode and owner stay; a new file has mode 0600. Returns 0, or an errno; the file is then
/// unchanged.
int replace(const QString &path, const QByteArray &bytes);

} // namespace platform::AtomicFile
