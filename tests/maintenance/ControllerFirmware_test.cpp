#include "agent/NotificationNames.h"
#include "platform/sheets/Sheets.h"
#include "tests/support/PaneFixture.h"
#include "widgets/Indicators.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>

namespace {

const auto Kitchen = QStringLiteral("00-11-22-33-44-55");

/// The visible state of the firmware sheet, and the controller's firmware step.
struct Look {
    QString headline;
    QString secondLine;
    bool indicator;
    bool cancel;
    bool canContinue;
    int step;

    bool operator==(const Look &other) const = default;
};

char *toString(const Look &look)
{
    const auto text = QStringLiteral("\"%1\" / \"%2\", indicator %3, cancel %4, continue %5, step %6")
                          .arg(look.headline, look.secondLine)
                          .arg(look.indicator)
                          .arg(look.cancel)
                          .arg(look.canContinue)
                          .arg(look.step);
    return QTest::toString(text);
}

const Look Opened{QStringLiteral("Update Firmware puts the latest firmware version on your KS-7."),
                  QStringLiteral("Click Continue to proceed."),
                  false,
                  true,
                  true,
                  0};
const Look Confirmed{QStringLiteral("Do not disconnect the camera until the update is complete."),
                     QStringLiteral("Click Continue to start the update."),
                     false,
                     true,
                     true,
                     1};
const Look Updating{QStringLiteral("Now updating firmware."),
                    QStringLiteral("Do not disconnect the camera."),
                    true,
                    false,
                    false,
                    1};
const Look Complete{QStringLiteral("Firmware update complete."),
                    QStringLiteral("Please disconnect the camera now."),
                    false,
                    false,
                    true,
                    2};

Look failed(int code)
{
    return {QStringLiteral("An error occurred updating firmware."),
            QStringLiteral("Error: %1").arg(code),
            false,
            false,
            true,
            2};
}

/// Records the headline at each change of the button between enabled and disabled.
class HeadlinesAtChange : public QObject {
public:
    HeadlinesAtChange(QPushButton *button, const QLabel *headline)
        : mHeadline(headline)
    {
        button->installEventFilter(this);
    }
    QStringList headlines;

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::EnabledChange)
            headlines.append(mHeadline->text());
        return false;
    }

private:
    const QLabel *mHeadline;
};

} // namespace

/// Tests the three steps of a firmware update. In the second step the pane waits for the camera.
class ControllerFirmwareTest : public QObject {
    Q_OBJECT
private:
    void openSheet();
    void pressContinue();
    void pressCancel();
    void startUpdate();
    void inSlice(int number, std::function<void()> happening);
    void agentReportsProgress(const QVariantMap &userInfo)
    {
        fixture->agentPosts(NotificationNames::FirmwareUpdateProgress, userInfo);
    }
    void agentReportsEnd(int result)
    {
        fixture->agentPosts(NotificationNames::FirmwareUpdateEnded, {{UserInfoKeys::Result, result}});
    }
    [[nodiscard]] Look look() const;
    [[nodiscard]] bool sheetIsUp() const { return fixture->sheets->isUp(fixture->outlets().firmwareSheet); }
    [[nodiscard]] platform::ProgressIndicator *indicator() const
    {
        return fixture->outlets().firmwareCheckingIndicator;
    }

    std::unique_ptr<PaneFixture> fixture;
    int slice = 0;

private Q_SLOTS:
    void init();
    void cleanup() { fixture.reset(); }

    void theSheetsAppearanceFollowsEachStep();
    void theAgentRefusesAtOnce_data();
    void theAgentRefusesAtOnce();
    void continueIsDisabledAfterAndEnabledBeforeTheTexts();
    void anErrorAtTheEndIsOverwritten();
    void anErrorIsShownUntilTheWaitNoticesTheEnd();
    void theWaitRunsInSlicesOfTenMilliseconds();
    void theEndMayArriveDuringTheStartCall();
    void cancelClosesAndGoesBackToStepZero();
    void escapeCancelsOnlyWhileCancelIsVisible();
    void anUpdateWithoutAnEndKeepsItsSheet();
    void progressMovesTheIndicator_data();
    void progressMovesTheIndicator();
    void everyUpdateStartsAtZero();
    void anEndAfterARefusalMakesContinueDoNothing();
    void reopeningStartsAtStepZero();
    void unpluggingInStepOneKeepsSheetAndWait();
    void theAgentsEndClosesTheSheetAndTheWaitContinues();
    void anotherInstallFirmwareEndsTheWait();
    void hidingThePaneClosesTheSheetAndTheWaitContinues();
    void quittingEndsTheWaitAndChangesNothing();
    void anAlertMayCoverTheSheet();
    void endsOutsideAnUpdateOnlyAdvanceTheStep();
    void everyEndIsLogged();
    void noTextResizesOrExceedsTheSheet();
    void returnContinues();
    void returnOnCancelCancels();
    void anOutdatedWaitDoesNotAffectANewUpdate();
    void aWaitWithoutASheetIsNotSliced();
};

void ControllerFirmwareTest::init()
{
    slice = 0;
    fixture = std::make_unique<PaneFixture>();
    fixture->agent.usbAddress = Kitchen;
    fixture->agent.needsFirmware = true;
    fixture->agent.addCamera(Kitchen, QStringLiteral("Kitchen"), 1, QStringLiteral("4455"));
    fixture->agent.prefer(Kitchen);
    fixture->keepLog();
    fixture->show();
    fixture->takeJournal();
}

void ControllerFirmwareTest::openSheet()
{
    fixture->controller().installFirmware(nullptr);
    QVERIFY(sheetIsUp());
}

void ControllerFirmwareTest::pressContinue()
{
    QVERIFY(fixture->outlets().firmwareContinueButton->isEnabled());
    fixture->outlets().firmwareContinueButton->click();
}

void ControllerFirmwareTest::pressCancel()
{
    QVERIFY(!fixture->outlets().firmwareCancelButton->isHidden());
    fixture->outlets().firmwareCancelButton->click();
}

void ControllerFirmwareTest::startUpdate()
{
    openSheet();
    pressContinue();
    pressContinue();
}

/// The firmware update waits in short slices of the run loop. Runs `happening` in the slice with this number,
/// counted from 1. After 1000 slices the run loop reports a quit, so that no test hangs.
void ControllerFirmwareTest::inSlice(int number, std::function<void()> happening)
{
    fixture->runLoop->onSlice = [this, number, happening = std::move(happening)] {
        constexpr int Enough = 1000;
        if (++slice == number)
            happening();
        fixture->runLoop->quitting = slice > Enough;
    };
}

Look ControllerFirmwareTest::look() const
{
    const auto &outlets = fixture->outlets();
    return {outlets.firmwareMainText->text(),
            outlets.firmwareStatusText->text(),
            !outlets.firmwareCheckingIndicator->isHidden(),
            !outlets.firmwareCancelButton->isHidden(),
            outlets.firmwareContinueButton->isEnabled(),
            fixture->controller().firmwareStep()};
}

void ControllerFirmwareTest::theSheetsAppearanceFollowsEachStep()
{
    openSheet();
    QCOMPARE(fixture->sheets->windowOf(fixture->outlets().firmwareSheet), &fixture->window);
    QCOMPARE(look(), Opened);
    pressContinue();
    QCOMPARE(look(), Confirmed);
    Look during;
    inSlice(3, [&] {
        during = look();
        QVERIFY(indicator()->isAnimating());
        QCOMPARE(indicator()->doubleValue(), 0.0);
        agentReportsEnd(0);
    });
    pressContinue();
    QCOMPARE(during, Updating);
    QCOMPARE(look(), Complete);
    QVERIFY(!indicator()->isAnimating());
    QVERIFY(sheetIsUp());
    pressContinue();
    QVERIFY(!sheetIsUp());
    QCOMPARE(fixture->controller().firmwareStep(), 0);
    QCOMPARE(fixture->takeRemoteCalls().count(QStringLiteral("startUpdate")), 1);
}

void ControllerFirmwareTest::theAgentRefusesAtOnce_data()
{
    QTest::addColumn<int>("code");
    QTest::newRow("with a code") << -7;
    QTest::newRow("with an error or another type") << -1;
}

void ControllerFirmwareTest::theAgentRefusesAtOnce()
{
    QFETCH(int, code);
    fixture->agent.startUpdateResult = code;
    Look during;
    fixture->agent.during[QStringLiteral("startUpdate")] = [&] { during = look(); };
    startUpdate();
    QCOMPARE(during, Updating);
    QCOMPARE(look(), failed(code));
    // firmwareError() hides the progress bar without stopping its animation, so isAnimating() stays true.
    QVERIFY(indicator()->isAnimating());
    QCOMPARE(fixture->journal->filter(QStringLiteral("slice")), QStringList());
    pressContinue();
    QVERIFY(!sheetIsUp());
    QCOMPARE(fixture->controller().firmwareStep(), 0);
}

void ControllerFirmwareTest::continueIsDisabledAfterAndEnabledBeforeTheTexts()
{
    fixture->agent.startUpdateResult = -7;
    openSheet();
    pressContinue();
    const auto &outlets = fixture->outlets();
    const HeadlinesAtChange changes(outlets.firmwareContinueButton, outlets.firmwareMainText);
    pressContinue();
    QCOMPARE(look(), failed(-7));
    QCOMPARE(changes.headlines, (QStringList{Updating.headline, Updating.headline}));
}

void ControllerFirmwareTest::anErrorAtTheEndIsOverwritten()
{
    Look rightAfterTheEnd;
    inSlice(2, [&] {
        agentReportsEnd(4711);
        rightAfterTheEnd = look();
    });
    startUpdate();
    QCOMPARE(rightAfterTheEnd, failed(4711));
    QCOMPARE(look(), Complete);
    QVERIFY(fixture->takeLog().contains(QStringLiteral("firmwareUpdateEnded: 4711")));
}

void ControllerFirmwareTest::anErrorIsShownUntilTheWaitNoticesTheEnd()
{
    inSlice(1, [&] { fixture->controller().firmwareError(12); });
    bool stillWaiting = false;
    fixture->runLoop->onSlice = [this, first = fixture->runLoop->onSlice, &stillWaiting] {
        first();
        if (slice == 2) {
            stillWaiting = look().secondLine == QStringLiteral("Error: 12");
            agentReportsEnd(0);
        }
    };
    startUpdate();
    QVERIFY(stillWaiting);
    QCOMPARE(look(), Complete);
}

void ControllerFirmwareTest::theWaitRunsInSlicesOfTenMilliseconds()
{
    inSlice(5, [&] { agentReportsEnd(0); });
    startUpdate();
    QCOMPARE(fixture->journal->count(QStringLiteral("slice 10")), 5);
    QCOMPARE(fixture->journal->filter(QStringLiteral("slice")).size(), 5);
}

void ControllerFirmwareTest::theEndMayArriveDuringTheStartCall()
{
    fixture->agent.during[QStringLiteral("startUpdate")] = [&] { agentReportsEnd(0); };
    startUpdate();
    QCOMPARE(look(), Complete);
    QCOMPARE(fixture->journal->filter(QStringLiteral("slice")), QStringList());
}

void ControllerFirmwareTest::cancelClosesAndGoesBackToStepZero()
{
    openSheet();
    pressContinue();
    pressCancel();
    QVERIFY(!sheetIsUp());
    QCOMPARE(fixture->controller().firmwareStep(), 0);
    QCOMPARE(fixture->takeRemoteCalls().count(QStringLiteral("startUpdate")), 0);
}

void ControllerFirmwareTest::escapeCancelsOnlyWhileCancelIsVisible()
{
    auto *sheet = fixture->outlets().firmwareSheet;
    openSheet();
    QTest::keyClick(sheet, Qt::Key_Escape);
    QVERIFY(!sheetIsUp());
    inSlice(1, [&] {
        QTest::keyClick(sheet, Qt::Key_Escape);
        QTest::keyClick(sheet, Qt::Key_Return);
        QVERIFY(sheetIsUp());
        QCOMPARE(look(), Updating);
        agentReportsEnd(0);
    });
    startUpdate();
    QTest::keyClick(sheet, Qt::Key_Escape);
    QVERIFY(sheetIsUp());
    QCOMPARE(look(), Complete);
}

void ControllerFirmwareTest::anUpdateWithoutAnEndKeepsItsSheet()
{
    // The agent reports progress and other news, but never the end of the update. Only the quit of the host
    // ends the wait.
    auto *sheet = fixture->outlets().firmwareSheet;
    fixture->runLoop->onSlice = [&] {
        if (++slice == 1) {
            agentReportsProgress({{UserInfoKeys::Value, 10}, {UserInfoKeys::Total, 10}});
            fixture->agentPosts(NotificationNames::USBDeviceDisconnected);
            fixture->agentPosts(NotificationNames::CameraListChanged);
        }
        QTest::keyClick(sheet, Qt::Key_Escape);
        QVERIFY(!sheet->close());
        QVERIFY(sheetIsUp());
        QCOMPARE(look(), Updating);
        fixture->runLoop->quitting = slice == 3;
    };
    startUpdate();
    QCOMPARE(slice, 3);
    QVERIFY(fixture->controller().isConnected());
}

void ControllerFirmwareTest::progressMovesTheIndicator_data()
{
    QTest::addColumn<QVariantMap>("userInfo");
    QTest::addColumn<int>("percent");
    const auto progress = [](const QVariant &value, const QVariant &total) {
        return QVariantMap{{UserInfoKeys::Value, value}, {UserInfoKeys::Total, total}};
    };
    QTest::newRow("half") << progress(5, 10) << 50;
    QTest::newRow("all") << progress(10, 10) << 100;
    QTest::newRow("none") << progress(0, 10) << 0;
    QTest::newRow("a third is no integer division") << progress(1, 3) << 33;
    QTest::newRow("too much") << progress(20, 10) << 100;
    QTest::newRow("negative") << progress(-5, 10) << 0;
    QTest::newRow("no total") << QVariantMap{{UserInfoKeys::Value, 5}} << 100;
    QTest::newRow("total 0, value 0") << progress(0, 0) << 0;
    QTest::newRow("total negative") << progress(5, -10) << 0;
    QTest::newRow("both negative") << progress(-5, -10) << 50;
    QTest::newRow("nothing") << QVariantMap() << 0;
    QTest::newRow("words") << progress(QStringLiteral("five"), QStringLiteral("ten")) << 0;
    QTest::newRow("lowest integers") << progress(-2147483647 - 1, -1) << 100;
}

void ControllerFirmwareTest::progressMovesTheIndicator()
{
    QFETCH(QVariantMap, userInfo);
    QFETCH(int, percent);
    openSheet();
    agentReportsProgress(userInfo);
    const auto *bar = indicator();
    QCOMPARE(100 * (bar->value() - bar->minimum()) / (bar->maximum() - bar->minimum()), percent);
    QVERIFY(bar->minimum() <= bar->value() && bar->value() <= bar->maximum());
    if (userInfo.value(UserInfoKeys::Total) == QVariant(10))
        QCOMPARE(bar->doubleValue(), userInfo.value(UserInfoKeys::Value).toInt() / 10.0);
    QCOMPARE(look(), Opened);
}

void ControllerFirmwareTest::everyUpdateStartsAtZero()
{
    agentReportsProgress({{UserInfoKeys::Value, 3}, {UserInfoKeys::Total, 4}});
    QCOMPARE(indicator()->doubleValue(), 0.75);
    double atTheStart = -1.0;
    inSlice(1, [&] {
        atTheStart = indicator()->doubleValue();
        agentReportsEnd(0);
    });
    startUpdate();
    QCOMPARE(atTheStart, 0.0);
}

void ControllerFirmwareTest::anEndAfterARefusalMakesContinueDoNothing()
{
    fixture->agent.startUpdateResult = 1;
    startUpdate();
    agentReportsEnd(0);
    QCOMPARE(fixture->controller().firmwareStep(), 3);
    pressContinue();
    QVERIFY(sheetIsUp());
    QCOMPARE(fixture->controller().firmwareStep(), 3);
    fixture->controller().closeConnections();
    QVERIFY(!sheetIsUp());
    QCOMPARE(fixture->controller().firmwareStep(), 3);
}

void ControllerFirmwareTest::reopeningStartsAtStepZero()
{
    fixture->agent.startUpdateResult = 1;
    startUpdate();
    agentReportsEnd(5);
    fixture->controller().closeConnections();
    openSheet();
    QCOMPARE(look(), Opened);
}

void ControllerFirmwareTest::unpluggingInStepOneKeepsSheetAndWait()
{
    bool upAndWaiting = false;
    inSlice(1, [&] { fixture->agentPosts(NotificationNames::USBDeviceDisconnected); });
    fixture->runLoop->onSlice = [this, first = fixture->runLoop->onSlice, &upAndWaiting] {
        first();
        if (slice == 5) {
            upAndWaiting = sheetIsUp() && look() == Updating;
            agentReportsEnd(-1);
        }
    };
    startUpdate();
    QVERIFY(upAndWaiting);
    QVERIFY(sheetIsUp());
    QCOMPARE(look(), Complete);
}

void ControllerFirmwareTest::theAgentsEndClosesTheSheetAndTheWaitContinues()
{
    bool closedAndWaiting = false;
    inSlice(1, [&] { fixture->connections->killAgent(); });
    fixture->runLoop->onSlice = [this, first = fixture->runLoop->onSlice, &closedAndWaiting] {
        first();
        if (slice == 4) {
            closedAndWaiting = !sheetIsUp() && fixture->controller().firmwareStep() == 1;
            agentReportsEnd(0);
        }
    };
    startUpdate();
    QVERIFY(closedAndWaiting);
    QVERIFY(!fixture->controller().isConnected());
    QCOMPARE(look(), Complete);
}

void ControllerFirmwareTest::anotherInstallFirmwareEndsTheWait()
{
    Look reopened;
    inSlice(2, [&] {
        fixture->controller().installFirmware(nullptr);
        reopened = look();
    });
    startUpdate();
    QCOMPARE(reopened, Opened);
    QCOMPARE(slice, 2);
    QCOMPARE(fixture->controller().firmwareStep(), 0);
    QVERIFY(sheetIsUp());
    QCOMPARE(look(), Opened);
    pressContinue();
    QCOMPARE(look(), Confirmed);
}

void ControllerFirmwareTest::hidingThePaneClosesTheSheetAndTheWaitContinues()
{
    inSlice(1, [&] { fixture->hide(); });
    bool closed = false;
    fixture->runLoop->onSlice = [this, first = fixture->runLoop->onSlice, &closed] {
        first();
        if (slice == 3) {
            closed = !sheetIsUp();
            fixture->show();
            agentReportsEnd(0);
        }
    };
    startUpdate();
    QVERIFY(closed);
    QCOMPARE(look(), Complete);
}

void ControllerFirmwareTest::quittingEndsTheWaitAndChangesNothing()
{
    inSlice(3, [&] { fixture->runLoop->quitting = true; });
    fixture->runLoop->onSlice = [this] { fixture->runLoop->quitting = ++slice == 3; };
    startUpdate();
    QCOMPARE(slice, 3);
    QCOMPARE(look(), Updating);
    QVERIFY(indicator()->isAnimating());
}

void ControllerFirmwareTest::anAlertMayCoverTheSheet()
{
    inSlice(1, [&] {
        fixture->controller().pinError(3);
        agentReportsEnd(0);
    });
    startUpdate();
    QCOMPARE(fixture->sheets->alerts.size(), std::size_t(1));
    QVERIFY(fixture->sheets->dismissAlert());
    QVERIFY(sheetIsUp());
    pressContinue();
    QVERIFY(!sheetIsUp());
}

void ControllerFirmwareTest::endsOutsideAnUpdateOnlyAdvanceTheStep()
{
    agentReportsEnd(0);
    agentReportsEnd(0);
    QCOMPARE(fixture->controller().firmwareStep(), 2);
    QVERIFY(!sheetIsUp());
    fixture->agentPosts(NotificationNames::FirmwareUpdateEnded);
    QCOMPARE(fixture->controller().firmwareStep(), 3);
    openSheet();
    QCOMPARE(look(), Opened);
}

void ControllerFirmwareTest::everyEndIsLogged()
{
    fixture->turn();
    fixture->takeLog();
    agentReportsEnd(0);
    agentReportsEnd(4711);
    agentReportsEnd(-2147483647 - 1);
    fixture->agentPosts(NotificationNames::FirmwareUpdateEnded);
    QCOMPARE(
        fixture->takeLog(),
        (QStringList{QStringLiteral("firmwareUpdateEnded: 0"), QStringLiteral("firmwareUpdateEnded: 4711"),
                     QStringLiteral("firmwareUpdateEnded: -2147483648"),
                     QStringLiteral("firmwareUpdateEnded: 0")}));
}

void ControllerFirmwareTest::noTextResizesOrExceedsTheSheet()
{
    auto *sheet = fixture->outlets().firmwareSheet;
    QList<QSize> sizes;
    const auto note = [&] {
        QCoreApplication::sendPostedEvents();
        sizes.append(sheet->size());
        for (const auto *label :
             {fixture->outlets().firmwareMainText, fixture->outlets().firmwareStatusText}) {
            QVERIFY2(label->height() >= label->heightForWidth(label->width()), qPrintable(label->text()));
            QVERIFY2(label->width() >= label->fontMetrics().horizontalAdvance(label->text()),
                     qPrintable(label->text()));
        }
    };
    openSheet();
    note();
    pressContinue();
    note();
    inSlice(1, [&] {
        note();
        fixture->controller().firmwareError(-2147483647);
        note();
        agentReportsEnd(0);
    });
    pressContinue();
    note();
    QCOMPARE(sizes, QList<QSize>({sizes[0], sizes[0], sizes[0], sizes[0], sizes[0]}));
}

void ControllerFirmwareTest::returnContinues()
{
    auto *sheet = fixture->outlets().firmwareSheet;
    openSheet();
    QCOMPARE(sheet->focusWidget(), static_cast<QWidget *>(fixture->outlets().firmwareContinueButton));
    QTest::keyClick(sheet, Qt::Key_Return);
    QCOMPARE(look(), Confirmed);
    inSlice(1, [&] { agentReportsEnd(0); });
    QTest::keyClick(sheet, Qt::Key_Return);
    QCOMPARE(look(), Complete);
    QCOMPARE(sheet->focusWidget(), static_cast<QWidget *>(fixture->outlets().firmwareContinueButton));
    QTest::keyClick(sheet, Qt::Key_Return);
    QVERIFY(!sheetIsUp());
}

void ControllerFirmwareTest::returnOnCancelCancels()
{
    auto *cancel = fixture->outlets().firmwareCancelButton;
    openSheet();
    pressContinue();
    cancel->setFocus(Qt::TabFocusReason);
    QTest::keyClick(cancel, Qt::Key_Return);
    QVERIFY(!sheetIsUp());
    QCOMPARE(fixture->takeRemoteCalls().count(QStringLiteral("startUpdate")), 0);
}

void ControllerFirmwareTest::anOutdatedWaitDoesNotAffectANewUpdate()
{
    // The first update's agent dies. While the first update still waits, a second update starts and ends.
    Look secondUpdate;
    inSlice(1, [&] { fixture->connections->killAgent(); });
    fixture->runLoop->onSlice = [this, first = fixture->runLoop->onSlice, &secondUpdate] {
        first();
        if (slice == 2) {
            fixture->agent.running = true;
            fixture->agentPosts(NotificationNames::AgentStarted);
            openSheet();
            pressContinue();
            pressContinue();
            fixture->controller().installFirmware(nullptr);
        } else if (slice == 3) {
            secondUpdate = look();
            agentReportsEnd(0);
            QCOMPARE(look().step, 2);
        }
    };
    startUpdate();
    QCOMPARE(secondUpdate, Updating);
    QCOMPARE(look(), Opened);
    QVERIFY(sheetIsUp());
}

void ControllerFirmwareTest::aWaitWithoutASheetIsNotSliced()
{
    inSlice(1, [&] { fixture->connections->killAgent(); });
    fixture->runLoop->onSlice = [this, first = fixture->runLoop->onSlice] {
        first();
        if (slice == 2) {
            QCOMPARE(fixture->journal->last(), QStringLiteral("wait"));
            agentReportsEnd(0);
        }
    };
    startUpdate();
    QCOMPARE(slice, 2);
}

QTEST_MAIN(ControllerFirmwareTest)
#include "ControllerFirmware_test.moc"
