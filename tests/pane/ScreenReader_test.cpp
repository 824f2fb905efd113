#include "agent/NotificationNames.h"
#include "cameras/KS7AnimatingStatusTableView.h"
#include "platform/QtCompat.h"
#include "platform/capture/Capture.h"
#include "platform/desktop/Workspace.h"
#include "platform/sheets/Sheets.h"
#include "tests/support/ActiveWindow.h"
#include "tests/support/AssistivePrograms.h"
#include "tests/support/PaneFixture.h"
#include "widgets/Indicators.h"
#include "widgets/NoticeStrip.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QToolButton>

namespace Names = NotificationNames;

namespace {

/// Collects the texts that a screen reader would say: announcements, the object that gets the focus, and new
/// descriptions of that object. It reads an object on the next turn of the event loop, because a screen
/// reader is another process.
class Reader : public QObject {
public:
    QStringList said;
    /// Object names of the widgets whose description or name was reported as changed.
    QStringList changed;

    void hear(QAccessibleEvent *event)
    {
        if (const QString news = AssistivePrograms::announcementIn(event); !news.isNull())
            said.append(news);
        auto *source = event->accessibleInterface();
        auto *cell = source ? source->tableCellInterface() : nullptr;
        auto *widget = source ? qobject_cast<QWidget *>((cell ? cell->table() : source)->object()) : nullptr;
        if (!widget)
            return;
        const int row = cell ? cell->rowIndex() : -1;
        if (event->type() == QAccessible::Focus)
            follow(widget, row);
        else if (event->type() == QAccessible::DescriptionChanged)
            hearDescription(widget);
        else if (event->type() == QAccessible::NameChanged)
            hearName(widget, row);
    }

    /// Simulates that a window gets the focus.
    void enter(QWidget *window)
    {
        said.append(window->accessibleDescription());
        follow(window->focusWidget(), -1);
    }

private:
    void follow(QWidget *widget, int row)
    {
        if (mFocus == widget && mRow == row)
            return;
        mFocus = widget;
        mRow = row;
        const auto read = [this, widget = mFocus, row] {
            if (auto *focus = mFocus == widget && mRow == row ? reached() : nullptr)
                said.append(focus->text(row < 0 ? QAccessible::Description : QAccessible::Name));
        };
        QMetaObject::invokeMethod(this, read, Qt::QueuedConnection);
    }

    /// The object with the focus; null after its row was removed.
    [[nodiscard]] QAccessibleInterface *reached() const
    {
        auto *focus = mFocus ? QAccessible::queryAccessibleInterface(mFocus) : nullptr;
        return focus && mRow >= 0 ? focus->child(mRow) : focus;
    }

    void hearDescription(QWidget *widget)
    {
        changed.append(widget->objectName());
        const bool holdsFocus = reached() && (widget == mFocus || widget->isAncestorOf(mFocus));
        if (platform::tellsNewDescriptions() && holdsFocus && widget->isVisible())
            said.append(widget->accessibleDescription());
    }

    void hearName(QWidget *widget, int row)
    {
        changed.append(widget->objectName());
        if (widget == mFocus && row >= 0 && row == mRow)
            said.append(reached()->text(QAccessible::Name));
    }

    QPointer<QWidget> mFocus;
    int mRow = -1;
};

Reader *reader = nullptr;

const auto NoAgent = QStringLiteral("The camera agent is not running or does not answer. Leave this page or "
                                    "close this window, and open it again.");

} // namespace

/// Tests which texts a screen reader says without a request, and that it says each text once.
class ScreenReaderTest : public QObject {
    Q_OBJECT

    std::unique_ptr<PaneFixture> mFixture;
    AssistivePrograms mAssistivePrograms;
    Reader mReader;

    Outlets &outlets() { return mFixture->outlets(); }
    KS7SettingsWindowController &controller() { return mFixture->controller(); }

    void addCamera(int status = 1)
    {
        mFixture->agent.addCamera(QStringLiteral("a"), QStringLiteral("Kitchen"), status,
                                  QStringLiteral("2A9C"));
        mFixture->agent.prefer(QStringLiteral("a"));
    }

    void showPane()
    {
        mFixture->show();
        makeActive(&mFixture->window);
        settle();
        mReader.said.clear();
        mReader.changed.clear();
    }

    /// Delivers the events that are queued in the event loop.
    void settle()
    {
        mFixture->runLoop->turn();
        for (int turn = 0; turn < 3; ++turn)
            QCoreApplication::processEvents();
    }

    void focus(QWidget *widget)
    {
        widget->setFocus();
        settle();
        mReader.said.clear();
    }

    void agentPosts(const QString &name, const QVariantMap &userInfo = {})
    {
        mFixture->agentPosts(name, userInfo);
        settle();
    }

    void statusBecomes(int status)
    {
        addCamera(status);
        agentPosts(Names::CameraListChanged);
    }

    void enter(QWidget *sheet)
    {
        makeActive(sheet);
        mReader.enter(sheet);
        settle();
    }

    void openFirmwareSheet()
    {
        mFixture->agent.usbAddress = QStringLiteral("a");
        mFixture->agent.needsFirmware = true;
        addCamera();
        showPane();
        controller().installFirmware(nullptr);
        enter(outlets().firmwareSheet);
    }

    /// Returns the texts said since the last call that contain `text`.
    int timesSaid(const QString &text)
    {
        const auto count = static_cast<int>(mReader.said.filter(text).size());
        if (count != 1)
            qWarning() << "said:" << mReader.said;
        mReader.said.clear();
        return count;
    }

public:
    /// QTEST_MAIN calls initMain() before it constructs the application. The function must be public for
    /// that.
    static void initMain() { AssistivePrograms::prepare(); }

private Q_SLOTS:
    void init()
    {
        reader = &mReader;
        QAccessible::installUpdateHandler([](QAccessibleEvent *event) { reader->hear(event); });
        mFixture = std::make_unique<PaneFixture>();
        // No assistive program is active when the first test starts.
        if (QByteArray(QTest::currentTestFunction()) != "theFirstStatusAfterTheReadersStartIsSaid")
            QVERIFY(mAssistivePrograms.come());
    }
    void cleanup() { mFixture.reset(); }
    void cleanupTestCase() { mAssistivePrograms.leave(); }

    void theFirstStatusAfterTheReadersStartIsSaid()
    {
        QVERIFY(!QAccessible::isActive());
        addCamera();
        showPane();
        QVERIFY(mAssistivePrograms.come());
        outlets().enableKS7Checkbox->setFocus();
        focus(outlets().cameraListTable);
        statusBecomes(4);
        QCOMPARE(timesSaid(QStringLiteral("Kitchen, Streaming")), 1);
    }

    void aNewStatusIsSaidOnceWhereverTheKeyboardIs_data()
    {
        QTest::addColumn<bool>("isInList");
        QTest::newRow("in the list") << true;
        QTest::newRow("elsewhere") << false;
    }
    void aNewStatusIsSaidOnceWhereverTheKeyboardIs()
    {
        QFETCH(bool, isInList);
        addCamera();
        showPane();
        outlets().enableKS7Checkbox->setFocus();
        focus(isInList ? static_cast<QWidget *>(outlets().cameraListTable) : outlets().enableKS7Checkbox);
        statusBecomes(3);
        QCOMPARE(timesSaid(QStringLiteral("Kitchen, Starting")), isInList ? 1 : 0);
        statusBecomes(4);
        QCOMPARE(timesSaid(QStringLiteral("Kitchen, Streaming")), 1);
        agentPosts(Names::CameraListChanged);
        QCOMPARE(mReader.said, QStringList());
    }

    void theTextOfTheEmptyListIsSaidOnce()
    {
        showPane();
        outlets().enableKS7Checkbox->setFocus();
        focus(outlets().cameraListTable);
        agentPosts(Names::StartedDiscovering);
        QCOMPARE(timesSaid(QStringLiteral("Searching for cameras…")), 1);
        agentPosts(Names::StoppedDiscovering);
        QCOMPARE(timesSaid(QStringLiteral("No cameras found.")), 1);
    }

    void theAgentsEndIsSaidOnceInTheChosenRow()
    {
        addCamera();
        showPane();
        outlets().enableKS7Checkbox->setFocus();
        focus(outlets().cameraListTable);
        mFixture->connections->killAgent();
        settle();
        QCOMPARE(timesSaid(NoAgent), 1);
    }

    void aSearchOfTheNextAgentIsSaidOnce()
    {
        showPane();
        focus(outlets().enableKS7Checkbox);
        agentPosts(Names::StartedDiscovering);
        mFixture->connections->killAgent();
        mFixture->agent.running = true;
        agentPosts(Names::AgentStarted);
        mReader.said.clear();
        agentPosts(Names::StartedDiscovering);
        QCOMPARE(timesSaid(QStringLiteral("Searching for cameras…")), 1);
    }

    void missingBluetoothSettingsAreSaidOnceWhereverTheKeyboardIs_data()
    {
        QTest::addColumn<bool>("isOnButton");
        QTest::newRow("on the button") << true;
        QTest::newRow("elsewhere") << false;
    }
    void missingBluetoothSettingsAreSaidOnceWhereverTheKeyboardIs()
    {
        QFETCH(bool, isOnButton);
        showPane();
        agentPosts(Names::NoBluetooth);
        mFixture->workspace->hasBluetoothSettings = false;
        auto *button = outlets().noticeStrip->button();
        focus(isOnButton ? static_cast<QWidget *>(button) : outlets().enableKS7Checkbox);
        button->click();
        settle();
        QCOMPARE(timesSaid(QStringLiteral("No program for Bluetooth settings was found.")), 1);
    }

    void aHiddenPaneSaysNothing()
    {
        addCamera();
        showPane();
        mFixture->hide();
        settle();
        QCOMPARE(mReader.said, QStringList());
        agentPosts(Names::StartedDiscovering);
        agentPosts(Names::StoppedDiscovering);
        QCOMPARE(mReader.said, QStringList());
    }

    void anInactiveSessionSaysNothing()
    {
        addCamera();
        showPane();
        mFixture->workspaceCenter->deliver(platform::NSWorkspaceSessionDidResignActiveNotification);
        settle();
        mFixture->workspaceCenter->deliver(platform::NSWorkspaceSessionDidBecomeActiveNotification);
        settle();
        agentPosts(Names::CameraListChanged);
        QCOMPARE(mReader.said, QStringList());
    }

    void aRenamedCameraIsNotNew()
    {
        addCamera();
        showPane();
        focus(outlets().enableKS7Checkbox);
        mFixture->agent.addCamera(QStringLiteral("a"), QStringLiteral("Hall"), 1, QStringLiteral("2A9C"));
        agentPosts(Names::CameraListChanged);
        QCOMPARE(mReader.said, QStringList());
    }

    void allCamerasOfOneRefreshAreSaidInOneAnnouncement()
    {
        addCamera();
        showPane();
        focus(outlets().enableKS7Checkbox);
        for (const auto &name : {QStringLiteral("Hall"), QStringLiteral("Attic")})
            mFixture->agent.addCamera(name, name, 1);
        agentPosts(Names::CameraListChanged);
        QCOMPARE(mReader.said, QStringList{QStringLiteral("New cameras: Attic, Hall")});
    }

    void aRemovalAndTheNextChoiceAreSaidOnceWhereverTheKeyboardIs_data()
    {
        QTest::addColumn<bool>("isInList");
        QTest::newRow("in the list") << true;
        QTest::newRow("elsewhere") << false;
    }
    void aRemovalAndTheNextChoiceAreSaidOnceWhereverTheKeyboardIs()
    {
        QFETCH(bool, isInList);
        addCamera();
        mFixture->agent.addCamera(QStringLiteral("b"), QStringLiteral("Desk"), 0);
        showPane();
        focus(isInList ? static_cast<QWidget *>(outlets().cameraListTable) : outlets().removeButton);
        mFixture->agent.cameraDict.remove(QStringLiteral("a"));
        mFixture->agent.sorted.removeOne(QStringLiteral("a"));
        mFixture->agent.prefer(QStringLiteral("b"));
        agentPosts(Names::CameraListChanged);
        const auto said = mReader.said.join(QLatin1Char('|'));
        QVERIFY2(said.count(QStringLiteral("Removed from the list: Kitchen")) == 1, qPrintable(said));
        QVERIFY2(said.count(QStringLiteral("Desk, Not Found")) == 1, qPrintable(said));
    }

    void theNoticeIsReportedWhenItChanges()
    {
        showPane();
        agentPosts(Names::CameraListChanged);
        QCOMPARE(mReader.changed.filter(QStringLiteral("noticeButton")), QStringList());
        agentPosts(Names::NoBluetooth);
        agentPosts(Names::CameraListChanged);
        QCOMPARE(mReader.changed.filter(QStringLiteral("noticeButton")).size(), 1);
    }

    void anOfferIsAnnouncedOnceAndItsPercentageIsNot()
    {
        showPane();
        auto &offer = mFixture->updates->offer();
        offer.offer(QStringLiteral("2.0"));
        QCOMPARE(timesSaid(QStringLiteral("Version 2.0 of the KS-7 settings is available.")), 1);
        for (int percentage = 0; percentage < 5; ++percentage)
            offer.progress(percentage);
        QCOMPARE(mReader.changed.filter(QStringLiteral("updateStrip")).size(), 2);
        QCOMPARE(timesSaid(QStringLiteral("Installing version 2.0…")), 1);
    }

    void aChoiceByAKeyIsAnnouncedOnce()
    {
        mFixture->defaults->agentWrites(QStringLiteral("VideoSize2"), 1);
        showPane();
        auto *popUp = outlets().optimizeForPopUp;
        focus(popUp);
        for (const auto key : {Qt::Key_Up, Qt::Key_Down}) {
            mReader.said.clear();
            QTest::keyClick(popUp, key);
            settle();
            const bool isUp = key == Qt::Key_Up;
            QCOMPARE(timesSaid(isUp ? QStringLiteral("Smooth motion") : QStringLiteral("Picture quality")),
                     1);
        }
        QTest::keyClick(popUp, Qt::Key_Down);
        settle();
        QVERIFY2(mReader.said.isEmpty(), "the last choice stays");
    }

    void aCopiedDiagnosisIsSaidAtEachPress()
    {
        showPane();
        outlets().pulldownMenu->menu()->actions().constLast()->trigger();
        auto *button = mFixture->window.findChild<QPushButton *>(QStringLiteral("aboutCopyButton"));
        for (int time = 0; time < 2; ++time) {
            button->click();
            settle();
            QCOMPARE(timesSaid(QStringLiteral("Copied")), 1);
        }
    }

    void aPreviewThatEndsByAnErrorIsSaidOnce()
    {
        addCamera(4);
        mFixture->capture->addDevice(QStringLiteral("KS-7 Wireless Webcam"));
        showPane();
        focus(outlets().startButton);
        outlets().startButton->click();
        settle();
        mReader.said.clear();
        mFixture->localCenter->deliver(platform::QuickTimeErrorNotification,
                                       {{platform::QuickTimeErrorCodeKey, -1}});
        settle();
        QCOMPARE(timesSaid(QStringLiteral("Preview is off")), 1);
    }

    void aSheetSaysItsCameraAndThePasskeysRuleOnce()
    {
        addCamera();
        showPane();
        controller().actuallyChangePIN();
        enter(outlets().pinSheet);
        QCOMPARE(mReader.said,
                 QStringList({QStringLiteral("Kitchen (2A9C)"), QStringLiteral("1 to 16 digits")}));
    }

    void eachReturnWithAnInvalidPasskeySaysTheRule()
    {
        addCamera();
        showPane();
        controller().actuallyChangePIN();
        enter(outlets().pinSheet);
        mReader.said.clear();
        auto *field = outlets().newPINText;
        const auto rule = QStringLiteral("1 to 16 digits");
        QTest::keyClick(field, Qt::Key_Return);
        QCOMPARE(timesSaid(rule), 1);
        QTest::keyClicks(field, QStringLiteral("12a"));
        QCOMPARE(timesSaid(rule), 1);
        for (int time = 0; time < 2; ++time) {
            QTest::keyClick(field, Qt::Key_Return);
            QCOMPARE(timesSaid(rule), 1);
        }
        QVERIFY(field->hasFocus());
        QVERIFY(mFixture->sheets->isUp(outlets().pinSheet));
        field->setText(QStringLiteral("1234"));
        QTest::keyClick(field, Qt::Key_Return);
        QCOMPARE(mReader.said.filter(rule), QStringList());
        QVERIFY(!mFixture->sheets->isUp(outlets().pinSheet));
    }

    void eachTextOfTheFirmwareSheetIsSaidOnce()
    {
        openFirmwareSheet();
        QVERIFY(mReader.said.contains(QStringLiteral("Kitchen (2A9C)")));
        QCOMPARE(timesSaid(QStringLiteral("Click Continue to proceed.")), 1);
        QTest::keyClick(outlets().firmwareContinueButton, Qt::Key_Space);
        settle();
        QCOMPARE(timesSaid(QStringLiteral("Click Continue to start the update.")), 1);
        int timesSaidInWait = 0;
        mFixture->runLoop->onSlice = [&] {
            settle();
            timesSaidInWait = timesSaid(QStringLiteral("Now updating firmware."));
            mFixture->agentPosts(Names::FirmwareUpdateEnded, {{UserInfoKeys::Result, 0}});
        };
        QTest::keyClick(outlets().firmwareContinueButton, Qt::Key_Space);
        settle();
        QCOMPARE(timesSaidInWait, 1);
        QCOMPARE(timesSaid(QStringLiteral("Firmware update complete.")), 1);
    }

    void aRefusedUpdateIsSaidOnce()
    {
        openFirmwareSheet();
        mFixture->agent.startUpdateResult = -5;
        QTest::keyClick(outlets().firmwareContinueButton, Qt::Key_Space);
        QTest::keyClick(outlets().firmwareContinueButton, Qt::Key_Space);
        settle();
        QCOMPARE(timesSaid(QStringLiteral("An error occurred updating firmware. Error: -5")), 1);
    }

    void theFirmwareTextsAreSaidWhereverTheKeyboardIs()
    {
        openFirmwareSheet();
        focus(outlets().firmwareCancelButton);
        outlets().firmwareContinueButton->click();
        settle();
        QCOMPARE(timesSaid(QStringLiteral("Click Continue to start the update.")), 1);
    }

    void theFirmwareTextsAreSaidOnlyWhileTheSheetIsVisible()
    {
        addCamera();
        showPane();
        agentPosts(Names::FirmwareUpdateEnded, {{UserInfoKeys::Result, 7}});
        QCOMPARE(mReader.said, QStringList());
        openFirmwareSheet();
        agentPosts(Names::FirmwareUpdateEnded, {{UserInfoKeys::Result, 7}});
        QCOMPARE(timesSaid(QStringLiteral("An error occurred updating firmware. Error: 7")), 1);
    }
};

QTEST_MAIN(ScreenReaderTest)
#include "ScreenReader_test.moc"
