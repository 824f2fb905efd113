#pragma once

#include <QByteArray>
#include <QString>

#include <ctime>

/// The wall clock as it is written into log files and their names, in the user's time zone.
namespace LogTime {

/// "2009-03-14 at 09.05.07"
QString forFileName();
/// The locale's own short date and time.
QString forSeparator();

/// "2009-03-14 09:05:07.042 ", for the lines. The part that stays the same within a second is kept; not for
/// two threads at once.
class Stamper {
public:
    void appendNow(QByteArray *line);

private:
    std::time_t mSecond = -1;
    QByteArray mText;
};

} // namespace LogTime
