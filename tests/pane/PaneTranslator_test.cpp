#include "pane/PaneTranslator.h"
#include "tests/support/PaneFixture.h"

#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTest>
#include <QTranslator>

/// Tests the pane's translation in hosts that have other languages and translators.
class PaneTranslatorTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup();

    void translatesForGermany();
    void translatesForAustria();
    void staysEnglishForOtherLanguages_data();
    void staysEnglishForOtherLanguages();
    void changesNoTextAndNoLocaleOfTheHost();
    void removesItsTranslatorAtItsEnd();

private:
    void loadPaneIn(const QString &language);
    [[nodiscard]] QString startTitle() const
    {
        return mPane->pane->mainView()->findChild<QPushButton *>(QStringLiteral("startButton"))->text();
    }

    std::unique_ptr<PaneFixture> mPane;
};

void PaneTranslatorTest::cleanup()
{
    mPane.reset();
    QLocale::setDefault(QLocale::c());
}

void PaneTranslatorTest::loadPaneIn(const QString &language)
{
    QLocale::setDefault(QLocale(language));
    mPane = std::make_unique<PaneFixture>();
    mPane->load();
}

void PaneTranslatorTest::translatesForGermany()
{
    loadPaneIn(QStringLiteral("de_DE"));
    QCOMPARE(startTitle(), QStringLiteral("&Vorschau starten"));
}

void PaneTranslatorTest::translatesForAustria()
{
    loadPaneIn(QStringLiteral("de_AT"));
    QCOMPARE(startTitle(), QStringLiteral("&Vorschau starten"));
}

void PaneTranslatorTest::staysEnglishForOtherLanguages_data()
{
    QTest::addColumn<QString>("language");
    for (const char *language : {"C", "en_US", "fr_FR", "ja_JP"})
        QTest::newRow(language) << QString::fromLatin1(language);
}

void PaneTranslatorTest::staysEnglishForOtherLanguages()
{
    QFETCH(QString, language);
    loadPaneIn(language);
    QCOMPARE(startTitle(), QStringLiteral("Start &Preview"));
    QVERIFY(!makePaneTranslator(*mPane->bundle));
}

void PaneTranslatorTest::changesNoTextAndNoLocaleOfTheHost()
{
    loadPaneIn(QStringLiteral("de_DE"));
    QCOMPARE(QLocale(), QLocale(QStringLiteral("de_DE")));
    for (const char *context : {"QPlatformTheme", "QDialogButtonBox", "KStandardGuiItem", "QObject"})
        QCOMPARE(QCoreApplication::translate(context, "Cancel"), QStringLiteral("Cancel"));
}

void PaneTranslatorTest::removesItsTranslatorAtItsEnd()
{
    const auto say = [] { return QCoreApplication::translate("PaneView", "Cameras"); };
    loadPaneIn(QStringLiteral("de_DE"));
    QCOMPARE(say(), QStringLiteral("Kameras"));
    mPane.reset();
    QCOMPARE(say(), QStringLiteral("Cameras"));
}

QTEST_MAIN(PaneTranslatorTest)
#include "PaneTranslator_test.moc"
