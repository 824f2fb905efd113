#include "about/KSUpdater.h"
#include "tests/support/ActiveWindow.h"
#include "tests/support/PaneFixture.h"
#include "tests/support/Timeout.h"

#include <QAccessible>
#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include <type_traits>

using platform::UpdateOffer;

/// Tests the strip that the pane's window shows when the updater has an offer.
class UpdateStripTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void everyShowingStartsTheUpdater();
    void theFrameworkMakesTheUpdaterForThePanesBundle();
    void theUpdaterDerivesFromTheFrameworksUpdater();
    void nothingIsShownWithoutAnOffer();
    void theOfferStandsAboveThePane();
    void theOfferMovesThePaneDown();
    void choicesReachTheUpdater();
    void progressIsShownWhileInstalling();
    void theResultIsShownPlainly();
    void theReasonOfAFailureIsPlainText();
    void theOfferIsFirstInTheTabOrder();
    void theOfferNeverTakesTheFocus();
    void theOfferIsAnsweredWithTheKeyboard();
    void theOfferIsAnsweredThroughTheAccessibilityTree();
    void aNarrowStripShowsAllItsText_data();
    void aNarrowStripShowsAllItsText();

private:
    void openIn(const QString &language);
    void say(const QString &stage);
    [[nodiscard]] QString whatIsClipped();
    template <class Widget = QPushButton>
    Widget *strip(const char *name);
    [[nodiscard]] QString message() { return strip<QLabel>("updateMessage")->text(); }
    UpdateOffer &offer() { return mPane->updates->offer(); }

    std::unique_ptr<PaneFixture> mPane;
};

void UpdateStripTest::init()
{
    openIn(QStringLiteral("C"));
}

void UpdateStripTest::openIn(const QString &language)
{
    mPane.reset();
    QLocale::setDefault(QLocale(language));
    mPane = std::make_unique<PaneFixture>();
    mPane->show();
    QVERIFY(QTest::qWaitForWindowExposed(&mPane->window, Timeout));
}

void UpdateStripTest::cleanup()
{
    mPane.reset();
    QLocale::setDefault(QLocale::c());
}

template <class Widget>
Widget *UpdateStripTest::strip(const char *name)
{
    return mPane->window.findChild<Widget *>(QLatin1String(name));
}

void UpdateStripTest::everyShowingStartsTheUpdater()
{
    mPane->takeJournal();
    mPane->hide();
    mPane->show();
    QCOMPARE(mPane->takeJournal(QStringLiteral("updater ")),
             QStringList({QStringLiteral("shared"), QStringLiteral("started")}));
}

void UpdateStripTest::theFrameworkMakesTheUpdaterForThePanesBundle()
{
    mPane->takeJournal();
    KSUpdater::sharedUpdater(*mPane->updates, mPane->bundle);
    KSUpdater::init(*mPane->updates, mPane->bundle);
    QCOMPARE(mPane->takeJournal(QStringLiteral("updater ")),
             QStringList({QStringLiteral("shared"), QStringLiteral("made")}));
    // Three requests for an updater are expected: one from showing the pane and two from this test.
    QCOMPARE(mPane->updates->bundles.size(), std::size_t(3));
    for (const auto &bundle : mPane->updates->bundles)
        QCOMPARE(bundle, std::shared_ptr<platform::Bundle>(mPane->bundle));
}

void UpdateStripTest::theUpdaterDerivesFromTheFrameworksUpdater()
{
    static_assert(std::is_base_of_v<KS7SUUpdater, KSUpdater>);
    const std::shared_ptr<KS7SUUpdater> shared = KSUpdater::sharedUpdater(*mPane->updates, mPane->bundle);
    const std::shared_ptr<KS7SUUpdater> made = KSUpdater::init(*mPane->updates, mPane->bundle);
    mPane->takeJournal();
    shared->applicationDidFinishLaunching();
    made->applicationDidFinishLaunching();
    const auto started = QStringLiteral("updater started");
    QCOMPARE(mPane->takeJournal(), QStringList({started, started}));
}

void UpdateStripTest::nothingIsShownWithoutAnOffer()
{
    QVERIFY(strip<QFrame>("updateStrip")->isHidden());
}

void UpdateStripTest::theOfferStandsAboveThePane()
{
    offer().offer(QStringLiteral("2.0-1"));
    QTRY_VERIFY_WITH_TIMEOUT(strip<QFrame>("updateStrip")->height() > 0, Timeout);
    QVERIFY(strip<QFrame>("updateStrip")->isVisible());
    QCOMPARE(message(), QStringLiteral("Version 2.0-1 of the KS-7 settings is available."));
    QCOMPARE(strip("updateInstall")->text(), QStringLiteral("&Install"));
    QCOMPARE(strip("updateLater")->text(), QStringLiteral("&Later"));
    QCOMPARE(strip("updateSkip")->text(), QStringLiteral("S&kip This Version"));
    QVERIFY(strip("updateInstall")->isVisible());
    QVERIFY(strip<QProgressBar>("updateProgress")->isHidden());
}

void UpdateStripTest::theOfferMovesThePaneDown()
{
    auto *checkbox = mPane->window.findChild<QWidget *>(QStringLiteral("enableKS7Checkbox"));
    auto *frame = strip<QFrame>("updateStrip");
    const auto top = [&] { return checkbox->mapTo(&mPane->window, QPoint()).y(); };
    const int before = top();
    offer().offer(QStringLiteral("2.0"));
    QTRY_VERIFY_WITH_TIMEOUT(top() >= frame->mapTo(&mPane->window, frame->rect().bottomLeft()).y(), Timeout);
    Q_EMIT offer().laterChosen();
    offer().withdraw();
    QTRY_COMPARE_WITH_TIMEOUT(top(), before, Timeout);
}

void UpdateStripTest::choicesReachTheUpdater()
{
    QSignalSpy install(&offer(), &UpdateOffer::installChosen);
    QSignalSpy later(&offer(), &UpdateOffer::laterChosen);
    QSignalSpy skip(&offer(), &UpdateOffer::skipChosen);
    offer().offer(QStringLiteral("2.0"));
    QTest::mouseClick(strip("updateInstall"), Qt::LeftButton);
    QTest::mouseClick(strip("updateLater"), Qt::LeftButton);
    QTest::mouseClick(strip("updateSkip"), Qt::LeftButton);
    QCOMPARE(install.size(), 1);
    QCOMPARE(later.size(), 1);
    QCOMPARE(skip.size(), 1);
}

void UpdateStripTest::progressIsShownWhileInstalling()
{
    offer().offer(QStringLiteral("2.0"));
    offer().progress(UpdateOffer::UnknownPercentage);
    auto *bar = strip<QProgressBar>("updateProgress");
    QVERIFY(bar->isVisible());
    QCOMPARE(bar->maximum(), 0);
    offer().progress(40);
    QCOMPARE(bar->maximum(), 100);
    QCOMPARE(bar->value(), 40);
    offer().progress(101);
    QCOMPARE(bar->maximum(), 0);
    QVERIFY(!strip("updateInstall")->isVisible());
    QCOMPARE(message(), QStringLiteral("Installing version 2.0…"));
}

void UpdateStripTest::theResultIsShownPlainly()
{
    offer().offer(QStringLiteral("2.0"));
    offer().progress(99);
    offer().succeed();
    QCOMPARE(message(), QStringLiteral("Version 2.0 is installed. Restart this application to use it."));
    QVERIFY(strip("updateDismiss")->isVisible());
    QSignalSpy later(&offer(), &UpdateOffer::laterChosen);
    QTest::mouseClick(strip("updateDismiss"), Qt::LeftButton);
    QCOMPARE(later.size(), 1);
}

void UpdateStripTest::theReasonOfAFailureIsPlainText()
{
    offer().offer(QStringLiteral("2.0"));
    offer().fail(QStringLiteral("No <b>network</b>"));
    QCOMPARE(message(), QStringLiteral("Version 2.0 could not be installed. No <b>network</b>"));
    QCOMPARE(strip<QLabel>("updateMessage")->textFormat(), Qt::PlainText);
    offer().fail({});
    QCOMPARE(message(), QStringLiteral("Version 2.0 could not be installed."));
    QVERIFY(strip("updateDismiss")->isVisible());
}

void UpdateStripTest::theOfferIsFirstInTheTabOrder()
{
    offer().offer(QStringLiteral("2.0"));
    strip("updateSkip")->setFocus();
    QTRY_VERIFY_WITH_TIMEOUT(strip("updateSkip")->hasFocus(), Timeout);
    QTest::keyClick(strip("updateSkip"), Qt::Key_Tab);
    QVERIFY(mPane->window.focusWidget());
    QCOMPARE(mPane->window.focusWidget()->objectName(), QStringLiteral("enableKS7Checkbox"));
}

void UpdateStripTest::theOfferNeverTakesTheFocus()
{
    QWidget *before = mPane->window.focusWidget();
    offer().offer(QStringLiteral("2.0"));
    QCOMPARE(mPane->window.focusWidget(), before);
}

void UpdateStripTest::theOfferIsAnsweredWithTheKeyboard()
{
    QSignalSpy install(&offer(), &UpdateOffer::installChosen);
    QSignalSpy later(&offer(), &UpdateOffer::laterChosen);
    offer().offer(QStringLiteral("2.0"));
    makeActive(&mPane->window);
    auto *first = mPane->window.findChild<QWidget *>(QStringLiteral("enableKS7Checkbox"));
    first->setFocus();
    for (const char *button : {"updateSkip", "updateLater", "updateInstall"}) {
        QTest::keyClick(mPane->window.focusWidget(), Qt::Key_Tab, Qt::ShiftModifier);
        QVERIFY2(strip(button)->hasFocus(), button);
    }
    QTest::keyClick(strip("updateInstall"), Qt::Key_Space);
    QCOMPARE(install.size(), 1);
    offer().succeed();
    strip("updateDismiss")->setFocus();
    QTest::keyClick(strip("updateDismiss"), Qt::Key_Space);
    QCOMPARE(later.size(), 1);
}

void UpdateStripTest::theOfferIsAnsweredThroughTheAccessibilityTree()
{
    QSignalSpy install(&offer(), &UpdateOffer::installChosen);
    offer().offer(QStringLiteral("2.0"));
    auto *frame = QAccessible::queryAccessibleInterface(strip<QFrame>("updateStrip"));
    QCOMPARE(frame->text(QAccessible::Name), message());
    auto *button = QAccessible::queryAccessibleInterface(strip("updateInstall"));
    QCOMPARE(button->text(QAccessible::Name), QStringLiteral("Install"));
    button->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QTRY_COMPARE_WITH_TIMEOUT(install.size(), 1, Timeout);
}

void UpdateStripTest::say(const QString &stage)
{
    offer().offer(QStringLiteral("12.34.56-7"));
    if (stage == QLatin1String("installing"))
        offer().progress(40);
    else if (stage == QLatin1String("installed"))
        offer().succeed();
    else if (stage == QLatin1String("failed"))
        offer().fail(QStringLiteral("Die Paketquelle ist nicht erreichbar."));
}

/// Returns the name of the first widget that is too small for its text or extends beyond the strip. Empty if
/// no widget is clipped.
QString UpdateStripTest::whatIsClipped()
{
    const auto *frame = strip<QFrame>("updateStrip");
    for (auto *part : frame->findChildren<QWidget *>()) {
        if (!part->isVisible() || part->objectName().isEmpty())
            continue;
        const QRect place(part->mapTo(frame, QPoint()), part->size());
        const int height = part->hasHeightForWidth() ? part->heightForWidth(part->width())
                                                     : part->minimumSizeHint().height();
        if (!frame->rect().contains(place) || part->width() < part->minimumSizeHint().width()
            || part->height() < height)
            return part->objectName();
    }
    return {};
}

void UpdateStripTest::aNarrowStripShowsAllItsText_data()
{
    QTest::addColumn<QString>("stage");
    for (const char *stage : {"offered", "installing", "installed", "failed"})
        QTest::newRow(stage) << QString::fromLatin1(stage);
}

void UpdateStripTest::aNarrowStripShowsAllItsText()
{
    constexpr int NarrowWindow = 400;
    QFETCH(QString, stage);
    openIn(QStringLiteral("de_DE"));
    say(stage);
    QCOMPARE(strip("updateInstall")->text(), QStringLiteral("&Installieren"));
    mPane->window.resize(NarrowWindow, mPane->window.height());
    QTRY_COMPARE_WITH_TIMEOUT(mPane->window.width(), NarrowWindow, Timeout);
    QTRY_COMPARE_WITH_TIMEOUT(whatIsClipped(), QString(), Timeout);
}

QTEST_MAIN(UpdateStripTest)
#include "UpdateStrip_test.moc"
