#pragma once

#include <QDateTime>
#include <QString>

namespace platform {

/// State that the updater keeps between two starts: the time of its last check and the version to skip. A
/// small file below $XDG_STATE_HOME. If it cannot be written, the state lasts as long as the process.
class UpdateState {
public:
    explicit UpdateState(QString file);

    /// The current user's file.
    static QString fileOf(const QString &program);

    /// Whether a check took place in the day before `now`. A time in the future does not count, because the
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
