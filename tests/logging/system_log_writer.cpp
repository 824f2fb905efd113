#include "logging/KS7OrvexLogger.h"

/// Logs one message with OrvexLog() and one with OrvexErrorLog() to the system log. A test receives them.
int main()
{
    KS7OrvexLogger::setAppName(QStringLiteral("KS-7 System Preferences"));
    auto *logger = KS7OrvexLogger::createDefaultLoggerToFile(false, false);
    logger->setLogToConsole(true);
    OrvexLog(u"Küche: %d cameras, 100%%%%", 2);
    logger->setLogToConsole(false);
    OrvexLog(u"nobody reads this");
    OrvexErrorLog(u"code %d, 100%%", -12);
    return 0;
}
