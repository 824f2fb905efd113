#include "hosts/PaneOnScreen.h"
#include "tests/hosts/RecordingPane.h"
#include "tests/support/Timeout.h"

#include <QTest>

#include <memory>

namespace {

const QStringList Shown{QStringLiteral("willSelect")};
const QStringList ShownAndHidden{QStringLiteral("willSelect"), QStringLiteral("didUnselect")};

/// A stand-in for the module that System Settings creates each time the user selects it.
class Module : public QWidget {
public:
    explicit Module(RecordingPane &pane)
        : mOnScreen(&pane, this)
    {
    }

private:
    PaneOnScreen mOnScreen;
};

} // namespace

class PaneOnScreenTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void thePaneIsNotifiedOnceWhenShown();
    void thePaneIsNotifiedOnceWhenHidden();
    void aShowThatIsUndoneAtOnceIsNotReported();
    void showingInAHiddenWindowIsNotReported();
    void anIconifiedWindowStillShowsThePane();
    void theViewOutlivesTheModule();
    void theViewOutlivesAParentDestroyedBeforeItsModule();
    void aLaterModuleKeepsTheView();
    void theEndOfAnOlderModuleKeepsTheNewerOneConnected_data();
    void theEndOfAnOlderModuleKeepsTheNewerOneConnected();
    void anOlderModuleThatIsShownAgainGetsTheView();
    void tenModulesAreCreatedAndDestroyed();
    void quittingWhileShownHidesThePane();

private:
    void openModule() { open(*mModule, Shown); }
    void open(QWidget &module, const QStringList &told);
    void settle() { QCoreApplication::processEvents(); }

    std::unique_ptr<RecordingPane> mPane;
    std::unique_ptr<Module> mModule;
};

void PaneOnScreenTest::init()
{
    mModule.reset();
    mPane = std::make_unique<RecordingPane>();
    mModule = std::make_unique<Module>(*mPane);
}

void PaneOnScreenTest::open(QWidget &module, const QStringList &told)
{
    module.show();
    QVERIFY(QTest::qWaitForWindowExposed(&module, Timeout));
    QTRY_COMPARE_WITH_TIMEOUT(mPane->told, told, Timeout);
}

void PaneOnScreenTest::thePaneIsNotifiedOnceWhenShown()
{
    openModule();
    mModule->show();
    settle();
    QCOMPARE(mPane->told, Shown);
    QVERIFY(mPane->view.isVisible());
}

void PaneOnScreenTest::thePaneIsNotifiedOnceWhenHidden()
{
    openModule();
    mModule->hide();
    mModule->hide();
    QCOMPARE(mPane->told, ShownAndHidden);
    mModule.reset();
    QCOMPARE(mPane->told, ShownAndHidden);
}

void PaneOnScreenTest::aShowThatIsUndoneAtOnceIsNotReported()
{
    mModule->show();
    mModule->hide();
    settle();
    QCOMPARE(mPane->told, QStringList());
}

void PaneOnScreenTest::showingInAHiddenWindowIsNotReported()
{
    QWidget window;
    mModule->setParent(&window);
    mModule->show();
    settle();
    QCOMPARE(mPane->told, QStringList());
    window.show();
    QTRY_COMPARE_WITH_TIMEOUT(mPane->told, Shown, Timeout);
    mModule.reset();
}

void PaneOnScreenTest::anIconifiedWindowStillShowsThePane()
{
    openModule();
    mModule->showMinimized();
    QTRY_VERIFY_WITH_TIMEOUT(!mModule->windowHandle()->isExposed(), Timeout);
    mModule->showNormal();
    QVERIFY(QTest::qWaitForWindowExposed(mModule.get(), Timeout));
    settle();
    QCOMPARE(mPane->told, Shown);
}

void PaneOnScreenTest::theViewOutlivesTheModule()
{
    openModule();
    mModule.reset();
    QCOMPARE(mPane->told, ShownAndHidden);
    QVERIFY(!mPane->view.parentWidget());
    QCOMPARE(mPane->view.text(), QStringLiteral("the pane"));
}

void PaneOnScreenTest::theViewOutlivesAParentDestroyedBeforeItsModule()
{
    auto place = std::make_unique<QWidget>();
    PaneOnScreen onScreen(mPane.get(), place.get());
    open(*place, Shown);
    place.reset();
    QCOMPARE(mPane->told, ShownAndHidden);
    QVERIFY(!mPane->view.parentWidget());
}

void PaneOnScreenTest::aLaterModuleKeepsTheView()
{
    Module later(*mPane);
    mModule.reset();
    QCOMPARE(mPane->view.parentWidget(), &later);
}

void PaneOnScreenTest::theEndOfAnOlderModuleKeepsTheNewerOneConnected_data()
{
    QTest::addColumn<bool>("isDestroyed");
    QTest::newRow("hidden") << false;
    QTest::newRow("destroyed") << true;
}

void PaneOnScreenTest::theEndOfAnOlderModuleKeepsTheNewerOneConnected()
{
    QFETCH(bool, isDestroyed);
    openModule();
    Module newer(*mPane);
    QCOMPARE(mPane->told, ShownAndHidden);
    open(newer, ShownAndHidden + Shown);
    mModule->hide();
    if (isDestroyed)
        mModule.reset();
    QCOMPARE(mPane->told, ShownAndHidden + Shown);
    QCOMPARE(mPane->view.parentWidget(), &newer);
    newer.hide();
    QCOMPARE(mPane->told, ShownAndHidden + ShownAndHidden);
}

void PaneOnScreenTest::anOlderModuleThatIsShownAgainGetsTheView()
{
    Module newer(*mPane);
    open(newer, Shown);
    open(*mModule, ShownAndHidden + Shown);
    QCOMPARE(mPane->view.parentWidget(), mModule.get());
    QVERIFY(mPane->view.isVisible());
    newer.hide();
    QCOMPARE(mPane->told, ShownAndHidden + Shown);
}

void PaneOnScreenTest::tenModulesAreCreatedAndDestroyed()
{
    for (int time = 0; time < 10; ++time) {
        openModule();
        mModule.reset();
        QCOMPARE(mPane->told, ShownAndHidden);
        mPane->told.clear();
        mModule = std::make_unique<Module>(*mPane);
    }
}

void PaneOnScreenTest::quittingWhileShownHidesThePane()
{
    openModule();
    QTimer::singleShot(0, qApp, &QCoreApplication::quit);
    QCoreApplication::exec();
    QCOMPARE(mPane->told, ShownAndHidden);
    mModule.reset();
    QCOMPARE(mPane->told, ShownAndHidden);
}

QTEST_MAIN(PaneOnScreenTest)

#include "PaneOnScreen_test.moc"
