#include "cameras/SanitizedLine.h"

#include <QSet>
#include <QTest>

#include <utility>

class SanitizedLineTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void ordinaryNamesAreUnchanged_data();
    void ordinaryNamesAreUnchanged();
    void invisibleCharactersAreWrittenAsCodes_data();
    void invisibleCharactersAreWrittenAsCodes();
    void aNameWithOverridesIsIsolated_data();
    void aNameWithOverridesIsIsolated();
    void aLoneIsolateIsWrittenAsItsCode();
    void aVeryLongNameLosesItsMiddle();
    void aPairOfSurrogatesIsNeverSplit();
    void differentNamesStayDifferent();

private:
    static QString monstrous(const QString &middle);
};

namespace {

const QString Isolate = QStringLiteral("\u2068");
const QString Pop = QStringLiteral("\u2069");
const QString Smile = QString::fromUtf8("\xF0\x9F\x98\x80");

} // namespace

QString SanitizedLineTest::monstrous(const QString &middle)
{
    const QString side(800, QLatin1Char('x'));
    return side + middle + side;
}

void SanitizedLineTest::ordinaryNamesAreUnchanged_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("null") << QString();
    QTest::newRow("plain") << QStringLiteral("Kitchen");
    QTest::newRow("markup") << QStringLiteral("<b>&amp;</b> %1 \\n");
    QTest::newRow("emoji of several code points")
        << QString::fromUtf8("\xF0\x9F\x91\xA9\xE2\x80\x8D\xF0\x9F\x91\xA7");
    QTest::newRow("Hebrew with marks") << QStringLiteral("\u200F\u05DE\u05D8\u05D1\u05D7\u200E 2");
    QTest::newRow("Arabic with a mark") << QStringLiteral("\u061C\u0645\u0637\u0628\u062E");
    QTest::newRow("isolates") << QStringLiteral("\u2067\u05DE\u2066A\u2069\u2069 \u2068B\u2069");
}

void SanitizedLineTest::ordinaryNamesAreUnchanged()
{
    QFETCH(QString, name);
    QCOMPARE(sanitizedLine(name), name);
}

void SanitizedLineTest::invisibleCharactersAreWrittenAsCodes_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *what, const QString &character, const char *code) {
        QTest::newRow(what) << QString(QStringLiteral("a") + character + QStringLiteral("b"))
                            << QString(QStringLiteral("a\u27E8U+") + QLatin1String(code)
                                       + QStringLiteral("\u27E9b"));
    };
    row("line feed", QStringLiteral("\n"), "000A");
    row("zero", QString(QChar(0)), "0000");
    row("line separator", QStringLiteral("\u2028"), "2028");
    row("zero-width space", QStringLiteral("\u200B"), "200B");
    row("half a pair", QString(QChar(0xD83D)), "D83D");
    row("the bracket of a code", QStringLiteral("\u27E8"), "27E8");
}

void SanitizedLineTest::invisibleCharactersAreWrittenAsCodes()
{
    QFETCH(QString, name);
    QTEST(sanitizedLine(name), "expected");
}

void SanitizedLineTest::aNameWithOverridesIsIsolated_data()
{
    QTest::addColumn<QString>("name");
    for (const char16_t mark : u"\u202A\u202B\u202C\u202D\u202E")
        if (mark)
            QTest::addRow("U+%04x", mark)
                << QString(QStringLiteral("Kit") + QChar(mark) + QStringLiteral("nehc"));
}

void SanitizedLineTest::aNameWithOverridesIsIsolated()
{
    QFETCH(QString, name);
    QCOMPARE(sanitizedLine(name), QString(Isolate + name + Pop));
}

void SanitizedLineTest::aLoneIsolateIsWrittenAsItsCode()
{
    // sanitizedLine() puts a name with overrides between the characters that start and end an isolate. In the
    // name, an unpaired end (U+2069) would end that isolate too early. An unpaired start (U+2067) would also
    // affect the text after the name.
    QCOMPARE(sanitizedLine(QStringLiteral("\u202Ea\u2069b")),
             QString(Isolate + QStringLiteral("\u202Ea\u27E8U+2069\u27E9b") + Pop));
    QCOMPARE(sanitizedLine(QStringLiteral("a\u2067b\u2066c\u2069")),
             QStringLiteral("a\u27E8U+2067\u27E9b\u2066c\u2069"));
}

void SanitizedLineTest::aVeryLongNameLosesItsMiddle()
{
    const QString line = sanitizedLine(monstrous(QStringLiteral("y")));
    QVERIFY(line.size() < 1100);
    QVERIFY(line.startsWith(QStringLiteral("xxx")) && line.endsWith(QStringLiteral("xxx")));
    QVERIFY(!line.contains(QLatin1Char('y')));
    QCOMPARE(line, sanitizedLine(monstrous(QStringLiteral("y"))));
}

void SanitizedLineTest::aPairOfSurrogatesIsNeverSplit()
{
    for (const int shift : {0, 1}) {
        const QString line = sanitizedLine(QString(shift, QLatin1Char('x')) + Smile.repeated(600)
                                           + QString(shift, QLatin1Char('x')));
        QVERIFY(line.contains(Smile.repeated(240)));
        QVERIFY2(!line.contains(QStringLiteral("U+D")), qPrintable(line));
        QCOMPARE(QString::fromUtf8(line.toUtf8()), line);
    }
}

void SanitizedLineTest::differentNamesStayDifferent()
{
    QStringList names{QString(), monstrous(QStringLiteral("a")), monstrous(QStringLiteral("b"))};
    for (const char16_t *part :
         {u"", u" ", u"\n", u"\t", u"\r", u"\u240A", u"\u200E", u"\u200F", u"\u061C", u"\u202E", u"\u202D",
          u"\u2068", u"\u2069", u"\u2068x\u2069", u"\u200B", u"\u00AD", u"\u27E8U+000A\u27E9"}) {
        names += QStringLiteral("Kit") + QString::fromUtf16(part) + QStringLiteral("nehc");
        names += Isolate + names.last() + Pop;
    }
    for (const char16_t half : {0xD800, 0xD801, 0xDC00})
        names += QString(QChar(half));
    QSet<QByteArray> lines;
    for (const QString &name : std::as_const(names))
        lines.insert(sanitizedLine(name).toUtf8());
    QCOMPARE(lines.size(), names.size());
}

QTEST_GUILESS_MAIN(SanitizedLineTest)
#include "SanitizedLine_test.moc"
