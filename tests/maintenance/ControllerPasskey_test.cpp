#include "agent/NotificationNames.h"
#include "cameras/KS7AnimatingStatusTableView.h"
#include "platform/sheets/Sheets.h"
#include "settings/KS7Domain.h"
#include "tests/support/PaneFixture.h"

#include <QAction>
#include <QClipboard>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QToolButton>

using namespace std::chrono_literals;

namespace {

const auto Kitchen = QStringLiteral("00-11-22-33-44-55");

} // namespace

/// Tests the passkey sheet and the two menu items that need a camera on the USB cable.
class ControllerPasskeyTest : public QObject {
    Q_OBJECT
private:
    void showPaneWithCamera(int status = 1);
    void plugIn(const QString &address = Kitchen) { fixture->agent.usbAddress = address; }
    void changePasskey() { fixture->controller().changePIN(nullptr); }
    void openSheet();
    void paste(const QString &text);
    void pressOkay();
    void agentReports(const QVariantMap &userInfo)
    {
        fixture->agentPosts(NotificationNames::PassKeySet, userInfo);
    }
    void expectAlert(const QString &title, const QString &message,
                     platform::AlertKind kind = platform::AlertKind::Error);
    void expectNoAlert() { QVERIFY(fixture->sheets->alerts.empty()); }
    [[nodiscard]] QAction *itemWithTag(int tag) const;
    [[nodiscard]] QPushButton *okay() const { return fixture->outlets().pinOkayButton; }
    [[nodiscard]] bool sheetIsUp() const { return fixture->sheets->isUp(fixture->outlets().pinSheet); }
    [[nodiscard]] bool firmwareSheetIsUp() const
    {
        return fixture->sheets->isUp(fixture->outlets().firmwareSheet);
    }

    std::unique_ptr<PaneFixture> fixture;

private Q_SLOTS:
    void init() { fixture = std::make_unique<PaneFixture>(); }
    void cleanup() { fixture.reset(); }

    void withoutACableAnAlertAsksForOne_data();
    void withoutACableAnAlertAsksForOne();
    void aCameraInUseOpensAnAlertInsteadOfTheSheet_data();
    void aCameraInUseOpensAnAlertInsteadOfTheSheet();
    void withoutASelectionTheAgentsReplyDecides();
    void anIdleCameraAtTheCableOpensTheSheet();
    void theSheetOpensEmptyAgain();
    void okNeedsOneToSixteenDigits_data();
    void okNeedsOneToSixteenDigits();
    void returnIsOkOnlyForAPasskey();
    void escapeCancels();
    void okEndsTheSheetAndSendsHalfASecondLater();
    void theTextIsReadWhenItIsSent();
    void aSheetOpenedAgainAtOnceSendsItsOwnText_data();
    void aSheetOpenedAgainAtOnceSendsItsOwnText();
    void unpluggingAndHidingAfterOkSendsNothing();
    void returnOnCancelCancels();
    void undoRestoresNoPasskey();
    void anAgentThatDiesAfterOkReceivesNoCall();
    void anImmediateErrorIsShown_data();
    void anImmediateErrorIsShown();
    void cancelSendsNothing();
    void aReportedErrorIsShownAndThePasskeyNotRead();
    void aReportWithoutPasskeyDoesNothing();
    void successForgetsThePairingAndSearches();
    void successWithNoRowSendsMinusOne();
    void thePasskeyIsPlainTextInTheMessage();
    void unpluggingClosesTheSheet();
    void unpluggingClosesTheFirmwareSheetAtStepZeroOnly();
    void theAgentsEndClosesTheSheet();
    void theUpdateItemNeedsACameraThatNeedsIt_data();
    void theUpdateItemNeedsACameraThatNeedsIt();
    void pluggingInUpdatesTheMenuItems();
    void aCableEventIsLoggedThenEndsTheSheetsThenCallsTheAgent();
    void withoutAnAgentTheUpdateItemIsDisabled();
    void thePasskeyIsNeverLogged();
};

void ControllerPasskeyTest::showPaneWithCamera(int status)
{
    fixture->agent.addCamera(Kitchen, QStringLiteral("Kitchen"), status, QStringLiteral("4455"));
    fixture->agent.prefer(Kitchen);
    fixture->show();
    fixture->runLoop->advance(1s);
    fixture->takeJournal();
}

void ControllerPasskeyTest::openSheet()
{
    plugIn();
    showPaneWithCamera();
    changePasskey();
    QVERIFY(sheetIsUp());
}

void ControllerPasskeyTest::paste(const QString &text)
{
    QGuiApplication::clipboard()->setText(text);
    auto *field = fixture->outlets().newPINText;
    field->selectAll();
    field->del();
    QTest::keySequence(field, QKeySequence::Paste);
}

void ControllerPasskeyTest::pressOkay()
{
    QVERIFY(okay()->isEnabled());
    okay()->click();
}

void ControllerPasskeyTest::expectAlert(const QString &title, const QString &message,
                                        platform::AlertKind kind)
{
    QCOMPARE(fixture->sheets->alerts.size(), std::size_t(1));
    const auto &shown = fixture->sheets->alerts.front();
    QCOMPARE(shown.alert.title, title);
    QCOMPARE(shown.alert.message, message);
    QCOMPARE(static_cast<int>(shown.alert.kind), static_cast<int>(kind));
    QCOMPARE(shown.alert.defaultButton, QStringLiteral("OK"));
    QCOMPARE(shown.window, &fixture->window);
    QVERIFY2(fixture->sheets->dismissAlert(), "its button takes it off the screen");
    expectNoAlert();
}

QAction *ControllerPasskeyTest::itemWithTag(int tag) const
{
    const auto actions = fixture->outlets().pulldownMenu->menu()->actions();
    for (auto *action : actions) {
        if (action->data().toInt() == tag)
            return action;
    }
    return nullptr;
}

void ControllerPasskeyTest::withoutACableAnAlertAsksForOne_data()
{
    QTest::addColumn<int>("status");
    QTest::newRow("idle") << 1;
    QTest::newRow("streaming") << 4;
    QTest::newRow("not found") << 0;
}

void ControllerPasskeyTest::withoutACableAnAlertAsksForOne()
{
    QFETCH(int, status);
    showPaneWithCamera(status);
    changePasskey();
    expectAlert(
        QStringLiteral("Connect To USB"),
        QStringLiteral("To change your Bluetooth Passcode, you must connect the KS-7 to your computer via "
                       "USB. Please connect the camera and try again."),
        platform::AlertKind::Information);
    QVERIFY(!sheetIsUp());
}

void ControllerPasskeyTest::aCameraInUseOpensAnAlertInsteadOfTheSheet_data()
{
    QTest::addColumn<int>("status");
    for (const int status : {0, 2, 3, 4, 5, 77, -1})
        QTest::addRow("status %d", status) << status;
}

void ControllerPasskeyTest::aCameraInUseOpensAnAlertInsteadOfTheSheet()
{
    QFETCH(int, status);
    plugIn();
    showPaneWithCamera(status);
    changePasskey();
    expectAlert(
        QStringLiteral("Camera In Use"),
        QStringLiteral(
            "To change your Bluetooth Passcode, the KS-7 camera and microphone must not be in use. Please "
            "stop any programs from using the camera and try again when the status reads \"Not "
            "Streaming\"."),
        platform::AlertKind::Information);
    QVERIFY(!sheetIsUp());
}

void ControllerPasskeyTest::withoutASelectionTheAgentsReplyDecides()
{
    fixture->show();
    fixture->takeJournal();
    plugIn(QStringLiteral("another"));
    changePasskey();
    QCOMPARE(fixture->takeRemoteCalls(), QStringList{QStringLiteral("connectedCamHasBTAddress nil")});
    QCOMPARE(fixture->sheets->alertTitles.constLast(), QStringLiteral("Connect To USB"));
    fixture->sheets->dismissAlert();
    fixture->agent.everyAddressIsAtTheCable = true;
    changePasskey();
    QCOMPARE(fixture->sheets->alertTitles.constLast(), QStringLiteral("Camera In Use"));
}

void ControllerPasskeyTest::anIdleCameraAtTheCableOpensTheSheet()
{
    openSheet();
    expectNoAlert();
    QCOMPARE(fixture->sheets->windowOf(fixture->outlets().pinSheet), &fixture->window);
    QVERIFY(!okay()->isEnabled());
    QCOMPARE(fixture->outlets().newPINText->text(), QString());
    QCOMPARE(fixture->outlets().pinSheet->focusWidget(),
             static_cast<QWidget *>(fixture->outlets().newPINText));
    QCOMPARE(fixture->outlets().newPINText->echoMode(), QLineEdit::Normal);
}

void ControllerPasskeyTest::theSheetOpensEmptyAgain()
{
    openSheet();
    paste(QStringLiteral("1234"));
    fixture->controller().pinCancel(nullptr);
    changePasskey();
    QCOMPARE(fixture->outlets().newPINText->text(), QString());
    QVERIFY(!okay()->isEnabled());
}

void ControllerPasskeyTest::okNeedsOneToSixteenDigits_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("enabled");
    QTest::newRow("nothing") << QString() << false;
    QTest::newRow("one") << QStringLiteral("7") << true;
    QTest::newRow("leading zeros") << QStringLiteral("0000") << true;
    QTest::newRow("16") << QStringLiteral("1234567890123456") << true;
    QTest::newRow("17") << QStringLiteral("12345678901234567") << false;
    QTest::newRow("a thousand") << QString(1000, QLatin1Char('1')) << false;
    QTest::newRow("one letter among digits") << QStringLiteral("12a4") << false;
    QTest::newRow("letters") << QStringLiteral("passkey") << false;
    QTest::newRow("blank inside") << QStringLiteral("12 34") << false;
    QTest::newRow("leading blank") << QStringLiteral(" 1234") << false;
    QTest::newRow("trailing blank") << QStringLiteral("1234 ") << false;
    QTest::newRow("sign") << QStringLiteral("-1") << false;
    QTest::newRow("point") << QStringLiteral("1.5") << false;
    QTest::newRow("Arabic-Indic") << QStringLiteral("٠١٢٣٤٥٦٧٨٩") << true;
    QTest::newRow("full width and ASCII") << QStringLiteral("１２3") << true;
    QTest::newRow("Devanagari") << QStringLiteral("१२३") << true;
    QTest::newRow("superscript") << QStringLiteral("²") << false;
    QTest::newRow("Roman numeral") << QStringLiteral("Ⅳ") << false;
    QTest::newRow("fraction") << QStringLiteral("½") << false;
    QTest::newRow("16 beyond the basic plane") << QStringLiteral("𝟏").repeated(16) << true;
    QTest::newRow("17 beyond the basic plane") << QStringLiteral("𝟏").repeated(17) << false;
    QTest::newRow("lone surrogate") << QString(QChar(0xD835)) << false;
    QTest::newRow("combining mark") << QStringLiteral("1\u0301") << false;
}

void ControllerPasskeyTest::okNeedsOneToSixteenDigits()
{
    QFETCH(QString, text);
    QFETCH(bool, enabled);
    openSheet();
    // Whether OK is enabled depends only on the present text of the passkey field. So begin once with a valid
    // text and once with an invalid one.
    for (const auto &before : {QStringLiteral("1"), QStringLiteral("x")}) {
        paste(before);
        paste(text);
        QCOMPARE(fixture->outlets().newPINText->text(), text);
        QCOMPARE(okay()->isEnabled(), enabled);
    }
}

void ControllerPasskeyTest::returnIsOkOnlyForAPasskey()
{
    openSheet();
    paste(QStringLiteral("12x"));
    QTest::keyClick(fixture->outlets().newPINText, Qt::Key_Return);
    QVERIFY(sheetIsUp());
    QTest::keyClick(fixture->outlets().newPINText, Qt::Key_Backspace);
    QTest::keyClick(fixture->outlets().newPINText, Qt::Key_Return);
    QVERIFY(!sheetIsUp());
    fixture->runLoop->advance(500ms);
    QVERIFY(fixture->takeRemoteCalls().contains(QStringLiteral("setPassKey 12")));
}

void ControllerPasskeyTest::escapeCancels()
{
    openSheet();
    paste(QStringLiteral("12"));
    QTest::keyClick(fixture->outlets().newPINText, Qt::Key_Escape);
    QVERIFY(!sheetIsUp());
    fixture->runLoop->advance(2s);
    QCOMPARE(fixture->takeRemoteCalls().filter(QStringLiteral("setPassKey")), QStringList());
}

void ControllerPasskeyTest::okEndsTheSheetAndSendsHalfASecondLater()
{
    openSheet();
    paste(QStringLiteral("0٤2"));
    pressOkay();
    QVERIFY(!sheetIsUp());
    fixture->takeJournal();
    fixture->runLoop->advance(499ms);
    QCOMPARE(fixture->takeRemoteCalls().filter(QStringLiteral("setPassKey")), QStringList());
    fixture->runLoop->advance(1ms);
    QCOMPARE(fixture->takeRemoteCalls().filter(QStringLiteral("setPassKey")),
             QStringList{QStringLiteral("setPassKey 0٤2")});
    expectNoAlert();
    fixture->runLoop->advance(5s);
    QCOMPARE(fixture->takeRemoteCalls().filter(QStringLiteral("setPassKey")), QStringList());
}

void ControllerPasskeyTest::theTextIsReadWhenItIsSent()
{
    openSheet();
    paste(QStringLiteral("1234"));
    pressOkay();
    fixture->takeJournal();
    fixture->outlets().newPINText->setText(QStringLiteral("77"));
    fixture->runLoop->advance(500ms);
    QCOMPARE(fixture->takeRemoteCalls().filter(QStringLiteral("setPassKey")),
             QStringList{QStringLiteral("setPassKey 77")});
}

void ControllerPasskeyTest::aSheetOpenedAgainAtOnceSendsItsOwnText_data()
{
    QTest::addColumn<QString>("typed");
    QTest::newRow("empty") << QString();
    QTest::newRow("half-typed") << QStringLiteral("5");
    QTest::newRow("no passkey") << QStringLiteral("5x");
}

void ControllerPasskeyTest::aSheetOpenedAgainAtOnceSendsItsOwnText()
{
    QFETCH(QString, typed);
    openSheet();
    paste(QStringLiteral("1234"));
    pressOkay();
    fixture->takeJournal();
    changePasskey();
    fixture->outlets().newPINText->setText(typed);
    fixture->runLoop->advance(500ms);
    QCOMPARE(fixture->takeRemoteCalls().filter(QStringLiteral("setPassKey")),
             QStringList{QStringLiteral("setPassKey ") + typed});
    QVERIFY(sheetIsUp());
}

void ControllerPasskeyTest::unpluggingAndHidingAfterOkSendsNothing()
{
    openSheet();
    fixture->agent.setPassKeyResult = -1;
    paste(QStringLiteral("1234"));
    pressOkay();
    fixture->agentPosts(NotificationNames::USBDeviceDisconnected);
    fixture->hide();
    fixture->runLoop->advance(1s);
    QCOMPARE(fixture->takeRemoteCalls().filter(QStringLiteral("setPassKey")), QStringList());
    expectNoAlert();
    fixture->show();
    fixture->runLoop->advance(1s);
    QVERIFY(!sheetIsUp());
    expectNoAlert();
}

void ControllerPasskeyTest::returnOnCancelCancels()
{
    openSheet();
    paste(QStringLiteral("1234"));
    auto *cancel = fixture->outlets().pinSheet->findChild<QPushButton *>(QStringLiteral("pinCancelButton"));
    cancel->setFocus(Qt::TabFocusReason);
    QTest::keyClick(cancel, Qt::Key_Return);
    QVERIFY(!sheetIsUp());
    fixture->runLoop->advance(1s);
    QCOMPARE(fixture->takeRemoteCalls().filter(QStringLiteral("setPassKey")), QStringList());
}

void ControllerPasskeyTest::undoRestoresNoPasskey()
{
    openSheet();
    paste(QStringLiteral("1234"));
    fixture->controller().pinCancel(nullptr);
    changePasskey();
    auto *field = fixture->outlets().newPINText;
    for (int time = 0; time < 3; ++time)
        QTest::keySequence(field, QKeySequence::Undo);
    QCOMPARE(field->text(), QString());
    QTest::keySequence(field, QKeySequence::Redo);
    QCOMPARE(field->text(), QString());
    QVERIFY(!okay()->isEnabled());
}

void ControllerPasskeyTest::anAgentThatDiesAfterOkReceivesNoCall()
{
    openSheet();
    paste(QStringLiteral("1234"));
    pressOkay();
    fixture->connections->killAgent();
    fixture->runLoop->turn();
    fixture->takeJournal();
    fixture->agent.setPassKeyResult = -1;
    fixture->runLoop->advance(1s);
    QCOMPARE(fixture->takeRemoteCalls().filter(QStringLiteral("setPassKey")), QStringList());
    expectNoAlert();
}

void ControllerPasskeyTest::anImmediateErrorIsShown_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("number");
    QTest::newRow("one") << 1 << QStringLiteral("1");
    QTest::newRow("negative") << -536870206 << QStringLiteral("-536870206");
    QTest::newRow("the agent answered with an error or another type") << -1 << QStringLiteral("-1");
}

void ControllerPasskeyTest::anImmediateErrorIsShown()
{
    QFETCH(int, code);
    QFETCH(QString, number);
    openSheet();
    fixture->agent.setPassKeyResult = code;
    paste(QStringLiteral("1234"));
    pressOkay();
    fixture->runLoop->advance(500ms);
    expectAlert(QStringLiteral("Passkey Not Changed"),
                QStringLiteral("An error occurred setting your camera's Bluetooth passkey. Please try "
                               "again.\nError: ")
                    + number);
}

void ControllerPasskeyTest::cancelSendsNothing()
{
    openSheet();
    paste(QStringLiteral("1234"));
    fixture->outlets().pinSheet->findChild<QPushButton *>(QStringLiteral("pinCancelButton"))->click();
    QVERIFY(!sheetIsUp());
    QCOMPARE(fixture->runLoop->pendingCount(), std::size_t(0));
}

void ControllerPasskeyTest::aReportedErrorIsShownAndThePasskeyNotRead()
{
    showPaneWithCamera();
    agentReports({{UserInfoKeys::Result, 9}, {UserInfoKeys::PassKey, QStringLiteral("1234")}});
    expectAlert(QStringLiteral("Passkey Not Changed"),
                QStringLiteral("An error occurred setting your camera's Bluetooth passkey. Please try "
                               "again.\nError: 9"));
    QCOMPARE(fixture->takeRemoteCalls().filter(QStringLiteral("removeCameraAtIndex")), QStringList());
    QCOMPARE(fixture->distributedCenter->postCount(NotificationNames::StartDiscovering), 0);
}

void ControllerPasskeyTest::aReportWithoutPasskeyDoesNothing()
{
    showPaneWithCamera();
    agentReports({{UserInfoKeys::Result, 0}});
    agentReports({});
    expectNoAlert();
    QCOMPARE(fixture->takeJournal(), QStringList());
}

void ControllerPasskeyTest::successForgetsThePairingAndSearches()
{
    showPaneWithCamera();
    agentReports({{UserInfoKeys::Result, 0}, {UserInfoKeys::PassKey, QStringLiteral("0042")}});
    const auto journal = fixture->takeJournal();
    const auto removed = journal.indexOf(QStringLiteral("remote removeCameraAtIndex 0 no"));
    const auto told = journal.indexOf(QStringLiteral("alert Passkey Changed"));
    const auto searching = journal.indexOf(QStringLiteral("post KS7StartDiscovering"));
    QVERIFY2(0 <= removed && removed < told && told < searching, qPrintable(journal.join(QLatin1Char('\n'))));
    expectAlert(
        QStringLiteral("Passkey Changed"),
        QStringLiteral("Your camera's Bluetooth passkey has been set to \"0042\".  You will be asked for "
                       "this passkey the next time you use the camera."),
        platform::AlertKind::Information);
}

void ControllerPasskeyTest::successWithNoRowSendsMinusOne()
{
    fixture->show();
    fixture->takeJournal();
    agentReports({{UserInfoKeys::PassKey, QStringLiteral("1")}});
    QVERIFY(fixture->takeRemoteCalls().contains(QStringLiteral("removeCameraAtIndex -1 no")));
}

void ControllerPasskeyTest::thePasskeyIsPlainTextInTheMessage()
{
    showPaneWithCamera();
    const auto odd = QStringLiteral("%1 %@ %n <b>1</b>");
    agentReports({{UserInfoKeys::PassKey, odd}});
    expectAlert(
        QStringLiteral("Passkey Changed"),
        QStringLiteral("Your camera's Bluetooth passkey has been set to \"") + odd
            + QStringLiteral("\".  You will be asked for this passkey the next time you use the camera."),
        platform::AlertKind::Information);
}

void ControllerPasskeyTest::unpluggingClosesTheSheet()
{
    openSheet();
    fixture->agentPosts(NotificationNames::USBDeviceDisconnected);
    QVERIFY(!sheetIsUp());
    expectNoAlert();
    fixture->agentPosts(NotificationNames::USBDeviceDisconnected);
}

void ControllerPasskeyTest::unpluggingClosesTheFirmwareSheetAtStepZeroOnly()
{
    showPaneWithCamera();
    fixture->controller().installFirmware(nullptr);
    fixture->agentPosts(NotificationNames::USBDeviceDisconnected);
    QVERIFY(!firmwareSheetIsUp());
    fixture->controller().installFirmware(nullptr);
    fixture->controller().firmwareContinue(nullptr);
    fixture->agentPosts(NotificationNames::USBDeviceDisconnected);
    QVERIFY(firmwareSheetIsUp());
    for (const int step : {2, 3}) {
        fixture->agentPosts(NotificationNames::FirmwareUpdateEnded);
        QCOMPARE(fixture->controller().firmwareStep(), step);
        fixture->agentPosts(NotificationNames::USBDeviceDisconnected);
        QVERIFY2(firmwareSheetIsUp(), "the person reads how it ended");
    }
}

void ControllerPasskeyTest::theAgentsEndClosesTheSheet()
{
    openSheet();
    paste(QStringLiteral("1234"));
    fixture->connections->killAgent();
    fixture->runLoop->turn();
    QVERIFY(!sheetIsUp());
}

void ControllerPasskeyTest::theUpdateItemNeedsACameraThatNeedsIt_data()
{
    QTest::addColumn<bool>("atTheCable");
    QTest::addColumn<bool>("needsFirmware");
    QTest::newRow("not there, up to date") << false << false;
    QTest::newRow("not there, old") << false << true;
    QTest::newRow("there, up to date") << true << false;
    QTest::newRow("there, old") << true << true;
}

void ControllerPasskeyTest::theUpdateItemNeedsACameraThatNeedsIt()
{
    QFETCH(bool, atTheCable);
    QFETCH(bool, needsFirmware);
    plugIn(atTheCable ? Kitchen : QStringLiteral("another"));
    fixture->agent.needsFirmware = needsFirmware;
    showPaneWithCamera();
    itemWithTag(34)->setEnabled(false);
    fixture->controller().enableUSBOptions();
    QVERIFY(itemWithTag(34)->isEnabled());
    QCOMPARE(itemWithTag(35)->isEnabled(), atTheCable && needsFirmware);
    // The pane calls connectedCamNeedsFirmwareUpdate only if the selected camera is on the USB cable.
    QCOMPARE(fixture->takeRemoteCalls().contains(QStringLiteral("connectedCamNeedsFirmwareUpdate")),
             atTheCable);
    QCOMPARE(itemWithTag(34)->text(), QStringLiteral("Change Passkey…"));
    QCOMPARE(itemWithTag(35)->text(), QStringLiteral("Update Firmware…"));
}

void ControllerPasskeyTest::pluggingInUpdatesTheMenuItems()
{
    showPaneWithCamera();
    QVERIFY(!itemWithTag(35)->isEnabled());
    plugIn();
    fixture->agent.needsFirmware = true;
    fixture->agentPosts(NotificationNames::USBDeviceConnected);
    QVERIFY(itemWithTag(35)->isEnabled());
    plugIn(QStringLiteral("none"));
    fixture->agentPosts(NotificationNames::USBDeviceDisconnected);
    QVERIFY(!itemWithTag(35)->isEnabled());
    QVERIFY(itemWithTag(34)->isEnabled());
}

void ControllerPasskeyTest::aCableEventIsLoggedThenEndsTheSheetsThenCallsTheAgent()
{
    fixture->keepLog();
    openSheet();
    fixture->controller().installFirmware(nullptr);
    fixture->takeLog();
    QStringList logged;
    QList<bool> sheetsUp;
    fixture->agent.during[QStringLiteral("connectedCamHasBTAddress")] = [&] {
        logged = fixture->takeLog();
        sheetsUp = {sheetIsUp(), firmwareSheetIsUp()};
    };
    fixture->agentPosts(NotificationNames::USBDeviceConnected);
    QCOMPARE(logged, QStringList{QStringLiteral("USB device connected")});
    QCOMPARE(sheetsUp, (QList<bool>{true, true}));
    fixture->agentPosts(NotificationNames::USBDeviceDisconnected);
    QCOMPARE(logged, QStringList{QStringLiteral("USB device disconnected")});
    QCOMPARE(sheetsUp, (QList<bool>{false, false}));
    QCOMPARE(fixture->takeLog(), QStringList());
}

void ControllerPasskeyTest::withoutAnAgentTheUpdateItemIsDisabled()
{
    plugIn();
    fixture->agent.needsFirmware = true;
    fixture->agent.usbServerRunning = false;
    showPaneWithCamera();
    QVERIFY(!itemWithTag(35)->isEnabled());
    changePasskey();
    QCOMPARE(fixture->sheets->alertTitles.constLast(), QStringLiteral("Connect To USB"));
}

void ControllerPasskeyTest::thePasskeyIsNeverLogged()
{
    const QByteArray passkey("8675309112358");
    fixture->defaults->agentWrites(PreferenceKeys::LogToFile, true);
    openSheet();
    paste(QString::fromLatin1(passkey));
    pressOkay();
    fixture->runLoop->advance(1s);
    agentReports({{UserInfoKeys::Result, 0}, {UserInfoKeys::PassKey, QString::fromLatin1(passkey)}});
    fixture->agentPosts(NotificationNames::USBDeviceDisconnected);
    QByteArray logged;
    QDirIterator files(QDir::homePath() + QStringLiteral("/Library/Logs"), QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        QVERIFY(file.open(QIODevice::ReadOnly));
        logged += file.readAll();
    }
    QVERIFY(logged.contains("USB device disconnected"));
    QVERIFY(!logged.contains(passkey));
}

QTEST_MAIN(ControllerPasskeyTest)
#include "ControllerPasskey_test.moc"
