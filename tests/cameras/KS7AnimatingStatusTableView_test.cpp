#include "agent/NotificationNames.h"
#include "cameras/CameraTableModel.h"
#include "cameras/KS7AnimatingStatusTableView.h"
#include "tests/support/PaintWatch.h"
#include "tests/support/PaneFixture.h"
#include "tests/support/Timeout.h"

#include <QApplication>
#include <QHeaderView>
#include <QImage>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStyledItemDelegate>
#include <QTest>

#include <cmath>

using namespace std::chrono_literals;
namespace Names = NotificationNames;

namespace {

const QColor Black(0, 0, 0);
const QColor DarkGray(85, 85, 85);
const QColor White(255, 255, 255);

/// The text colours of a row's two lines.
struct RowInk {
    QColor name;
    QColor status;
};

/// The colour in the area that differs most from the background. Thick parts of a text have the text's own
/// colour.
QColor inkWithin(const QImage &image, const QRect &area, const QColor &ground)
{
    const auto distance = [&ground](const QColor &color) {
        return std::abs(qGray(color.rgb()) - qGray(ground.rgb()));
    };
    QColor ink = ground;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            if (distance(image.pixelColor(x, y)) > distance(ink))
                ink = image.pixelColor(x, y);
        }
    }
    return ink;
}

/// Returns whether two colours are about equally bright. Thin text is blended with the background, so it may
/// have no pixel of the exact colour.
bool isAbout(const QColor &color, const QColor &expected)
{
    return std::abs(qGray(color.rgb()) - qGray(expected.rgb())) <= 24;
}

} // namespace

/// Tests clicks, keys, rows, colours and the animation of the camera table.
class KS7AnimatingStatusTableViewTest : public QObject {
    Q_OBJECT

    std::unique_ptr<PaneFixture> mFixture;
    QStringList mActions;

    FakeAgent &agent() { return mFixture->agent; }
    KS7SettingsWindowController &controller() { return mFixture->controller(); }
    KS7AnimatingStatusTableView &table() { return *mFixture->outlets().cameraListTable; }

    static QString address(int row) { return QStringLiteral("address %1").arg(row, 5, 10, QLatin1Char('0')); }

    void showCameras(int count, int status = 1)
    {
        for (int row = 0; row < count; ++row)
            agent().addCamera(address(row), QStringLiteral("Camera %1").arg(row), status);
        mFixture->show();
        mFixture->runLoop->turn();
        QVERIFY(QTest::qWaitForWindowExposed(&mFixture->window, Timeout));
        mFixture->takeJournal();
    }

    /// Makes the table record its actions instead of sending them to the controller.
    void recordActions()
    {
        mActions.clear();
        const auto recorder = [this](const QString &name) {
            return [this, name](QObject *sender) {
                QCOMPARE(sender, static_cast<QObject *>(&table()));
                mActions.append(QStringLiteral("%1 %2 %3")
                                    .arg(name)
                                    .arg(table().clickedRow())
                                    .arg(table().selectedRow()));
            };
        };
        table().setAction(recorder(QStringLiteral("click")));
        table().setDoubleAction(recorder(QStringLiteral("double")));
    }

    QPoint spotInRow(int row) { return table().visualRect(table().model()->index(row, 0)).center(); }
    void press(int row) { QTest::mousePress(table().viewport(), Qt::LeftButton, {}, spotInRow(row)); }
    void release(int row) { QTest::mouseRelease(table().viewport(), Qt::LeftButton, {}, spotInRow(row)); }
    void clickRow(int row)
    {
        press(row);
        release(row);
    }

    /// Renders at twice the resolution. Some pixels then lie completely inside the text and have its exact
    /// colour.
    RowInk inkOfRow(int row)
    {
        constexpr int Scale = 2;
        QImage image(table().viewport()->size() * Scale, QImage::Format_RGB32);
        image.setDevicePixelRatio(Scale);
        table().viewport()->render(&image);
        const QRect cell = table().visualRect(table().model()->index(row, 0));
        const auto area = [&cell](const QRect &part) {
            return QRect((cell.topLeft() + part.topLeft()) * Scale, part.size() * Scale);
        };
        const QColor ground = image.pixelColor((cell.topRight() + QPoint(-4, 4)) * Scale);
        return {inkWithin(image, area({3, 3, 100, 15}), ground),
                inkWithin(image, area({13, 19, 100, 13}), ground)};
    }

    void statusBecomes(int row, int status)
    {
        agent().addCamera(address(row), QStringLiteral("Camera %1").arg(row), status);
        mFixture->agentPosts(Names::CameraListChanged);
    }

private Q_SLOTS:
    void init() { mFixture = std::make_unique<PaneFixture>(); }
    void cleanup() { mFixture.reset(); }

    // Clicks

    void aClickSelectsTheRowAndSendsTheAction()
    {
        showCameras(3);
        recordActions();
        clickRow(1);
        QCOMPARE(mActions, QStringList{QStringLiteral("click 1 1")});
        QCOMPARE(table().clickedRow(), -1);
    }

    void aClickOnTheSelectedRowSendsTheActionAgain()
    {
        showCameras(3);
        recordActions();
        clickRow(1);
        clickRow(1);
        QCOMPARE(mActions.size(), 2);
        QCOMPARE(table().selectedRow(), 1);
    }

    void pressingOneRowAndReleasingOnAnotherIsNoClick()
    {
        showCameras(3);
        recordActions();
        press(0);
        QTest::mouseMove(table().viewport(), spotInRow(2));
        release(2);
        QVERIFY(mActions.isEmpty());
        QCOMPARE(table().selectedRow(), -1);
        release(2);
        QVERIFY(mActions.isEmpty());
    }

    void aClickKeepsItsRowIfTheListChangesMeanwhile()
    {
        showCameras(3);
        recordActions();
        press(2);
        agent().prefer(address(0));
        mFixture->agentPosts(Names::PreferredCameraChanged);
        release(2);
        QCOMPARE(mActions, QStringList{QStringLiteral("click 2 2")});
    }

    void emptySpaceTakesNoClick()
    {
        showCameras(1);
        table().selectRow(0);
        recordActions();
        const QPoint below(20, table().viewport()->height() - 4);
        QCOMPARE(table().rowAt(below.y()), -1);
        QTest::mouseClick(table().viewport(), Qt::LeftButton, {}, below);
        QTest::mouseDClick(table().viewport(), Qt::LeftButton, {}, below);
        QVERIFY(mActions.isEmpty());
        QCOMPARE(table().selectedRow(), 0);
    }

    void onlyTheLeftButtonClicks()
    {
        showCameras(3);
        recordActions();
        QTest::mouseClick(table().viewport(), Qt::RightButton, {}, spotInRow(1));
        QTest::mouseClick(table().viewport(), Qt::MiddleButton, {}, spotInRow(1));
        QVERIFY(mActions.isEmpty());
        QCOMPARE(table().selectedRow(), -1);
    }

    void aDoubleClickIsOneClickAndOneDoubleAction()
    {
        showCameras(3);
        recordActions();
        clickRow(1);
        QMouseEvent second(QEvent::MouseButtonDblClick, spotInRow(1),
                           table().viewport()->mapToGlobal(spotInRow(1)), Qt::LeftButton, Qt::LeftButton,
                           Qt::NoModifier);
        QCoreApplication::sendEvent(table().viewport(), &second);
        release(1);
        QCOMPARE(mActions, QStringList({QStringLiteral("click 1 1"), QStringLiteral("double 1 1")}));
    }

    void modifiersNeitherDeselectNorExtend()
    {
        showCameras(3);
        recordActions();
        clickRow(1);
        QTest::mouseClick(table().viewport(), Qt::LeftButton, Qt::ControlModifier, spotInRow(1));
        QCOMPARE(table().selectedRow(), 1);
        QTest::mouseClick(table().viewport(), Qt::LeftButton, Qt::ShiftModifier, spotInRow(2));
        QCOMPARE(table().selectionModel()->selectedRows().size(), 1);
        QCOMPARE(table().selectedRow(), 2);
    }

    void noClickClearsARequiredSelection()
    {
        showCameras(3);
        recordActions();
        QVERIFY(!table().allowsEmptySelection());
        const QPoint below(20, table().viewport()->height() - 4);
        for (int modifiers = 0; modifiers < 16; ++modifiers) {
            const auto held = Qt::KeyboardModifiers(modifiers << 25);
            for (const auto button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
                table().selectRow(1);
                QTest::mouseClick(table().viewport(), button, held, spotInRow(1));
                QTest::mouseClick(table().viewport(), button, held, below);
                QCOMPARE(table().selectedRow(), 1);
            }
        }
        table().deselectAll();
        QCOMPARE(table().selectedRow(), 1);
        table().setAllowsEmptySelection(true);
        table().deselectAll();
        QCOMPARE(table().selectedRow(), -1);
    }

    void aDisabledTableTakesNoClicks()
    {
        showCameras(3);
        recordActions();
        table().setEnabled(false);
        clickRow(1);
        table().clickRow(1);
        QVERIFY(mActions.isEmpty());
        QCOMPARE(table().selectedRow(), -1);
    }

    void clickRowIgnoresRowsThatDoNotExist()
    {
        showCameras(3);
        recordActions();
        table().clickRow(-1);
        table().clickRow(3);
        QVERIFY(mActions.isEmpty());
        table().clickRow(2);
        QCOMPARE(mActions, QStringList{QStringLiteral("click 2 2")});
    }

    // Keys

    void everyKeyIsConsumed_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        for (const auto modifier :
             {Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier, Qt::MetaModifier})
            for (const auto key :
                 {Qt::Key_Down, Qt::Key_Up, Qt::Key_Home, Qt::Key_End, Qt::Key_PageDown, Qt::Key_A, Qt::Key_C,
                  Qt::Key_Space, Qt::Key_Return, Qt::Key_Escape, Qt::Key_Delete, Qt::Key_F2})
                QTest::addRow("%x with %x", unsigned(key), unsigned(modifier)) << int(key) << int(modifier);
    }
    void everyKeyIsConsumed()
    {
        QFETCH(int, key);
        QFETCH(int, modifiers);
        showCameras(60);
        table().selectRow(1);
        recordActions();
        table().setFocus();
        const int scrolled = table().verticalScrollBar()->value();
        QKeyEvent event(QEvent::KeyPress, key, Qt::KeyboardModifiers(modifiers));
        QCoreApplication::sendEvent(&table(), &event);
        QVERIFY(event.isAccepted());
        QCOMPARE(table().selectedRow(), 1);
        QCOMPARE(table().verticalScrollBar()->value(), scrolled);
        QVERIFY(mActions.isEmpty());
        QVERIFY(mFixture->takeRemoteCalls().isEmpty());
    }

    void tabLeavesTheTableBothWays()
    {
        showCameras(3);
        mFixture->window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&mFixture->window, Timeout));
        for (const auto key : {Qt::Key_Tab, Qt::Key_Backtab}) {
            table().setFocus();
            QTRY_VERIFY_WITH_TIMEOUT(table().hasFocus(), Timeout);
            QTest::keyClick(&table(), key);
            QVERIFY(!table().hasFocus());
            QVERIFY(mFixture->window.focusWidget() != nullptr);
        }
    }

    void theFocusOfADisabledTableGoesToTheNextControl()
    {
        showCameras(3);
        mFixture->window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&mFixture->window, Timeout));
        table().setFocus();
        mFixture->defaults->agentWrites(QStringLiteral("KS7On"), false);
        mFixture->agentPosts(Names::OnOffChanged);
        auto *next = mFixture->window.focusWidget();
        QVERIFY(next && next != &table() && next->isEnabled() && next->isVisible());
        mFixture->defaults->agentWrites(QStringLiteral("KS7On"), true);
        mFixture->agentPosts(Names::OnOffChanged);
        QCOMPARE(mFixture->window.focusWidget(), next);
    }

    // Rows

    void rowsAreCountedOnceForEachReload()
    {
        showCameras(3);
        agent().cameraDict.remove(address(2));
        agent().sorted.removeLast();
        controller().copyCamerasLocal();
        QCOMPARE(table().numberOfRows(), 3);
        table().display();
        table().reloadData();
        QCOMPARE(table().numberOfRows(), 2);
    }

    void reloadedRowsAreRepainted()
    {
        showCameras(3);
        PaintWatch paints(table().viewport());
        QVERIFY(paints.begin());
        table().reloadData();
        QTRY_VERIFY_WITH_TIMEOUT(paints.count > 0, Timeout);
        QVERIFY(paints.all.contains(spotInRow(2)));
    }

    void reloadingKeepsTheSelectionAndTheScrollPosition()
    {
        showCameras(200);
        table().selectRow(150);
        table().verticalScrollBar()->setValue(700);
        QSignalSpy selection(table().selectionModel(), &QItemSelectionModel::selectionChanged);
        recordActions();
        table().reloadData();
        table().selectRow(150);
        QCOMPARE(table().selectedRow(), 150);
        QCOMPARE(table().verticalScrollBar()->value(), 700);
        QVERIFY(selection.isEmpty());
        QVERIFY(mActions.isEmpty());
    }

    void selectingARowThatDoesNotExistChangesNothing()
    {
        showCameras(3);
        table().selectRow(1);
        for (const int row : {-1, 3, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
            table().selectRow(row);
            QCOMPARE(table().selectedRow(), 1);
        }
    }

    void theOneColumnFillsTheTable()
    {
        showCameras(3);
        QCOMPARE(table().model()->columnCount(), 1);
        QCOMPARE(table().columnWidth(0), table().viewport()->width());
        QVERIFY(table().horizontalHeader()->isHidden());
        QVERIFY(table().verticalHeader()->isHidden());
        QVERIFY(table().rowHeight(0) >= 34 && table().rowHeight(0) <= 36);
        QVERIFY(!table().showGrid());
    }

    void rowsGrowWithTheDesktopsTextSize()
    {
        showCameras(3);
        QFont font = table().font();
        font.setPointSizeF(24.0);
        table().setFont(font);
        QCOMPARE(table().rowHeight(0), 72);
        QCOMPARE(table().visualRect(table().model()->index(1, 0)).top(), 72);
    }

    void whiteTextIsReadableOnAnyHighlight_data()
    {
        QTest::addColumn<QColor>("theme");
        QTest::newRow("Breeze") << QColor(61, 174, 233);
        QTest::newRow("yellow") << QColor(Qt::yellow);
        QTest::newRow("dark") << QColor(20, 60, 90);
    }
    void whiteTextIsReadableOnAnyHighlight()
    {
        QFETCH(QColor, theme);
        const QPalette before = QApplication::palette();
        QPalette palette = before;
        palette.setColor(QPalette::Highlight, theme);
        QApplication::setPalette(palette);
        showCameras(1);
        table().selectRow(0);
        const auto image = table().viewport()->grab().toImage();
        QApplication::setPalette(before);
        const QColor ground = image.pixelColor(image.width() - 10, 10);
        const auto light = [](double c) {
            return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
        };
        const double luminance =
            0.2126 * light(ground.redF()) + 0.7152 * light(ground.greenF()) + 0.0722 * light(ground.blueF());
        QVERIFY2(1.05 / (luminance + 0.05) >= 4.5, qPrintable(ground.name()));
    }

    void blackTextStaysOnALightBackgroundInADarkTheme()
    {
        const QPalette before = QApplication::palette();
        QPalette dark(QColor(40, 40, 40));
        QApplication::setPalette(dark);
        showCameras(1);
        const auto image = table().viewport()->grab().toImage();
        QApplication::setPalette(before);
        QVERIFY(image.pixelColor(image.width() - 5, image.height() - 5).value() > 240);
        QVERIFY(image.pixelColor(image.width() - 5, 5).value() > 240);
    }

    void theSelectedRowIsWhiteAndTheOthersDark()
    {
        showCameras(2);
        table().selectRow(1);
        QVERIFY(isAbout(inkOfRow(0).name, Black));
        QVERIFY(isAbout(inkOfRow(0).status, DarkGray));
        QVERIFY(isAbout(inkOfRow(1).name, White));
        QVERIFY(isAbout(inkOfRow(1).status, White));
    }

    void theReasonInADisabledTableIsDark()
    {
        showCameras(0);
        mFixture->defaults->agentWrites(QStringLiteral("KS7On"), false);
        mFixture->agentPosts(Names::OnOffChanged);
        QVERIFY(!table().isEnabled());
        constexpr int Scale = 2;
        QImage image(table().viewport()->size() * Scale, QImage::Format_RGB32);
        image.setDevicePixelRatio(Scale);
        table().viewport()->render(&image);
        const QRect middle = image.rect().adjusted(8, 8, -8, -8);
        QVERIFY(isAbout(inkWithin(image, middle, image.pixelColor(8, 8)), DarkGray));
    }

    void aDisabledTablesRowsAreGray()
    {
        showCameras(2);
        mFixture->defaults->agentWrites(QStringLiteral("KS7On"), false);
        mFixture->agentPosts(Names::OnOffChanged);
        QVERIFY(!table().isEnabled());
        const auto disabled = table().palette().color(QPalette::Disabled, QPalette::Text);
        for (const int row : {0, 1}) {
            QVERIFY(isAbout(inkOfRow(row).name, disabled));
            QVERIFY(isAbout(inkOfRow(row).status, disabled));
        }
    }

    void theSelectedRowIsWhiteInADisabledTableToo()
    {
        showCameras(2);
        agent().prefer(address(1));
        mFixture->agentPosts(Names::NoBluetooth);
        QVERIFY(!table().isEnabled());
        QCOMPARE(table().selectedRow(), 1);
        const auto disabled = table().palette().color(QPalette::Disabled, QPalette::Text);
        QVERIFY(isAbout(inkOfRow(0).name, disabled));
        QVERIFY(isAbout(inkOfRow(1).name, White));
        QVERIFY(isAbout(inkOfRow(1).status, White));
    }

    void paintingReadsOnlyTheVisibleRows()
    {
        showCameras(5000);
        int asked = 0;
        class Counter final : public QStyledItemDelegate {
        public:
            explicit Counter(int *count)
                : mCount(count)
            {
            }
            void paint(QPainter *, const QStyleOptionViewItem &, const QModelIndex &) const override
            {
                ++*mCount;
            }

        private:
            int *mCount;
        } counter(&asked);
        auto *own = table().itemDelegate();
        table().setItemDelegate(&counter);
        table().display();
        table().setItemDelegate(own);
        QVERIFY(asked > 0);
        QVERIFY(asked <= table().viewport()->height() / table().rowHeight(0) + 2);
    }

    // Animation

    void aStartingCameraBlinksUntilItHasStarted()
    {
        showCameras(2);
        QVERIFY(!table().isAnimatingStatus());
        statusBecomes(0, 3);
        QVERIFY(table().isAnimatingStatus());
        QCOMPARE(table().cycle(), 0);
        for (const int phase : {1, 0, 1, 0}) {
            mFixture->runLoop->advance(499ms);
            QCOMPARE(table().cycle(), 1 - phase);
            mFixture->runLoop->advance(1ms);
            QCOMPARE(table().cycle(), phase);
            QVERIFY(table().isAnimatingStatus());
        }
        statusBecomes(0, 4);
        QVERIFY(table().isAnimatingStatus());
        mFixture->runLoop->advance(500ms);
        QVERIFY(!table().isAnimatingStatus());
    }

    void everyTickDrawsTheWholeTableAtOnce()
    {
        showCameras(3);
        statusBecomes(0, 3);
        PaintWatch paints(table().viewport());
        mFixture->runLoop->advance(500ms);
        QCOMPARE(paints.count, 1);
        QCOMPARE(paints.last.boundingRect(), table().viewport()->rect());
        mFixture->runLoop->advance(500ms);
        QCOMPARE(paints.count, 2);
    }

    void aTickDrawsTheNewPhase()
    {
        showCameras(1);
        statusBecomes(0, 3);
        QList<int> drawn;
        PaintWatch paints(table().viewport());
        paints.onPaint = [&] { drawn.append(table().cycle()); };
        for (int tick = 0; tick < 3; ++tick)
            mFixture->runLoop->advance(500ms);
        QCOMPARE(drawn, QList<int>({1, 0, 1}));
    }

    void aTableWithoutAControllerBlinksOnce()
    {
        KS7AnimatingStatusTableView alone;
        alone.awakeFromNib(mFixture->runLoop);
        alone.startAnimatingStatus();
        QVERIFY(alone.isAnimatingStatus());
        mFixture->runLoop->advance(500ms);
        QCOMPARE(alone.cycle(), 1);
        QVERIFY(!alone.isAnimatingStatus());
    }

    void aPairingCameraAloneBlinksOnceAndStopsOnGray()
    {
        showCameras(1);
        statusBecomes(0, 2);
        QVERIFY(table().isAnimatingStatus());
        mFixture->runLoop->advance(500ms);
        QVERIFY(!table().isAnimatingStatus());
        QCOMPARE(table().cycle(), 1);
        table().display();
        QVERIFY(table().isAnimatingStatus());
        QCOMPARE(table().cycle(), 0);
    }

    void aStartingCameraOutOfSightKeepsTheOthersBlinking()
    {
        showCameras(200);
        statusBecomes(199, 3);
        QVERIFY(!table().isAnimatingStatus());
        table().startAnimatingStatus();
        mFixture->runLoop->advance(1000ms);
        QVERIFY(table().isAnimatingStatus());
    }

    void oneStopEndsAnyNumberOfStarts()
    {
        showCameras(1);
        table().startAnimatingStatus();
        table().startAnimatingStatus();
        QCOMPARE(mFixture->runLoop->timerCount(), std::size_t(1));
        table().stopAnimatingStatus();
        QVERIFY(!table().isAnimatingStatus());
        QCOMPARE(mFixture->runLoop->timerCount(), std::size_t(0));
        table().stopAnimatingStatus();
    }

    void startingAgainBeginsWithOrange()
    {
        showCameras(1);
        table().startAnimatingStatus();
        table().cycle(nullptr);
        QCOMPARE(table().cycle(), 1);
        QVERIFY(!table().isAnimatingStatus());
        table().startAnimatingStatus();
        QCOMPARE(table().cycle(), 0);
    }
};

QTEST_MAIN(KS7AnimatingStatusTableViewTest)
#include "KS7AnimatingStatusTableView_test.moc"
