#pragma once

#include <QDateTime>
#include <QString>

namespace platform {

/// Stores the time of the updater's last search and the version to skip in a small file below
/// $XDG_STATE_HOME. If the file cannot be written, the state is lost when the process ends.
class UpdateState {
public:
    explicit UpdateState(QString file);

    /// Path of the current user's file. `program` is the name of its folder.
    static QString fileOf(const QString &program);

    /// Whether the last search was within the day before `now`. A time in the future does not count, because
    /// the clock was wrong then or is wrong now.
    [[nodiscard]] bool askedWithinADay(const QDateTime &now) const;
    void noteAsked(const QDateTime &now);
    [[nodiscard]] bool isSkipped(const QString &version) const;
    void skip(const QString &version);

private:
    QString mFile;
    QDateTime mLastAsked;
    QString mSkipped;
};

} // namespace platform
