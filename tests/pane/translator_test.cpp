#include "pane/PaneTranslator.h"
#include "tests/support/PaneFixture.h"

#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTest>
#include <QTranslator>

/// The pane inside hosts of several languages.
class TranslatorTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup();

    void speaksGermanToAGerman();
    void speaksGermanToAnAustrian();
    void speaksEnglishToEverybodyElse_data();
    void speaksEnglishToEverybodyElse();
    void changesNoTextAndNoLocaleOfTheHost();
    void takesItsWordsAlongWhenItGoes();

private:
    void loadPaneIn(const QString &language);
    [[nodiscard]] QString startTitle() const
    {
        return mPane->pane->mainView()->findChild<QPushButton *>(QStringLiteral("startButton"))->text();
    }

    std::unique_ptr<PaneFixture> mPane;
};

void TranslatorTest::cleanup()
{
    mPane.reset();
    QLocale::setDefault(QLocale::c());
}

void TranslatorTest::loadPaneIn(const QString &language)
{
    QLocale::setDefault(QLocale(language));
    mPane = std::make_unique<PaneFixture>();
    mPane->load();
}

void TranslatorTest::speaksGermanToAGerman()
{
    loadPaneIn(QStringLiteral("de_DE"));
    QCOMPARE(startTitle(), QStringLiteral("Vorschau starten"));
}

void TranslatorTest::speaksGermanToAnAustrian()
{
    loadPaneIn(QStringLiteral("de_AT"));
    QCOMPARE(startTitle(), QStringLiteral("Vorschau starten"));
}

void TranslatorTest::speaksEnglishToEverybodyElse_data()
{
    QTest::addColumn<QString>("language");
    for (const char *language : {"C", "en_US", "fr_FR", "ja_JP"})
        QTest::newRow(language) << QString::fromLatin1(language);
}

void TranslatorTest::speaksEnglishToEverybodyElse()
{
    QFETCH(QString, language);
    loadPaneIn(language);
    QCOMPARE(startTitle(), QStringLiteral("Start Preview"));
    QVERIFY(!makePaneTranslator(*mPane->bundle));
}

void TranslatorTest::changesNoTextAndNoLocaleOfTheHost()
{
    loadPaneIn(QStringLiteral("de_DE"));
    QCOMPARE(QLocale(), QLocale(QStringLiteral("de_DE")));
    for (const char *context : {"QPlatformTheme", "QDialogButtonBox", "KStandardGuiItem", "QObject"})
        QCOMPARE(QCoreApplication::translate(context, "Cancel"), QStringLiteral("Cancel"));
}

void TranslatorTest::takesItsWordsAlongWhenItGoes()
{
    const auto say = [] { return QCoreApplication::translate("PaneView", "Cameras"); };
    loadPaneIn(QStringLiteral("de_DE"));
    QCOMPARE(say(), QStringLiteral("Kameras"));
    mPane.reset();
    QCOMPARE(say(), QStringLiteral("Cameras"));
}

QTEST_MAIN(TranslatorTest)
#include "translator_test.moc"
