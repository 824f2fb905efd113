#include "platform/updates/UpdateState.h"

#include <QDir>
#include <QSettings>

namespace platform {
namespace {

const QString LastAsked = QStringLiteral("LastAsked");
const QString SkippedVersion = QStringLiteral("SkippedVersion");
constexpr qint64 Day = qint64{24} * 60 * 60;

void store(const QString &file, const QString &key, const QString &value)
{
    QSettings(file, QSettings::IniFormat).setValue(key, value);
}

} // namespace

UpdateState::UpdateState(QString file)
    : mFile(std::move(file))
{
    const QSettings settings(mFile, QSettings::IniFormat);
    mLastAsked = QDateTime::fromString(settings.value(LastAsked).toString(), Qt::ISODate);
    mSkipped = settings.value(SkippedVersion).toString();
}

QString UpdateState::fileOf(const QString &program)
{
    QString folder = qEnvironmentVariable("XDG_STATE_HOME");
    if (!QDir::isAbsolutePath(folder))
        folder = QDir::home().filePath(QStringLiteral(".local/state"));
    return QDir(folder).filePath(program + QStringLiteral("/updates"));
}

bool UpdateState::askedWithinADay(const QDateTime &now) const
{
    if (!mLastAsked.isValid())
        return false;
    const qint64 age = mLastAsked.secsTo(now);
    return age >= 0 && age < Day;
}

void UpdateState::noteAsked(const QDateTime &now)
{
    mLastAsked = now;
    store(mFile, LastAsked, now.toUTC().toString(Qt::ISODate));
}

bool UpdateState::isSkipped(const QString &version) const
{
    return !mSkipped.isEmpty() && mSkipped == version;
}

void UpdateState::skip(const QString &version)
{
    mSkipped = version;
    store(mFile, SkippedVersion, version);
}

} // namespace platform
