#include "logging/KS7OrvexLogger.h"

#include <QDir>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    // Discard standard output, because the fuzzer logs millions of lines.
    if (!std::freopen("/dev/null", "w", stdout))
        std::abort();
    KS7OrvexLogger::setAppName(QStringLiteral("Fuzzer %s %n"));
    KS7OrvexLogger::createDefaultLoggerToFile(true, true);
    return 0;
}

/// Logs any message through all sinks. A conversion such as %s in the message must be logged as text: there
/// is no argument for it to read.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<int>(size));
    gMainLogger->log(QString::fromUtf8(bytes));
    gMainLogger->log(QString::fromUtf16(reinterpret_cast<const char16_t *>(bytes.constData()),
                                        static_cast<int>(size / sizeof(char16_t))));
    const QString message = QString::fromUtf8(bytes);
    OrvexLog(u"%@|%5.3d|%s", &message, static_cast<int>(size), bytes.constData());
    return 0;
}
