#pragma once

#include <QDateTime>
#include <QString>

namespace platform {

/// What the updater keeps between two starts: when it last asked, and the version that the person skips. A
/// small file below $XDG_STATE_HOME; where it cannot be written, the memory lasts as long as the process.
class UpdateState {
public:
    explicit UpdateState(QString file);

    /// The current user's file for a program.
    static QString fileOf(const QString &program);

    /// Whether there was a question within the day before `now`. One from the future does not count: the
    /// clock was wrong then or is now.
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
