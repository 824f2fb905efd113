#include "logging/LogFormat.h"
#include "tests/support/CommaLocale.h"

#include <QTest>

#include <cerrno>
#include <cfloat>
#include <climits>
#include <cmath>
#include <cstring>

namespace {

QString formatted(const char16_t *format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    QString text = LogFormat::format(format, arguments);
    va_end(arguments);
    return text;
}

const QString Kitchen = QStringLiteral("K\u00fcche");

} // namespace

class LogFormatTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void plainTextIsUnchanged();
    void stringObjects();
    void integersOfEveryLength();
    void flagsWidthAndPrecision();
    void reals();
    void realsDoNotDependOnTheLocale();
    void texts();
    void aPrecisionLimitsTheBytesRead();
    void characters();
    void pointersAndPercent();
    void unknownConversionsAreUnchanged_data();
    void unknownConversionsAreUnchanged();
    void hostileSizesAreBounded();
    void withoutArgumentsOnlyPercentIsConverted_data();
    void withoutArgumentsOnlyPercentIsConverted();
};

void LogFormatTest::plainTextIsUnchanged()
{
    QCOMPARE(formatted(u""), QString());
    QCOMPARE(formatted(u"cameraStatusChanged"), QStringLiteral("cameraStatusChanged"));
    QCOMPARE(formatted(u"K\u00fcche \U0001F600\n"),
             QString::fromUtf8("K\xc3\xbc"
                               "che \xF0\x9F\x98\x80\n"));
    QCOMPARE(formatted(nullptr), QStringLiteral("(null)"));
}

void LogFormatTest::stringObjects()
{
    const QString empty;
    QCOMPARE(formatted(u"<%@>", &Kitchen), QStringLiteral("<K\u00fcche>"));
    QCOMPARE(formatted(u"<%@>%d", &empty, 1), QStringLiteral("<>1"));
    QCOMPARE(formatted(u"<%@>", static_cast<const QString *>(nullptr)), QStringLiteral("<(null)>"));
    QCOMPARE(formatted(u"<%8@|%-8@|%.2@>", &Kitchen, &Kitchen, &Kitchen),
             QStringLiteral("<   K\u00fcche|K\u00fcche   |K\u00fc>"));
    const QString directives = QStringLiteral("%@ %n %s");
    QCOMPARE(formatted(u"%@ %d", &directives, 3), QStringLiteral("%@ %n %s 3"));
}

void LogFormatTest::integersOfEveryLength()
{
    QCOMPARE(formatted(u"%d %i %u", -1, INT_MIN, UINT_MAX), QStringLiteral("-1 -2147483648 4294967295"));
    QCOMPARE(formatted(u"%hhd %hd %hhu %hu", 257, 65537, 257, 65537), QStringLiteral("1 1 1 1"));
    QCOMPARE(formatted(u"%ld %lld %lld", LONG_MIN, LLONG_MAX, LLONG_MIN),
             QStringLiteral("-9223372036854775808 9223372036854775807 -9223372036854775808"));
    QCOMPARE(formatted(u"%lu %llu %zu %ju", ULONG_MAX, ULLONG_MAX, SIZE_MAX, UINTMAX_MAX),
             QStringLiteral(
                 "18446744073709551615 18446744073709551615 18446744073709551615 18446744073709551615"));
    QCOMPARE(formatted(u"%td %zd %jd", std::ptrdiff_t(-2), ssize_t(-3), std::intmax_t(-4)),
             QStringLiteral("-2 -3 -4"));
    QCOMPARE(formatted(u"%x %X %o %x", 255, 255, 8, -1), QStringLiteral("ff FF 10 ffffffff"));
}

void LogFormatTest::flagsWidthAndPrecision()
{
    QCOMPARE(formatted(u"[%5d|%-5d|%05d|%+d|% d|%#x|%.3d|%6.3d]", 42, 42, 42, 42, 42, 255, 7, 7),
             QStringLiteral("[   42|42   |00042|+42| 42|0xff|007|   007]"));
}

void LogFormatTest::reals()
{
    QCOMPARE(formatted(u"%f %.1f %e %g %G", 1.5, 2.25, 1500.0, 1e-9, 1e20),
             QStringLiteral("1.500000 2.2 1.500000e+03 1e-09 1E+20"));
    QCOMPARE(formatted(u"%f %F", -HUGE_VAL, HUGE_VAL), QStringLiteral("-inf INF"));
    QCOMPARE(formatted(u"%.0f", DBL_MAX).size(), 309);
}

void LogFormatTest::realsDoNotDependOnTheLocale()
{
    const CommaLocale comma;
    QVERIFY(comma.inForce());
    QCOMPARE(formatted(u"%.1f", 0.5), QStringLiteral("0.5"));
    QVERIFY(comma.inForce());
}

void LogFormatTest::texts()
{
    QCOMPARE(formatted(u"%s|%5s|%-5s|%.2s", "K\xc3\xbc", "ab", "ab", "abc"),
             QStringLiteral("K\u00fc|   ab|ab   |ab"));
    QCOMPARE(formatted(u"%s", static_cast<const char *>(nullptr)), QStringLiteral("(null)"));
    QVERIFY(formatted(u"%s.", "\xff\xfe").endsWith(QLatin1Char('.')));
}

void LogFormatTest::aPrecisionLimitsTheBytesRead()
{
    const auto unterminated = std::make_unique<char[]>(3);
    std::memcpy(unterminated.get(), "abc", 3);
    QCOMPARE(formatted(u"%.3s|%.0s", unterminated.get(), unterminated.get()), QStringLiteral("abc|"));
    const QByteArray longText(10'000, 'x');
    QCOMPARE(formatted(u"%.9999s", longText.constData()).size(), 4096);
}

void LogFormatTest::characters()
{
    QCOMPARE(formatted(u"%c%3c%-3c|", 'a', 'b', 'c'), QStringLiteral("a  bc  |"));
    QCOMPARE(formatted(u"a%cb", 0).size(), 3);
}

void LogFormatTest::pointersAndPercent()
{
    QCOMPARE(formatted(u"%p %%%d%%", reinterpret_cast<void *>(0x1234), 5), QStringLiteral("0x1234 %5%"));
}

void LogFormatTest::unknownConversionsAreUnchanged_data()
{
    QTest::addColumn<QString>("format");
    for (const char *format : {"%",    "100%", "%5",        "%-",  "%.",   "%*",          "%*d", "%ll",
                               "%S",   "%ls",  "%Lf",       "%a",  "%.5l", "%y",          "%n",  "%5.3n",
                               "%1$d", "%hhn", "%\xc3\xbc", "%\n", "% ",   "%y %d %s %@", "%m",  "%z"})
        QTest::newRow(format) << QString::fromUtf8(format);
}

void LogFormatTest::unknownConversionsAreUnchanged()
{
    QFETCH(QString, format);
    const QString whole = QStringLiteral("%d") + format;
    QCOMPARE(formatted(reinterpret_cast<const char16_t *>(whole.utf16()), 1), QStringLiteral("1") + format);
}

void LogFormatTest::hostileSizesAreBounded()
{
    QVERIFY(formatted(u"%2000000000d", 1).size() < 100'000);
    QVERIFY(formatted(u"%.2000000000d", 1).size() < 100'000);
    QVERIFY(formatted(u"%.2000000000f", 1.5).size() < 100'000);
    QVERIFY(formatted(u"%99999999999999999999s", "x").size() < 100'000);
    QCOMPARE(formatted(u"%.99999999999999999999s", "x"), QStringLiteral("x"));
}

void LogFormatTest::withoutArgumentsOnlyPercentIsConverted_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("expected");
    const auto stands = [](const QByteArray &text) { QTest::newRow(text.constData()) << text << text; };
    for (const char *text : {"", "plain", "%d", "%s%s%s%n", "%", "100%", "%5.3f", "%@", "% %", "%\n", "%*d"})
        stands(text);
    QTest::newRow("percent") << QByteArray("100%% %%d %%%") << QByteArray("100% %d %%");
    QTest::newRow("three") << QByteArray("%%%d") << QByteArray("%%d");
    QTest::newRow("error") << QByteArray("why: %m") << QByteArray("why: ") + std::strerror(ENOENT);
    QTest::newRow("no error") << QByteArray("%%m") << QByteArray("%m");
}

void LogFormatTest::withoutArgumentsOnlyPercentIsConverted()
{
    QFETCH(QByteArray, text);
    QTEST(LogFormat::withoutArguments(text, ENOENT), "expected");
}

QTEST_GUILESS_MAIN(LogFormatTest)
#include "LogFormat_test.moc"
