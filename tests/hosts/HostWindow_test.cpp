#include "hosts/standalone/HostWindow.h"
#include "hosts/standalone/PrefPanesManager.h"
#include "platform/QtCompat.h"
#include "platform/desktop/HostClasses.h"
#include "tests/hosts/RecordingPane.h"
#include "tests/support/Timeout.h"

#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QToolButton>

#include <memory>

class HostWindowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void opensOnThePane();
    void showAllOpensTheOverviewAndItsIconThePane();
    void thePaneCanShowTheOverview();
    void closingTheWindowHidesThePane();
    void isAtLeastAsLargeAsItsContents();
    void scrollsContentsThatExceedTheScreen();
    void opensSmallerThanTheScreen();

private:
    [[nodiscard]] QAbstractButton *button(const char *name) const
    {
        return mWindow->findChild<QAbstractButton *>(QLatin1String(name));
    }
    void click(const char *name) { QTest::mouseClick(button(name), Qt::LeftButton); }

    std::unique_ptr<RecordingPane> mPane;
    std::unique_ptr<HostWindow> mWindow;
    std::unique_ptr<PrefPanesManager> mManager;
};

void HostWindowTest::init()
{
    mPane = std::make_unique<RecordingPane>();
    mWindow = std::make_unique<HostWindow>(mPane.get());
    mManager = std::make_unique<PrefPanesManager>([this] { mWindow->showOverview(); });
    mWindow->show();
    QTRY_COMPARE_WITH_TIMEOUT(mPane->told, QStringList{QStringLiteral("willSelect")}, Timeout);
    mPane->told.clear();
}

void HostWindowTest::cleanup()
{
    mManager.reset();
    mWindow.reset();
    mPane.reset();
}

void HostWindowTest::opensOnThePane()
{
    QVERIFY(mPane->view.isVisible());
    QVERIFY(!button("paneIcon")->isVisible());
    QCOMPARE(mWindow->windowTitle(), QStringLiteral("KS-7"));
    QVERIFY(button("showAllButton")->isEnabled());
}

void HostWindowTest::showAllOpensTheOverviewAndItsIconThePane()
{
    click("showAllButton");
    QCOMPARE(mPane->told, QStringList{QStringLiteral("didUnselect")});
    QVERIFY(!mPane->view.isVisible());
    QCOMPARE(mWindow->windowTitle(), QStringLiteral("All Preferences"));
    QCOMPARE(button("paneIcon")->text(), QStringLiteral("KS-7"));
    const QIcon drawing(QStringLiteral(":/host/ks7-preferences.svg"));
    QVERIFY(!drawing.pixmap(64).isNull());
    for (const qreal scale : {1.0, 2.0})
        QCOMPARE(platform::pixmapOf(button("paneIcon")->icon(), {64, 64}, scale).toImage(),
                 platform::pixmapOf(drawing, {64, 64}, scale).toImage());
    QVERIFY(!button("showAllButton")->isEnabled());

    mPane->told.clear();
    click("paneIcon");
    QTRY_COMPARE_WITH_TIMEOUT(mPane->told, QStringList{QStringLiteral("willSelect")}, Timeout);
    QVERIFY(mPane->view.isVisible());
    QCOMPARE(mWindow->windowTitle(), QStringLiteral("KS-7"));
}

void HostWindowTest::thePaneCanShowTheOverview()
{
    const auto classes = platform::makeHostClasses();
    QVERIFY(!classes->classNamed(QStringLiteral("NSOtherManager")) && !classes->classNamed({}));
    QObject *found = classes->classNamed(QStringLiteral("NSPrefPanesManager"));
    QVERIFY(found);
    QObject *manager = nullptr;
    QVERIFY(QMetaObject::invokeMethod(found, "prefPanesManager", Q_RETURN_ARG(QObject *, manager)));
    QVERIFY(manager);
    QVERIFY(QMetaObject::invokeMethod(manager, "showAll", Q_ARG(QObject *, nullptr)));
    QVERIFY(button("paneIcon")->isVisible());
    QCOMPARE(mPane->told, QStringList{QStringLiteral("didUnselect")});
}

void HostWindowTest::closingTheWindowHidesThePane()
{
    QVERIFY(mWindow->close());
    QCOMPARE(mPane->told, QStringList{QStringLiteral("didUnselect")});
}

void HostWindowTest::isAtLeastAsLargeAsItsContents()
{
    mPane->view.setMinimumSize(700, 300);
    QTRY_VERIFY_WITH_TIMEOUT(mWindow->width() >= 700, Timeout);
    mWindow->resize(10, 10);
    QVERIFY(mWindow->width() >= 700);
    QVERIFY(mWindow->height() >= 300);
}

void HostWindowTest::scrollsContentsThatExceedTheScreen()
{
    mPane->view.setMinimumSize(3000, 3000);
    auto *area = mWindow->findChild<QScrollArea *>();
    QTRY_VERIFY_WITH_TIMEOUT(area->verticalScrollBar()->maximum() > 0, Timeout);
    QVERIFY(area->horizontalScrollBar()->maximum() > 0);
    const QSize screen = mWindow->screen()->availableSize();
    QVERIFY(mWindow->minimumSizeHint().width() <= screen.width());
    QVERIFY(mWindow->minimumSizeHint().height() <= screen.height());
}

void HostWindowTest::opensSmallerThanTheScreen()
{
    mPane->view.setMinimumSize(3000, 3000);
    const QSize screen = mWindow->screen()->availableSize();
    QTRY_VERIFY_WITH_TIMEOUT(mWindow->sizeHint().width() < screen.width(), Timeout);
    QVERIFY2(mWindow->sizeHint().height() < screen.height(), "the title bar needs room");
}

QTEST_MAIN(HostWindowTest)

#include "HostWindow_test.moc"
