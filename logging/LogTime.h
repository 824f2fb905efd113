#pragma once

#include <QByteArray>
#include <QString>

#include <ctime>

/// Local time for log files and their names. A change of the time zone takes effect while the process runs.
namespace LogTime {

/// The present time for a file name, such as "2009-03-14 at 09.05.07".
QString forFileName();
/// The present date and time in the locale's short formats.
QString forSeparator();

/// Writes the time stamp at the start of a log line, such as "2009-03-14 09:05:07.042 ". It is not
/// thread-safe, because it caches the text of the current second.
class Stamper {
public:
    void appendNow(QByteArray *line);

private:
    std::time_t mSecond = -1;
    QByteArray mText;
};

} // namespace LogTime
