#include "about/Version.h"
#include "tests/about/LabelRuns.h"
#include "tests/support/PaneFixture.h"
#include "tests/support/Timeout.h"
#include "widgets/LinkLabel.h"

#include <QAccessible>
#include <QApplication>
#include <QStyle>
#include <QTest>

/// Tests the version line below the list.
class ControllerVersionTest : public QObject {
    Q_OBJECT
private:
    void lookDark(bool dark);

    std::unique_ptr<PaneFixture> fixture;

private Q_SLOTS:
    void init() { fixture = std::make_unique<PaneFixture>(); }
    void cleanup();

    void theVersionLineEndsInALink_data();
    void theVersionLineEndsInALink();
    void aMissingVersionIsAQuestionMark();
    void theVersionLineOpensNothing();
    void theLinkIsReadableOnADarkBackground();
};

void ControllerVersionTest::cleanup()
{
    lookDark(false);
    fixture.reset();
}

void ControllerVersionTest::lookDark(bool dark)
{
    QPalette palette = QApplication::style()->standardPalette();
    if (dark)
        palette.setColor(QPalette::Window, QColor(0x23, 0x26, 0x29));
    QApplication::setPalette(palette);
}

void ControllerVersionTest::theVersionLineEndsInALink_data()
{
    QTest::addColumn<QVariant>("version");
    QTest::addColumn<QString>("front");
    QTest::newRow("1.0") << QVariant(QStringLiteral("1.0")) << QStringLiteral("v1.0 by ");
    QTest::newRow("2.1.3") << QVariant(QStringLiteral("2.1.3")) << QStringLiteral("v2.1.3 by ");
    QTest::newRow("markup") << QVariant(QStringLiteral("<b>1</b>&amp;"))
                            << QStringLiteral("v<b>1</b>&amp; by ");
    QTest::newRow("blanks") << QVariant(QStringLiteral("1  0")) << QStringLiteral("v1  0 by ");
    QTest::newRow("format") << QVariant(QStringLiteral("%2 %1 %@")) << QStringLiteral("v%2 %1 %@ by ");
    QTest::newRow("number") << QVariant(7LL) << QStringLiteral("v7 by ");
}

void ControllerVersionTest::theVersionLineEndsInALink()
{
    QFETCH(QVariant, version);
    QFETCH(QString, front);
    const auto company = QStringLiteral("Orvex Network");
    fixture->bundle->info = {{QStringLiteral("CFBundleVersion"), version}};
    fixture->show();
    const auto *line = fixture->outlets().copyright;
    QCOMPARE(runsOf(line), QList<Run>({plain(front), link(company)}));
    QCOMPARE(company.size(), 13);
    QCOMPARE(line->plainText(), front + company);
    auto *accessible = QAccessible::queryAccessibleInterface(fixture->outlets().copyright);
    QCOMPARE(accessible->text(QAccessible::Name), front + company);
}

void ControllerVersionTest::aMissingVersionIsAQuestionMark()
{
    fixture->bundle->info = {{QStringLiteral("CFBundleName"), QStringLiteral("KS-7")}};
    fixture->show();
    QCOMPARE(runsOf(fixture->outlets().copyright),
             QList<Run>({plain(QStringLiteral("v? by ")), link(QStringLiteral("Orvex Network"))}));
    fixture->bundle->info.clear();
    QCOMPARE(paneVersion(*fixture->bundle), QStringLiteral("?"));
}

void ControllerVersionTest::theVersionLineOpensNothing()
{
    fixture->show();
    QTest::mouseClick(fixture->outlets().copyright, Qt::LeftButton);
    QCOMPARE(fixture->workspace->opened, QStringList());
    QCOMPARE(fixture->outlets().copyright->focusPolicy(), Qt::NoFocus);
}

void ControllerVersionTest::theLinkIsReadableOnADarkBackground()
{
    fixture->show();
    const auto company = [this] { return runsOf(fixture->outlets().copyright).constLast(); };
    lookDark(true);
    QTRY_VERIFY_WITH_TIMEOUT(company().color.lightness() > 150, Timeout);
    const auto dark = company();
    QVERIFY(dark.underlined);
    QVERIFY(dark.color.blue() > dark.color.red() && dark.color.blue() > dark.color.green());
    lookDark(false);
    QTRY_COMPARE_WITH_TIMEOUT(company().color, QColor(Qt::blue), Timeout);
}

QTEST_MAIN(ControllerVersionTest)
#include "ControllerVersion_test.moc"
