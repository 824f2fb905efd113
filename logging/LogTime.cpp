#include "logging/LogTime.h"

#include <array>

namespace LogTime {
namespace {

QByteArray written(std::time_t second, const char *format)
{
    std::tm local = {};
    // localtime_r() may ignore a change of the time zone, so tzset() reads the time zone first.
    ::tzset();
    ::localtime_r(&second, &local);
    std::array<char, 256> text = {};
    const std::size_t length = std::strftime(text.data(), text.size(), format, &local);
    return {text.data(), static_cast<int>(length)};
}

} // namespace

QString forFileName()
{
    return QString::fromLatin1(written(std::time(nullptr), "%Y-%m-%d at %H.%M.%S"));
}

QString forSeparator()
{
    return QString::fromLocal8Bit(written(std::time(nullptr), "%x %X"));
}

void Stamper::appendNow(QByteArray *line)
{
    timespec now = {};
    ::clock_gettime(CLOCK_REALTIME, &now);
    if (now.tv_sec != mSecond || mText.isEmpty()) {
        mText = written(now.tv_sec, "%Y-%m-%d %H:%M:%S.000 ");
        mSecond = now.tv_sec;
    }
    constexpr long NsPerMs = 1'000'000;
    const int ms = static_cast<int>(now.tv_nsec / NsPerMs);
    char *end = mText.data() + mText.size();
    end[-4] = static_cast<char>('0' + ms / 100);
    end[-3] = static_cast<char>('0' + ms / 10 % 10);
    end[-2] = static_cast<char>('0' + ms % 10);
    line->append(mText);
}

} // namespace LogTime
