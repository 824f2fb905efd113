#pragma once

#include <QByteArray>
#include <QString>

#include <ctime>

/// Local time for log files and their names. Follows a change of the time zone while the process runs.
namespace LogTime {

/// "2009-03-14 at 09.05.07"
QString forFileName();
/// Date and time in the short format of the locale.
QString forSeparator();

/// The time stamp of a line: "2009-03-14 09:05:07.042 ". Caches the text of the current second; not
/// thread-safe.
class Stamper {
public:
    void appendNow(QByteArray *line);

private:
    std::time_t mSecond = -1;
    QByteArray mText;
};

} // namespace LogTime
