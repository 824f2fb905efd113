#include "agent/NotificationNames.h"
#include "cameras/KS7AnimatingStatusTableView.h"
#include "platform/sheets/Sheets.h"
#include "preview/KS7PreviewController.h"
#include "preview/KS7QTCaptureView.h"
#include "tests/support/ActiveWindow.h"
#include "tests/support/PaintWatch.h"
#include "tests/support/PaneFixture.h"
#include "tests/support/Timeout.h"
#include "widgets/AdaptiveColumns.h"
#include "widgets/Indicators.h"
#include "widgets/LinkLabel.h"
#include "widgets/NoticeStrip.h"
#include "widgets/PictureFrame.h"

#include <QAbstractEventDispatcher>
#include <QAccessible>
#include <QActionGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include <cmath>
#include <limits>

namespace Names = NotificationNames;

namespace {

constexpr int OneSegment = 7;
const QString KS7CameraID = QStringLiteral("KS-7 Wireless Webcam");

} // namespace

/// Tests the main view: positions, accessible names and keyboard navigation.
class MainViewTest : public QObject {
    Q_OBJECT

    std::unique_ptr<PaneFixture> mFixture;

    Outlets &outlets() { return mFixture->outlets(); }
    QWidget *view() { return mFixture->pane->mainView(); }
    KS7AnimatingStatusTableView &table() { return *outlets().cameraListTable; }

    template <class Widget>
    Widget *named(const char *name)
    {
        auto *widget = view()->findChild<Widget *>(QLatin1String(name));
        return widget ? widget : (qFatal("no %s", name), nullptr);
    }

    void showPane(int width = 900, int height = 600)
    {
        mFixture->window.resize(width, height);
        mFixture->show();
        mFixture->runLoop->turn();
        QVERIFY(QTest::qWaitForWindowExposed(&mFixture->window, Timeout));
        resizeTo(width, height);
        mFixture->takeJournal();
    }

    void resizeTo(int width, int height)
    {
        mFixture->window.resize(width, height);
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        QCoreApplication::processEvents();
    }

    void addTwoCameras()
    {
        mFixture->agent.addCamera(QStringLiteral("a"), QStringLiteral("Kitchen"), 1);
        mFixture->agent.addCamera(QStringLiteral("b"), QStringLiteral("Cut & Paste"), 0);
    }

    /// Fills the submenu "Choose Camera", as opening it does, and returns it.
    QMenu *chooseCamera()
    {
        for (auto *item : outlets().pulldownMenu->menu()->actions()) {
            if (item->text() != QStringLiteral("Choose Camera"))
                continue;
            Q_EMIT item->menu()->aboutToShow();
            return item->menu();
        }
        return nullptr;
    }

    static QString withoutMnemonic(QString text) { return text.remove(QLatin1Char('&')); }

    /// The texts of all widgets of one class in the sheet, in their order, without the mnemonic marks.
    template <class Widget>
    static QStringList textsOf(const QWidget *sheet)
    {
        QStringList texts;
        for (const auto *widget : sheet->findChildren<Widget *>())
            texts.append(withoutMnemonic(widget->text()));
        return texts;
    }

    static QRect onScreen(const QWidget *widget) { return {widget->mapToGlobal(QPoint()), widget->size()}; }

private Q_SLOTS:
    void init() { mFixture = std::make_unique<PaneFixture>(); }
    void cleanup() { mFixture.reset(); }

    void thePictureIsBesideTheListAndBelowItInANarrowWindow()
    {
        showPane();
        auto *columns = named<AdaptiveColumns>("columns");
        auto *picture = named<PictureFrame>("pictureFrame");
        QVERIFY(!columns->isStacked());
        QVERIFY(onScreen(picture).left() > onScreen(&table()).right());
        resizeTo(600, 700);
        QVERIFY(columns->isStacked());
        QVERIFY(onScreen(picture).top() > onScreen(&table()).bottom());
        resizeTo(900, 600);
        QVERIFY(!columns->isStacked());
    }

    void theListNeverShrinksToNothing()
    {
        showPane();
        for (const auto &size : {QSize(300, 300), QSize(720, 400), QSize(1600, 300)}) {
            resizeTo(size.width(), size.height());
            QVERIFY(table().height() >= 2 * table().verticalHeader()->defaultSectionSize());
            QVERIFY(table().width() >= 150);
        }
    }

    void noTextIsClippedInAnyWindow()
    {
        showPane();
        for (const int width : {300, 480, 690, 720, 1000}) {
            resizeTo(width, 700);
            for (const QWidget *control : std::initializer_list<QWidget *>{
                     outlets().enableKS7Checkbox, outlets().statusMenuCheckbox, outlets().startButton,
                     outlets().optimizeForPopUp, outlets().optimizeForPopUpLabel,
                     named<QLabel>("copyright")}) {
                QVERIFY2(control->width() >= control->minimumSizeHint().width(),
                         qPrintable(control->objectName()));
                QVERIFY2(control->height() >= control->minimumSizeHint().height(),
                         qPrintable(control->objectName()));
            }
        }
    }

    void thePictureIsBlackFourToThreeAndKeepsItsPlace()
    {
        showPane();
        auto *frame = named<PictureFrame>("pictureFrame");
        const auto place = frame->geometry();
        const auto picture = frame->pictureRect();
        QVERIFY(std::abs(picture.width() * 3 - picture.height() * 4) <= 4);
        QCOMPARE(frame->grab().toImage().pixelColor(picture.center()), QColor(Qt::black));
        auto *preview = outlets().previewView->qtView;
        QVERIFY(preview->isHidden());
        preview->show();
        QCoreApplication::processEvents();
        QCOMPARE(frame->geometry(), place);
        QCOMPARE(preview->geometry(), picture);
    }

    void thePictureUsesTheFreeSpace()
    {
        showPane();
        auto *frame = named<PictureFrame>("pictureFrame");
        for (const auto &size : {QSize(640, 600), QSize(900, 700), QSize(1600, 900)}) {
            resizeTo(size.width(), size.height());
            const int below = named<AdaptiveColumns>("columns")->height() - frame->height();
            QVERIFY2(below < 110, qPrintable(QString::number(below)));
            QVERIFY(frame->width() * 10 >= named<AdaptiveColumns>("columns")->width() * 6);
        }
    }

    void theEntriesOfChooseCameraAreTheListedOnes()
    {
        addTwoCameras();
        mFixture->agent.prefer(QStringLiteral("a"));
        showPane();
        const auto entries = chooseCamera()->actions();
        QCOMPARE(entries.size(), 2);
        QCOMPARE(entries.at(0)->text(), QStringLiteral("Kitchen, Not Streaming"));
        QCOMPARE(entries.at(1)->text(), QStringLiteral("Cut && Paste, Not Found"));
        QVERIFY(entries.at(0)->isChecked());
        QVERIFY(!entries.at(1)->isChecked());
    }

    void choosingACameraActsLikeAClick()
    {
        addTwoCameras();
        showPane();
        chooseCamera()->actions().at(1)->trigger();
        QCOMPARE(table().selectedRow(), 1);
        QVERIFY(mFixture->takeRemoteCalls().contains(QStringLiteral("setPreferredDeviceAddress b")));
    }

    void chooseCameraIsRebuiltEachTime()
    {
        addTwoCameras();
        showPane();
        QCOMPARE(chooseCamera()->actions().size(), 2);
        mFixture->agent.addCamera(QStringLiteral("c"), QStringLiteral("Attic"), 4);
        mFixture->agentPosts(Names::CameraListChanged);
        QCOMPARE(chooseCamera()->actions().size(), 3);
        mFixture->agent.cameraDict.clear();
        mFixture->agentPosts(Names::CameraListChanged);
        QCOMPARE(chooseCamera()->actions().size(), 1);
        QVERIFY(!chooseCamera()->actions().first()->isEnabled());
    }

    void anEntryWhoseRowNowHasAnotherCameraChoosesNone()
    {
        addTwoCameras();
        showPane();
        auto *entry = chooseCamera()->actions().at(1);
        mFixture->agent.addCamera(QStringLiteral("c"), QStringLiteral("Attic"), 4);
        mFixture->agent.sorted = QStringList{QStringLiteral("a"), QStringLiteral("c"), QStringLiteral("b")};
        mFixture->agentPosts(Names::CameraListChanged);
        mFixture->takeJournal();
        entry->trigger();
        QVERIFY(mFixture->takeRemoteCalls().isEmpty());
    }

    void switchedOffNoCameraCanBeChosen()
    {
        addTwoCameras();
        mFixture->defaults->agentWrites(QStringLiteral("KS7On"), false);
        showPane();
        for (auto *entry : chooseCamera()->actions())
            QVERIFY(!entry->isEnabled());
    }

    void everyControlIsNamedForAScreenReader_data()
    {
        QTest::addColumn<QString>("control");
        QTest::addColumn<QString>("name");
        const std::initializer_list<std::pair<const char *, const char *>> names{
            {"cameraListTable", "Cameras"},
            {"addButton", "Add Camera"},
            {"removeButton", "Remove Camera"},
            {"pulldownMenu", "Camera Actions"},
            {"searchingIndicator", "Searching"},
            {"levelIndicator_l", "Left audio level"},
            {"levelIndicator_r", "Right audio level"},
            {"enableKS7Checkbox", "Enable KS-7"},
            {"statusMenuCheckbox", "Show status menu"},
            {"debugLog", "Debug logging"},
            {"startButton", "Start Preview"}};
        for (const auto &[control, name] : names)
            QTest::newRow(control) << QString::fromLatin1(control) << QString::fromLatin1(name);
    }
    void everyControlIsNamedForAScreenReader()
    {
        QFETCH(QString, control);
        QFETCH(QString, name);
        showPane();
        auto *accessible = QAccessible::queryAccessibleInterface(view()->findChild<QWidget *>(control));
        QVERIFY(accessible != nullptr);
        QCOMPARE(accessible->text(QAccessible::Name), name);
    }

    void everyWidgetHasTheNameOfItsOutlet()
    {
        showPane();
        const auto &all = outlets();
        const std::initializer_list<std::pair<const QWidget *, const char *>> names{
            {all.statusMenuCheckbox, "statusMenuCheckbox"},
            {all.debugLog, "debugLog"},
            {all.enableKS7Checkbox, "enableKS7Checkbox"},
            {all.searchingIndicator, "searchingIndicator"},
            {all.pulldownMenu, "pulldownMenu"},
            {all.cameraListTable, "cameraListTable"},
            {all.discoveringMessage, "discoveringMessage"},
            {all.cameraIDText, "cameraIDText"},
            {all.cameraNameText, "cameraNameText"},
            {all.ignoreCheckbox, "ignoreCheckbox"},
            {all.firmwareCheckingIndicator, "firmwareCheckingIndicator"},
            {all.firmwareStatusText, "firmwareStatusText"},
            {all.firmwareMainText, "firmwareMainText"},
            {all.addButton, "addButton"},
            {all.removeButton, "removeButton"},
            {all.propertiesSheet, "propertiesSheet"},
            {all.pinSheet, "pinSheet"},
            {all.firmwareSheet, "firmwareSheet"},
            {all.newPINText, "newPINText"},
            {all.pinOkayButton, "pinOkayButton"},
            {all.firmwareCancelButton, "firmwareCancelButton"},
            {all.firmwareContinueButton, "firmwareContinueButton"},
            {all.startButton, "startButton"},
            {all.levelIndicator_r, "levelIndicator_r"},
            {all.levelIndicator_l, "levelIndicator_l"},
            {all.copyright, "copyright"},
            {all.optimizeForPopUp, "optimizeForPopUp"},
            {all.optimizeForPopUpLabel, "optimizeForPopUpLabel"}};
        for (const auto &[widget, name] : names)
            QCOMPARE(widget->objectName(), QLatin1String(name));
    }

    void theTextsOfTheControlsAreFixed()
    {
        showPane();
        const auto &all = outlets();
        QCOMPARE(all.addButton->text(), QStringLiteral("+"));
        QCOMPARE(all.removeButton->text(), QStringLiteral("−"));
        QCOMPARE(all.discoveringMessage->text(), QStringLiteral("Searching for cameras…"));
        QCOMPARE(withoutMnemonic(all.optimizeForPopUpLabel->text()), QStringLiteral("Optimize for:"));
        QCOMPARE(all.optimizeForPopUp->count(), 2);
        QCOMPARE(all.optimizeForPopUp->itemText(0), QStringLiteral("Smooth motion"));
        QCOMPARE(all.optimizeForPopUp->itemText(1), QStringLiteral("Picture quality"));
        QCOMPARE(withoutMnemonic(all.ignoreCheckbox->text()), QStringLiteral("Ignore this camera"));
        QCOMPARE(textsOf<QLabel>(all.propertiesSheet),
                 QStringList({QStringLiteral("Name:"), QStringLiteral("Camera ID:")}));
        QCOMPARE(textsOf<QLabel>(all.pinSheet).mid(1),
                 QStringList({QStringLiteral("New passkey:"), QStringLiteral("1 to 16 digits")}));
        const QStringList okAndCancel{QStringLiteral("OK"), QStringLiteral("Cancel")};
        QCOMPARE(textsOf<QPushButton>(all.propertiesSheet), okAndCancel);
        QCOMPARE(textsOf<QPushButton>(all.pinSheet), okAndCancel);
        QCOMPARE(textsOf<QPushButton>(all.firmwareSheet),
                 QStringList({QStringLiteral("Continue"), QStringLiteral("Cancel")}));
    }

    void theCameraActionsAreInTheirOrder()
    {
        showPane();
        QStringList titles;
        QList<int> tags;
        for (const auto *item : outlets().pulldownMenu->menu()->actions()) {
            if (item->isSeparator())
                continue;
            titles.append(item->text());
            tags.append(item->data().toInt());
        }
        QCOMPARE(titles,
                 QStringList({QStringLiteral("Use This Camera"), QStringLiteral("Choose Camera"),
                              QStringLiteral("Properties…"), QStringLiteral("Change Passkey…"),
                              QStringLiteral("Update Firmware…"), QStringLiteral("About KS-7…")}));
        QCOMPARE(tags, QList<int>({0, 0, 0, 34, 35, 0}));
    }

    void thePopUpIsNamedByItsLabel()
    {
        showPane();
        auto *popUp = QAccessible::queryAccessibleInterface(outlets().optimizeForPopUp);
        const auto labels = popUp->relations(QAccessible::Label);
        QCOMPARE(labels.size(), 1);
        QCOMPARE(labels.first().first->object(), static_cast<QObject *>(outlets().optimizeForPopUpLabel));
        QCOMPARE(popUp->text(QAccessible::Name), QStringLiteral("Optimize for"));
        outlets().optimizeForPopUp->setCurrentIndex(0);
        QCOMPARE(popUp->text(QAccessible::Value), QStringLiteral("Smooth motion"));
        QCOMPARE(popUp->textInterface()->text(0, 6), QStringLiteral("Smooth"));
        QCOMPARE(popUp->child(0)->childCount(), 2);
    }

    void assistiveProgramsFindTheCameraActions()
    {
        addTwoCameras();
        showPane();
        auto *button = QAccessible::queryAccessibleInterface(outlets().pulldownMenu);
        QCOMPARE(button->role(), QAccessible::ButtonMenu);
        auto *menu = outlets().pulldownMenu->menu();
        QCOMPARE(button->child(0)->childCount(), menu->actions().size());
        QVERIFY(!button->state().expanded);
        bool wasOpen = false;
        button->actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
        QVERIFY(!menu->isVisible());
        // showMenuAction() only requests the menu. The timer's handler runs in the event loop of the opened
        // menu, so it can check the menu and close it.
        QTimer::singleShot(0, menu, [&] {
            wasOpen = menu->isVisible() && button->state().expanded;
            menu->actions().constLast()->trigger();
        });
        QTRY_VERIFY_WITH_TIMEOUT(wasOpen, Timeout);
        QVERIFY(!menu->isVisible());
    }

    void aMeterReportsValuesFromZeroToOne_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<double>("told");
        QTest::newRow("zero") << 0.0 << 0.0;
        QTest::newRow("some") << 0.4 << 0.4;
        QTest::newRow("too much") << 7.0 << 1.0;
        QTest::newRow("below") << -1.0 << 0.0;
        QTest::newRow("not a number") << std::numeric_limits<double>::quiet_NaN() << 0.0;
    }
    void aMeterReportsValuesFromZeroToOne()
    {
        QFETCH(double, value);
        QFETCH(double, told);
        showPane();
        outlets().levelIndicator_l->setDoubleValue(value);
        outlets().firmwareCheckingIndicator->setDoubleValue(value);
        for (QWidget *indicator : std::initializer_list<QWidget *>{outlets().levelIndicator_l,
                                                                   outlets().firmwareCheckingIndicator}) {
            auto *asValue = QAccessible::queryAccessibleInterface(indicator)->valueInterface();
            QVERIFY(asValue != nullptr);
            QCOMPARE(asValue->minimumValue().toDouble(), 0.0);
            QCOMPARE(asValue->maximumValue().toDouble(), 1.0);
            QCOMPARE(asValue->currentValue().toDouble(), told);
            asValue->setCurrentValue(0.9);
            QCOMPARE(asValue->currentValue().toDouble(), told);
        }
        QVERIFY(!outlets().levelIndicator_l->grab().isNull());
    }

    void aHigherLevelLightsMoreOfTheMeter()
    {
        showPane();
        auto *meter = outlets().levelIndicator_l;
        const auto litPixels = [meter] {
            const auto image = meter->grab().toImage();
            int lit = 0;
            for (int x = 0; x < image.width(); ++x)
                lit += image.pixelColor(x, image.height() / 2).saturation() > 100 ? 1 : 0;
            return lit;
        };
        meter->setDoubleValue(0.0);
        QCOMPARE(litPixels(), 0);
        meter->setDoubleValue(0.5);
        const int half = litPixels();
        QVERIFY(half > 0);
        meter->setDoubleValue(1.0);
        QVERIFY(litPixels() > half);
    }

    void aMeterPaintsOnlyWhatChanges()
    {
        showPane();
        auto *meter = outlets().levelIndicator_l;
        meter->setDoubleValue(0.5);
        QCoreApplication::processEvents();
        const PaintWatch paints(meter);
        meter->setDoubleValue(0.5001);
        QCoreApplication::processEvents();
        QVERIFY(paints.all.isEmpty());
        meter->setDoubleValue(0.75);
        QTRY_VERIFY_WITH_TIMEOUT(!paints.all.isEmpty(), Timeout);
        const QRect risen = paints.all.boundingRect();
        QVERIFY(std::abs(risen.left() - meter->width() * 0.5) <= OneSegment);
        QVERIFY(std::abs(risen.right() - meter->width() * 0.75) <= OneSegment);
        meter->setDoubleValue(0.5);
        QCoreApplication::processEvents();
        QCOMPARE(paints.all.boundingRect(), risen);
    }

    void theSpinnerIsVisibleWhileItTurns()
    {
        showPane();
        auto *spinner = outlets().searchingIndicator;
        const auto buttons = outlets().pulldownMenu->geometry();
        const auto least = view()->minimumSizeHint();
        QVERIFY(!spinner->isVisible());
        mFixture->agentPosts(Names::StartedDiscovering);
        QVERIFY(spinner->isVisible());
        QVERIFY(outlets().discoveringMessage->isVisible());
        // The visible spinner must not increase the view's minimum size, because the window would then grow
        // whenever a search starts.
        QTRY_COMPARE_WITH_TIMEOUT(view()->minimumSizeHint(), least, Timeout);
        mFixture->agentPosts(Names::StoppedDiscovering);
        QVERIFY(!spinner->isVisible());
        QCOMPARE(outlets().pulldownMenu->geometry(), buttons);
    }

    void theSpinnerOfAHiddenPaneCausesNoWakeUps()
    {
        showPane();
        auto *spinner = outlets().searchingIndicator;
        const auto timers = [spinner] {
            return static_cast<int>(QAbstractEventDispatcher::instance()->registeredTimers(spinner).size());
        };
        mFixture->agentPosts(Names::StartedDiscovering);
        QCOMPARE(timers(), 1);
        mFixture->window.hide();
        QCOMPARE(timers(), 0);
        QVERIFY(spinner->isAnimating());
        mFixture->window.show();
        QCOMPARE(timers(), 1);
        mFixture->window.hide();
        mFixture->agentPosts(Names::StoppedDiscovering);
        mFixture->agentPosts(Names::StartedDiscovering);
        QCOMPARE(timers(), 0);
        mFixture->window.show();
        QCOMPARE(timers(), 1);
        mFixture->agentPosts(Names::StoppedDiscovering);
        QCOMPARE(timers(), 0);
    }

    // Tests of the sentences that explain the state of the pane

    void aBlackPictureShowsTheReason()
    {
        addTwoCameras();
        mFixture->agent.prefer(QStringLiteral("b"));
        showPane();
        const auto *caption = named<QLabel>("pictureCaption");
        QCOMPARE(caption->text(), QStringLiteral("Preview is off"));
        mFixture->capture->addDevice(KS7CameraID);
        outlets().startButton->click();
        const auto waiting = QStringLiteral("Waiting for the picture of Cut & Paste: Not Found");
        QCOMPARE(caption->text(), waiting);
        QCOMPARE(outlets().previewView->qtView->accessibleDescription(), waiting);
        mFixture->agent.addCamera(QStringLiteral("b"), QStringLiteral("Cut & Paste"), 4);
        mFixture->agentPosts(Names::CameraListChanged);
        QCOMPARE(caption->text(), QStringLiteral("Picture of Cut & Paste"));
        outlets().startButton->click();
        QCOMPARE(caption->text(), QStringLiteral("Preview is off"));
    }

    void aPreviewAfterAFailedStartShowsThatItHasNoPicture()
    {
        addTwoCameras();
        mFixture->agent.prefer(QStringLiteral("a"));
        showPane();
        outlets().startButton->click();
        outlets().startButton->click();
        QCOMPARE(
            named<QLabel>("pictureCaption")->text(),
            QStringLiteral("No picture: the first start failed. Restart this application to try again."));
    }

    void lostBluetoothIsShownUntilItReturns()
    {
        addTwoCameras();
        mFixture->agent.prefer(QStringLiteral("a"));
        showPane();
        auto *strip = named<NoticeStrip>("noticeStrip");
        QVERIFY(!strip->isVisible());
        mFixture->agentPosts(Names::NoBluetooth);
        QVERIFY(strip->isVisible());
        QCOMPARE(strip->message(), QStringLiteral("Bluetooth is off. Turn it on to use your cameras."));
        QCOMPARE(table().accessibleDescription(), QStringLiteral("Bluetooth is off."));
        strip->button()->click();
        QCOMPARE(mFixture->workspace->opened, QStringList{QStringLiteral("bluetooth settings")});
        mFixture->agentPosts(Names::FoundBluetooth);
        QVERIFY(!strip->isVisible());
    }

    void theListGetsTheFocusBackWhenBluetoothReturns()
    {
        addTwoCameras();
        showPane();
        makeActive(&mFixture->window);
        table().setFocus();
        mFixture->agentPosts(Names::NoBluetooth);
        QVERIFY(!table().hasFocus());
        mFixture->agentPosts(Names::FoundBluetooth);
        QVERIFY(table().hasFocus());
        mFixture->agentPosts(Names::NoBluetooth);
        outlets().statusMenuCheckbox->setFocus();
        mFixture->agentPosts(Names::FoundBluetooth);
        QVERIFY2(outlets().statusMenuCheckbox->hasFocus(), "a focus that moved on stays");
    }

    void bluetoothDoesNotRestoreAFocusThatTheServiceSwitchRemoved()
    {
        addTwoCameras();
        showPane();
        makeActive(&mFixture->window);
        table().setFocus();
        for (const bool isOn : {false, true}) {
            mFixture->defaults->agentWrites(QStringLiteral("KS7On"), isOn);
            mFixture->agentPosts(Names::OnOffChanged);
        }
        auto *focus = mFixture->window.focusWidget();
        QVERIFY(focus && focus != &table());
        mFixture->agentPosts(Names::NoBluetooth);
        mFixture->agentPosts(Names::FoundBluetooth);
        QCOMPARE(mFixture->window.focusWidget(), focus);
    }

    void afterAFirstSearchAHintAsksToChooseACamera()
    {
        showPane();
        const auto *hint = named<QLabel>("listHint");
        mFixture->agentPosts(Names::StartedDiscovering);
        QCOMPARE(table().placeholderText(), QStringLiteral("Searching for cameras…"));
        QVERIFY(!hint->isVisible());
        addTwoCameras();
        mFixture->agentPosts(Names::CameraListChanged);
        QVERIFY(hint->isVisible());
        QCOMPARE(hint->text(), QStringLiteral("Choose a camera in the list to use it."));
        QVERIFY(table().accessibleDescription().startsWith(hint->text()));
        mFixture->agent.prefer(QStringLiteral("a"));
        mFixture->agentPosts(Names::PreferredCameraChanged);
        QVERIFY(!hint->isVisible());
    }

    void aListWithoutAnAgentShowsASentence()
    {
        showPane();
        mFixture->agentPosts(Names::StartedDiscovering);
        mFixture->connections->killAgent();
        QVERIFY(table().placeholderText().startsWith(
            QStringLiteral("The camera agent is not running or does not answer.")));
        QCOMPARE(table().accessibleDescription(), table().placeholderText());
    }

    void aSearchEndsWithItsAgent()
    {
        showPane();
        mFixture->agentPosts(Names::StartedDiscovering);
        mFixture->connections->killAgent();
        mFixture->agent.running = true;
        mFixture->agentPosts(Names::AgentStarted);
        QCOMPARE(table().placeholderText(), QStringLiteral("No cameras found. Choose + to search."));
        mFixture->agentPosts(Names::StartedDiscovering);
        QCOMPARE(table().placeholderText(), QStringLiteral("Searching for cameras…"));
    }

    void aSearchGoesOnWhileThePaneIsHidden()
    {
        showPane();
        mFixture->agentPosts(Names::StartedDiscovering);
        mFixture->hide();
        mFixture->show();
        QCOMPARE(table().placeholderText(), QStringLiteral("Searching for cameras…"));
    }

    void anAgentThatIsLaunchedDoesNotSearchYet()
    {
        showPane();
        mFixture->agentPosts(Names::StartedDiscovering);
        mFixture->hide();
        mFixture->agent.running = false;
        mFixture->agent.appearsAtAttempt = mFixture->agent.attempts + 2;
        mFixture->show();
        QVERIFY(mFixture->controller().isConnected());
        QCOMPARE(table().placeholderText(), QStringLiteral("No cameras found. Choose + to search."));
    }

    void anUpdateThatIsOffSaysWhenItIsPossible()
    {
        showPane();
        auto *menu = outlets().pulldownMenu->menu();
        QVERIFY(menu->toolTipsVisible());
        for (const auto *item : menu->actions()) {
            if (item->text() == QStringLiteral("Update Firmware…"))
                QCOMPARE(item->toolTip(),
                         QStringLiteral(
                             "Available while the selected camera is connected by USB and has new firmware"));
        }
    }

    void bluetoothSettingsThatAreMissingAreSaid()
    {
        addTwoCameras();
        showPane();
        mFixture->agentPosts(Names::NoBluetooth);
        mFixture->workspace->hasBluetoothSettings = false;
        auto *strip = named<NoticeStrip>("noticeStrip");
        strip->button()->click();
        const auto missing = QStringLiteral(
            "No program for Bluetooth settings was found. Turn Bluetooth on in your desktop's settings.");
        QCOMPARE(strip->message(), missing);
        QCOMPARE(strip->button()->accessibleDescription(), missing);
        mFixture->agentPosts(Names::FoundBluetooth);
        QVERIFY(!strip->isVisible());
    }

    void disabledControlsShowTheReason()
    {
        mFixture->agent.addCamera(QStringLiteral("a"), QStringLiteral("Kitchen"), 4);
        mFixture->agent.prefer(QStringLiteral("a"));
        showPane();
        QVERIFY(!outlets().addButton->isEnabled());
        QCOMPARE(outlets().addButton->toolTip(),
                 QStringLiteral("Cameras can be added only while no camera is in use"));
        QVERIFY(!outlets().removeButton->isEnabled());
        auto *remove = QAccessible::queryAccessibleInterface(outlets().removeButton);
        QCOMPARE(remove->text(QAccessible::Description),
                 QStringLiteral("A camera can be removed only while it is not in use"));
        mFixture->agentPosts(Names::NoBluetooth);
        QCOMPARE(outlets().startButton->toolTip(), QStringLiteral("Bluetooth is off."));
    }

    void technicalTermsAreExplained()
    {
        showPane();
        for (QWidget *control : std::initializer_list<QWidget *>{
                 outlets().enableKS7Checkbox, outlets().optimizeForPopUp, outlets().statusMenuCheckbox,
                 outlets().debugLog, outlets().startButton, outlets().ignoreCheckbox}) {
            QVERIFY2(!control->toolTip().isEmpty(), qPrintable(control->objectName()));
            auto *accessible = QAccessible::queryAccessibleInterface(control);
            QCOMPARE(accessible->text(QAccessible::Description), control->toolTip());
        }
    }

    void camerasOfOneNameDifferInChooseCamera()
    {
        const auto kitchen = QStringLiteral("Kitchen");
        mFixture->agent.addCamera(QStringLiteral("a"), kitchen, 1, QStringLiteral("2A9C"));
        mFixture->agent.addCamera(QStringLiteral("b"), kitchen, 1, QStringLiteral("7701"));
        mFixture->agent.addCamera(QStringLiteral("c"), QStringLiteral("Desk"), 1, QStringLiteral("0001"));
        showPane();
        const auto entries = chooseCamera()->actions();
        QCOMPARE(entries.at(0)->text(), QStringLiteral("Kitchen (2A9C), Not Streaming"));
        QCOMPARE(entries.at(1)->text(), QStringLiteral("Kitchen (7701), Not Streaming"));
        QCOMPARE(entries.at(2)->text(), QStringLiteral("Desk, Not Streaming"));
        QVERIFY2(entries.at(0)->actionGroup()->isExclusive(), "one of many has a radio mark");
        const auto tip = table().model()->index(1, 0).data(Qt::ToolTipRole).toString();
        QVERIFY2(tip.contains(QStringLiteral("Kitchen (7701), Not Streaming")), qPrintable(tip));
    }

    void fiftyCamerasAreScrolledInOneColumn()
    {
        for (int number = 0; number < 52; ++number) {
            const auto name = QStringLiteral("Camera %1").arg(number);
            mFixture->agent.addCamera(name, name, 1);
        }
        showPane();
        auto *menu = chooseCamera();
        const auto entries = menu->actions();
        menu->popup({});
        QCOMPARE(menu->actionGeometry(entries.first()).left(), menu->actionGeometry(entries.last()).left());
        QVERIFY(menu->height() <= menu->screen()->size().height());
        menu->hide();
    }

    void theSheetsAtTheCableNameTheirCamera()
    {
        mFixture->agent.addCamera(QStringLiteral("a"), QStringLiteral("Kitchen"), 1, QStringLiteral("2A9C"));
        mFixture->agent.prefer(QStringLiteral("a"));
        mFixture->agent.usbAddress = QStringLiteral("a");
        showPane();
        mFixture->controller().changePIN(nullptr);
        QCOMPARE(outlets().pinCamera->text(), QStringLiteral("Kitchen (2A9C)"));
        mFixture->controller().installFirmware(nullptr);
        QCOMPARE(outlets().firmwareCamera->text(), QStringLiteral("Kitchen (2A9C)"));
    }

    void aViolatedPasskeyRuleIsHighlighted()
    {
        showPane();
        mFixture->controller().actuallyChangePIN();
        const auto *rule = outlets().pinRule;
        QVERIFY(!rule->font().bold());
        outlets().newPINText->setText(QStringLiteral("12a"));
        QVERIFY(rule->font().bold());
        outlets().newPINText->setText(QStringLiteral("12"));
        QVERIFY(!rule->font().bold());
        QCOMPARE(outlets().newPINText->accessibleDescription(), rule->text());
    }

    void continueKeepsItsPlaceWhenCancelIsHidden()
    {
        showPane();
        auto *sheet = outlets().firmwareSheet;
        sheet->show();
        QVERIFY(QTest::qWaitForWindowExposed(sheet, Timeout));
        const auto place = onScreen(outlets().firmwareContinueButton);
        outlets().firmwareCancelButton->hide();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        QCOMPARE(onScreen(outlets().firmwareContinueButton), place);
        outlets().firmwareCancelButton->show();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        QCOMPARE(onScreen(outlets().firmwareContinueButton), place);
        sheet->hide();
    }

    void theGearIsAsLargeAsItsNeighbours()
    {
        showPane();
        QCOMPARE(outlets().pulldownMenu->size(), outlets().addButton->size());
        QCOMPARE(outlets().removeButton->size(), outlets().addButton->size());
    }

    void thePictureGetsItsShareOfLargeAndSmallWindows()
    {
        showPane();
        resizeTo(1600, 900);
        const int widest = 50 * table().fontMetrics().averageCharWidth();
        QVERIFY2(table().width() <= widest, qPrintable(QString::number(table().width())));
        resizeTo(600, 411);
        const int width = named<PictureFrame>("pictureFrame")->pictureRect().width();
        QVERIFY2(width >= 240, qPrintable(QString::number(width)));
    }

    void aBlackPictureHasAnOutline()
    {
        showPane();
        auto *frame = named<PictureFrame>("pictureFrame");
        const auto image = frame->grab().toImage();
        QVERIFY(image.pixelColor(0, image.height() / 2).value() > 100);
        QCOMPARE(image.pixelColor(1, image.height() / 2), QColor(Qt::black));
    }

    void theListShowsItsFocus()
    {
        showPane();
        makeActive(&mFixture->window);
        outlets().statusMenuCheckbox->setFocus();
        const auto without = table().viewport()->grab().toImage();
        table().setFocus();
        const auto with = table().viewport()->grab().toImage();
        const int middle = with.height() / 2;
        QVERIFY(with.pixelColor(0, middle) != without.pixelColor(0, middle));
        QCOMPARE(with.pixelColor(with.width() / 2, middle), without.pixelColor(with.width() / 2, middle));
    }

    void tabGoesThroughThePaneInReadingOrderAndAround()
    {
        addTwoCameras();
        mFixture->agent.prefer(QStringLiteral("a"));
        showPane();
        makeActive(&mFixture->window);
        outlets().enableKS7Checkbox->setFocus();
        QList<QWidget *> visited;
        for (int step = 0; step < 20 && !visited.contains(mFixture->window.focusWidget()); ++step) {
            visited.append(mFixture->window.focusWidget());
            QTest::keyClick(visited.last(), Qt::Key_Tab);
        }
        const QList<QWidget *> expected{
            outlets().enableKS7Checkbox, outlets().optimizeForPopUp,  &table(),
            outlets().addButton,         outlets().removeButton,      outlets().pulldownMenu,
            outlets().startButton,       outlets().statusMenuCheckbox};
        QCOMPARE(visited.mid(0, expected.size()), expected);
        QCOMPARE(mFixture->window.focusWidget(), static_cast<QWidget *>(outlets().enableKS7Checkbox));
    }
};

QTEST_MAIN(MainViewTest)
#include "MainView_test.moc"
