#include "about/KSHandTextField.h"
#include "tests/about/AboutBoxFixture.h"
#include "tests/about/LabelRuns.h"

#include <QAccessible>
#include <QClipboard>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QWindow>

/// Tests the about box.
class KS7AboutBoxWindowTest : public QObject {
    Q_OBJECT
private:
    [[nodiscard]] KS7AboutBoxWindow *box() const { return fixture->box(); }

    std::unique_ptr<AboutBoxFixture> fixture;

private Q_SLOTS:
    void init() { fixture = std::make_unique<AboutBoxFixture>(); }
    void cleanup() { fixture.reset(); }

    void theAboutBoxShowsVersionAndSite();
    void aMissingVersionIsAQuestionMarkInTheBox();
    void theTitleIsReadOutAtEveryShowing();
    void theMenuShowsOneAboutBox();
    void okAndEscapeCloseTheBox();
    void okHasTheFocusAtEveryShowing();
    void theDiagnosisIsCopied();
    void theBoxSaysThatTheDiagnosisIsCopied();
    void aHostMayDestroyTheWindowUnderTheBox();
};

void KS7AboutBoxWindowTest::theAboutBoxShowsVersionAndSite()
{
    fixture->bundle->info = {{QStringLiteral("CFBundleVersion"), QStringLiteral("2.1.3")}};
    fixture->showAboutBox();
    QCOMPARE(box()->windowTitle(), QStringLiteral("About KS-7"));
    QCOMPARE(box()->version->text(), QStringLiteral("v2.1.3"));
    QCOMPARE(runsOf(box()->website), QList<Run>({link(QStringLiteral(KS7_WEBSITE_HOST))}));
    QVERIFY(box()->website->alignment().testFlag(Qt::AlignHCenter));
}

void KS7AboutBoxWindowTest::aMissingVersionIsAQuestionMarkInTheBox()
{
    fixture->bundle->info = {{QStringLiteral("CFBundleName"), QStringLiteral("KS-7")}};
    fixture->showAboutBox();
    QCOMPARE(box()->version->text(), QStringLiteral("v?"));
}

void KS7AboutBoxWindowTest::theTitleIsReadOutAtEveryShowing()
{
    for (int showing = 0; showing < 2; ++showing) {
        fixture->showAboutBox();
        auto *accessible = QAccessible::queryAccessibleInterface(box());
        QCOMPARE(accessible->text(QAccessible::Name), QStringLiteral("About KS-7"));
        QCOMPARE(box()->windowHandle()->title(), QStringLiteral("About KS-7"));
        box()->close();
    }
}

void KS7AboutBoxWindowTest::theMenuShowsOneAboutBox()
{
    fixture->showAboutBox();
    auto *first = box();
    fixture->showAboutBox();
    QCOMPARE(box(), first);
    QCOMPARE(fixture->window.findChildren<KS7AboutBoxWindow *>().size(), 1);
    QVERIFY(!box()->isModal());
}

void KS7AboutBoxWindowTest::okAndEscapeCloseTheBox()
{
    fixture->showAboutBox();
    QTest::keyClick(box(), Qt::Key_Escape);
    QVERIFY(!box()->isVisible());
    fixture->showAboutBox();
    box()->findChild<QPushButton *>()->click();
    QVERIFY(!box()->isVisible());
    fixture->showAboutBox();
    QVERIFY(box()->isVisible());
}

void KS7AboutBoxWindowTest::okHasTheFocusAtEveryShowing()
{
    for (int showing = 0; showing < 2; ++showing) {
        fixture->showAboutBox();
        QCOMPARE(box()->focusWidget()->objectName(), QStringLiteral("aboutOkayButton"));
        box()->website->setFocus();
        box()->close();
    }
}

void KS7AboutBoxWindowTest::theDiagnosisIsCopied()
{
    fixture->showAboutBox();
    box()->findChild<QPushButton *>(QStringLiteral("aboutCopyButton"))->click();
    const QString copied = QGuiApplication::clipboard()->text();
    QVERIFY2(copied.contains(QStringLiteral("KS-7 preferences")), qPrintable(copied));
}

void KS7AboutBoxWindowTest::theBoxSaysThatTheDiagnosisIsCopied()
{
    for (int showing = 0; showing < 2; ++showing) {
        fixture->showAboutBox();
        const auto *copied = box()->findChild<QLabel *>(QStringLiteral("copiedMessage"));
        QVERIFY(copied && !copied->isVisible());
        box()->findChild<QPushButton *>(QStringLiteral("aboutCopyButton"))->click();
        QVERIFY(copied->isVisible());
        QCOMPARE(copied->text(), QStringLiteral("Copied"));
        box()->close();
    }
}

void KS7AboutBoxWindowTest::aHostMayDestroyTheWindowUnderTheBox()
{
    auto *hostWindow = new QWidget;
    fixture->load();
    fixture->pane->mainView()->setParent(hostWindow);
    hostWindow->show();
    fixture->outlets().pulldownMenu->menu()->actions().constLast()->trigger();
    const QPointer<KS7AboutBoxWindow> shown = hostWindow->findChild<KS7AboutBoxWindow *>();
    QVERIFY(shown);
    // The host must remove the pane's view from its window before it deletes the window. Otherwise Qt would
    // delete the view too.
    fixture->pane->mainView()->setParent(nullptr);
    delete hostWindow;
    QVERIFY(shown);
    fixture.reset();
    QVERIFY(!shown);
}

QTEST_MAIN(KS7AboutBoxWindowTest)
#include "KS7AboutBoxWindow_test.moc"
