#include "agent/NotificationNames.h"
#include "cameras/CameraTableModel.h"
#include "cameras/KS7AnimatingStatusTableView.h"
#include "preview/KS7PreviewController.h"
#include "preview/KS7QTCaptureView.h"
#include "tests/support/PaintWatch.h"
#include "tests/support/PaneFixture.h"
#include "widgets/Indicators.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QToolButton>

#include <limits>
#include <map>

namespace Names = NotificationNames;

namespace {

const QString Kitchen = QStringLiteral("00-1b-dc-0f-2a-9c");
const QString Desk = QStringLiteral("00-1b-dc-0f-2a-9d");
const QString Attic = QStringLiteral("00-1b-dc-0f-2a-9e");
const QString ServiceOn = QStringLiteral("KS7On");

} // namespace

/// Tests the list of cameras that the agent sends: the remote calls, the rows and the enabled controls.
class ControllerCameraListTest : public QObject {
    Q_OBJECT

    std::unique_ptr<PaneFixture> mFixture;

    FakeAgent &agent() { return mFixture->agent; }
    KS7SettingsWindowController &controller() { return mFixture->controller(); }
    Outlets &outlets() { return mFixture->outlets(); }
    KS7AnimatingStatusTableView &table() { return *outlets().cameraListTable; }

    void addThreeCameras()
    {
        agent().addCamera(Kitchen, QStringLiteral("Kitchen"), 4, QStringLiteral("2A9C"));
        agent().addCamera(Desk, QStringLiteral("Desk"), 1, QStringLiteral("2A9D"));
        agent().addCamera(Attic, QStringLiteral("Attic"), 0, QStringLiteral("2A9E"));
    }

    void switchService(bool on) { mFixture->defaults->agentWrites(ServiceOn, on); }

    void showPane()
    {
        mFixture->show();
        mFixture->runLoop->turn();
        mFixture->takeJournal();
    }

    void agentSays(const QString &notification) { mFixture->agentPosts(notification); }

    /// Clicks on a row's centre.
    void clickRow(int row)
    {
        const auto spot = table().visualRect(table().model()->index(row, 0)).center();
        QTest::mouseClick(table().viewport(), Qt::LeftButton, {}, spot);
    }

    std::shared_ptr<KS7Cam> cameraInRow(int row)
    {
        return controller()
            .tableViewObjectValue(&table(), QStringLiteral("2"), row)
            .value<std::shared_ptr<KS7Cam>>();
    }

    /// Checks whether a row has dark pixels beside its dot.
    bool showsText(int row)
    {
        const QRect beside = table().visualRect(table().model()->index(row, 0)).adjusted(13, 3, -13, -3);
        const QImage image = table().viewport()->grab(beside).toImage();
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (qGray(image.pixel(x, y)) < 128)
                    return true;
            }
        }
        return false;
    }

    static QStringList refreshCalls()
    {
        // A refresh calls enableUSBOptions() twice. Each call asks whether the camera on the cable is the
        // selected one.
        return {QStringLiteral("cameraDict"),
                QStringLiteral("sortedDeviceList"),
                QStringLiteral("indexOfPreferredKS7Cam"),
                QStringLiteral("indexOfPreferredKS7Cam"),
                QStringLiteral("connectedCamHasBTAddress nil"),
                QStringLiteral("connectedCamHasBTAddress nil"),
                QStringLiteral("getPreferredKS7Cam")};
    }

private Q_SLOTS:
    void init() { mFixture = std::make_unique<PaneFixture>(); }
    void cleanup() { mFixture.reset(); }

    void theListIsTheAgentsInTheAgentsOrder()
    {
        addThreeCameras();
        agent().sorted = QStringList{Attic, Kitchen, Desk};
        showPane();
        QCOMPARE(table().numberOfRows(), 3);
        QCOMPARE(table().textOfRow(0), QStringLiteral("Attic, Not Found"));
        QCOMPARE(table().textOfRow(1), QStringLiteral("Kitchen, Streaming"));
        QCOMPARE(table().textOfRow(2), QStringLiteral("Desk, Not Streaming"));
        QCOMPARE(cameraInRow(1)->cameraIDString(), QStringLiteral("2A9C"));
        QCOMPARE(controller().cameras().size(), 3);
    }

    void aRefreshMakesExactlyTheseCalls()
    {
        addThreeCameras();
        showPane();
        controller().cameraStatusChanged();
        QCOMPARE(mFixture->takeRemoteCalls(), refreshCalls());
    }

    void aRefreshReadsTheSwitchBeforeTheListAndAgainBeforeTheSelection()
    {
        addThreeCameras();
        showPane();
        controller().cameraStatusChanged();
        QCOMPARE(mFixture->takeJournal(),
                 QStringList({QStringLiteral("synchronize"), QStringLiteral("remote cameraDict"),
                              QStringLiteral("remote sortedDeviceList"),
                              QStringLiteral("remote indexOfPreferredKS7Cam"), QStringLiteral("synchronize"),
                              QStringLiteral("remote indexOfPreferredKS7Cam"),
                              QStringLiteral("remote connectedCamHasBTAddress nil"),
                              QStringLiteral("remote connectedCamHasBTAddress nil"),
                              QStringLiteral("remote getPreferredKS7Cam")}));
    }

    void switchingOffClearsTheSelectionBeforeTheAgentIsCalled()
    {
        addThreeCameras();
        agent().prefer(Desk);
        showPane();
        QCOMPARE(table().selectedRow(), 1);
        switchService(false);
        std::optional<int> selected;
        agent().during[QStringLiteral("cameraDict")] = [&] { selected = table().selectedRow(); };
        controller().cameraStatusChanged();
        QCOMPARE(selected, std::optional<int>(-1));
        QCOMPARE(mFixture->takeRemoteCalls(), refreshCalls());
    }

    void fiveListChangesAreFiveRefreshes()
    {
        showPane();
        for (int change = 0; change < 5; ++change)
            mFixture->distributedCenter->deliver(Names::CameraListChanged);
        QVERIFY2(mFixture->takeRemoteCalls().isEmpty(), "a list change waits for the delivery to end");
        mFixture->runLoop->turn();
        QCOMPARE(mFixture->takeRemoteCalls().count(QStringLiteral("cameraDict")), 5);
    }

    void someEventsRefreshAtOnceAndOthersAreQueued_data()
    {
        QTest::addColumn<QString>("notification");
        QTest::addColumn<bool>("atOnce");
        QTest::newRow("pairing") << Names::PairingInitiated << true;
        QTest::newRow("starting") << Names::StreamingInitiated << true;
        QTest::newRow("ended") << Names::StreamingEnded << true;
        QTest::newRow("streaming") << Names::StreamingStarted << false;
        QTest::newRow("list") << Names::CameraListChanged << false;
    }
    void someEventsRefreshAtOnceAndOthersAreQueued()
    {
        QFETCH(QString, notification);
        QFETCH(bool, atOnce);
        showPane();
        mFixture->distributedCenter->deliver(notification);
        QCOMPARE(mFixture->takeRemoteCalls(), atOnce ? refreshCalls() : QStringList());
        mFixture->runLoop->turn();
        QCOMPARE(mFixture->takeRemoteCalls(), atOnce ? QStringList() : refreshCalls());
    }

    void anotherPreferredCameraIsSelectedAndNothingElseIsRead()
    {
        addThreeCameras();
        showPane();
        agent().prefer(Desk);
        // After KS7PreferredCameraChanged, the pane must select the row at once and not in the run loop. So
        // the test checks the selection before it calls turn().
        mFixture->distributedCenter->deliver(Names::PreferredCameraChanged);
        QCOMPARE(table().selectedRow(), 1);
        const QStringList calls{QStringLiteral("indexOfPreferredKS7Cam"),
                                QStringLiteral("connectedCamHasBTAddress ") + Desk};
        QCOMPARE(mFixture->takeRemoteCalls(), calls);
        mFixture->runLoop->turn();
        QVERIFY(mFixture->takeRemoteCalls().isEmpty());
    }

    void aClickMakesTheCameraThePreferredOne()
    {
        addThreeCameras();
        agent().prefer(Kitchen);
        showPane();
        clickRow(1);
        auto calls = mFixture->takeRemoteCalls();
        const QString atTheCable = QStringLiteral("connectedCamHasBTAddress ");
        QCOMPARE(calls.mid(0, 2),
                 QStringList({atTheCable + Desk, QStringLiteral("setPreferredDeviceAddress ") + Desk}));
        QCOMPARE(calls.count(QStringLiteral("cameraDict")), 1);
        QCOMPARE(calls.size(), 9);
        QCOMPARE(table().clickedRow(), -1);
    }

    void aClickUpdatesTheRemoveButtonBeforeTheAgentIsCalled_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<bool>("removable");
        QTest::newRow("idle") << 1 << true;
        QTest::newRow("pairing") << 2 << false;
        QTest::newRow("starting") << 3 << false;
        QTest::newRow("streaming") << 4 << false;
    }
    void aClickUpdatesTheRemoveButtonBeforeTheAgentIsCalled()
    {
        QFETCH(int, status);
        QFETCH(bool, removable);
        agent().addCamera(Kitchen, QStringLiteral("Kitchen"), status);
        showPane();
        outlets().removeButton->setEnabled(!removable);
        QVERIFY(agent().during.empty());
        std::optional<bool> enabled;
        agent().during[QStringLiteral("setPreferredDeviceAddress")] = [&] {
            enabled = outlets().removeButton->isEnabled();
        };
        clickRow(0);
        QCOMPARE(enabled, std::optional<bool>(removable));
    }

    void aClickOnARowWithoutACameraEnablesRemovalUntilTheRefresh()
    {
        addThreeCameras();
        agent().sorted.removeLast();
        showPane();
        std::optional<bool> enabled;
        agent().during[QStringLiteral("setPreferredDeviceAddress")] = [&] {
            enabled = outlets().removeButton->isEnabled();
        };
        clickRow(2);
        QCOMPARE(enabled, std::optional<bool>(true));
        QVERIFY(!outlets().removeButton->isEnabled());
    }

    void choosingWithoutASelectionSendsNil()
    {
        addThreeCameras();
        showPane();
        controller().setActiveCamera(nullptr);
        QCOMPARE(mFixture->takeRemoteCalls().first(), QStringLiteral("setPreferredDeviceAddress nil"));
    }

    void aSelectionAloneChangesNothing()
    {
        addThreeCameras();
        showPane();
        table().selectRow(1);
        controller().tableViewSelectionDidChange({});
        QVERIFY(mFixture->takeRemoteCalls().isEmpty());
    }

    void switchingOffDisablesTheTableAndClearsTheSelection()
    {
        addThreeCameras();
        agent().prefer(Desk);
        showPane();
        QCOMPARE(table().selectedRow(), 1);
        QVERIFY(!table().allowsEmptySelection());
        switchService(false);
        controller().cameraStatusChanged();
        QVERIFY(!table().isEnabled());
        QVERIFY(table().allowsEmptySelection());
        QCOMPARE(table().selectedRow(), -1);
        QVERIFY(!outlets().startButton->isEnabled());
        QVERIFY(!outlets().removeButton->isEnabled());
        controller().pickPreferredCamera();
        QCOMPARE(table().selectedRow(), -1);
        QCOMPARE(table().numberOfRows(), 3);
    }

    void withoutBluetoothTheTableIsDisabledThoughThePreferredCameraIsSelected()
    {
        addThreeCameras();
        agent().prefer(Desk);
        showPane();
        agentSays(Names::NoBluetooth);
        QVERIFY(!table().isEnabled());
        QVERIFY(table().allowsEmptySelection());
        QVERIFY(!outlets().startButton->isEnabled());
        QCOMPARE(table().selectedRow(), 1);
    }

    void withoutBluetoothAndAPreferredCameraNothingIsSelected()
    {
        addThreeCameras();
        showPane();
        table().selectRow(1);
        QVERIFY(!table().allowsEmptySelection());
        agentSays(Names::NoBluetooth);
        QVERIFY(!table().isEnabled());
        QVERIFY(table().allowsEmptySelection());
        QCOMPARE(table().selectedRow(), -1);
        agentSays(Names::FoundBluetooth);
        QVERIFY(table().isEnabled());
        QVERIFY(!table().allowsEmptySelection());
    }

    void aStreamingPreferredCameraForbidsAddingForAnySelection()
    {
        addThreeCameras();
        agent().prefer(Kitchen);
        showPane();
        QVERIFY(!outlets().addButton->isEnabled());
        table().selectRow(2);
        agent().indexOfPreferred = NoPreferredCamera;
        controller().cameraStatusChanged();
        QCOMPARE(table().selectedRow(), 2);
        QVERIFY(!outlets().addButton->isEnabled());
        agent().preferred.reset();
        controller().cameraStatusChanged();
        QVERIFY(outlets().addButton->isEnabled());
    }

    void onlyAnIdleCameraCanBeRemoved_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<bool>("removable");
        QTest::newRow("not found") << 0 << true;
        QTest::newRow("not streaming") << 1 << true;
        QTest::newRow("pairing") << 2 << false;
        QTest::newRow("starting") << 3 << false;
        QTest::newRow("streaming") << 4 << false;
        QTest::newRow("error") << 5 << true;
        QTest::newRow("unknown") << 99 << true;
    }
    void onlyAnIdleCameraCanBeRemoved()
    {
        QFETCH(int, status);
        QFETCH(bool, removable);
        agent().addCamera(Kitchen, QStringLiteral("Kitchen"), status);
        agent().prefer(Kitchen);
        showPane();
        QCOMPARE(outlets().removeButton->isEnabled(), removable);
        // The pane disables the add button only while the preferred camera streams (status 4).
        QCOMPARE(outlets().addButton->isEnabled(), status != 4);
        QVERIFY(outlets().startButton->isEnabled());
        clickRow(0);
        QCOMPARE(outlets().removeButton->isEnabled(), removable);
    }

    void withoutASelectionNothingCanBeRemovedOrStarted()
    {
        addThreeCameras();
        showPane();
        QCOMPARE(table().selectedRow(), -1);
        QVERIFY(!outlets().removeButton->isEnabled());
        QVERIFY(!outlets().startButton->isEnabled());
        QVERIFY(outlets().addButton->isEnabled());
    }

    void theMenuIsEnabledWhileThereIsACamera()
    {
        addThreeCameras();
        showPane();
        QVERIFY(outlets().pulldownMenu->isEnabled());
        agent().cameraDict.clear();
        agent().sorted.clear();
        agentSays(Names::CameraListChanged);
        QCOMPARE(table().numberOfRows(), 0);
        QVERIFY(!outlets().pulldownMenu->isEnabled());
    }

    void withoutAConnectionThereAreNoRowsAndTheMenuIsUnchanged()
    {
        addThreeCameras();
        showPane();
        outlets().pulldownMenu->setEnabled(false);
        // A lost connection removes the table's rows, but the controller keeps its last copy of the cameras.
        int cameras = 0;
        connect(table().model(), &QAbstractItemModel::rowsRemoved, this, [&] {
            cameras = static_cast<int>(controller().cameras().size());
            QVERIFY(!outlets().pulldownMenu->isEnabled());
        });
        mFixture->connections->killAgent();
        QCOMPARE(cameras, 3);
        QVERIFY(!outlets().pulldownMenu->isEnabled());
        outlets().pulldownMenu->setEnabled(true);
        QCOMPARE(controller().numberOfRowsInTableView(&table()), 0);
        QVERIFY(outlets().pulldownMenu->isEnabled());
    }

    void theSelectionIsMadeBeforeTheRowsArePainted()
    {
        addThreeCameras();
        showPane();
        PaintWatch paints(table().viewport());
        QVERIFY(paints.begin());
        QCOMPARE(table().selectedRow(), -1);
        agent().prefer(Desk);
        QList<int> selected;
        paints.onPaint = [&] { selected.append(table().selectedRow()); };
        controller().reloadTable();
        QCOMPARE(selected, QList<int>{1});
    }

    void aRefreshRedrawsThePictureUnlessItStreams()
    {
        addThreeCameras();
        agent().prefer(Kitchen);
        mFixture->capture->addDevice(QStringLiteral("KS-7 Wireless Webcam"));
        showPane();
        auto *picture = outlets().previewView->qtView;
        PaintWatch paints(picture);
        const auto paintsOfARefresh = [&] {
            picture->show();
            if (!paints.begin())
                return -1;
            controller().cameraStatusChanged();
            return paints.count;
        };
        QCOMPARE(paintsOfARefresh(), 1);
        outlets().startButton->click();
        QVERIFY(controller().isStreaming());
        QCOMPARE(paintsOfARefresh(), 0);
        outlets().startButton->click();
        QVERIFY(!controller().isStreaming());
        QCOMPARE(paintsOfARefresh(), 1);
    }

    void removingCallsTheAgentAndWaitsForItsReply()
    {
        addThreeCameras();
        agent().prefer(Desk);
        showPane();
        outlets().removeButton->click();
        QCOMPARE(mFixture->takeRemoteCalls(),
                 QStringList({QStringLiteral("removeCameraAtIndex 1 yes"),
                              QStringLiteral("checkRemoveCurrentCam 1 2A9D Desk")}));
        QCOMPARE(table().numberOfRows(), 3);
    }

    void removingWithoutASelectionSendsRowMinusOneAndNoRecord()
    {
        addThreeCameras();
        showPane();
        controller().removeCamera(nullptr);
        QCOMPARE(mFixture->takeRemoteCalls(),
                 QStringList({QStringLiteral("removeCameraAtIndex -1 yes"),
                              QStringLiteral("checkRemoveCurrentCam nil")}));
    }

    void removingDuringAClickSendsTheClickedRecord()
    {
        addThreeCameras();
        showPane();
        table().setAction([this](QObject *) {
            table().setAllowsEmptySelection(true);
            table().deselectAll();
            controller().removeCamera(nullptr);
        });
        clickRow(2);
        QCOMPARE(mFixture->takeRemoteCalls(),
                 QStringList({QStringLiteral("removeCameraAtIndex -1 yes"),
                              QStringLiteral("checkRemoveCurrentCam 0 2A9E Attic")}));
    }

    void removingSendsTheRecordFromBeforeTheRemoval()
    {
        addThreeCameras();
        agent().prefer(Desk);
        showPane();
        agent().during[QStringLiteral("removeCameraAtIndex")] = [this] {
            agent().cameraDict.remove(Desk);
            agent().sorted.removeOne(Desk);
            controller().cameraStatusChanged();
        };
        controller().removeCamera(nullptr);
        QCOMPARE(mFixture->takeRemoteCalls().last(), QStringLiteral("checkRemoveCurrentCam 1 2A9D Desk"));
    }

    void plusRequestsDiscoveryAndShowsNothingYet()
    {
        showPane();
        const int before = mFixture->distributedCenter->postCount(Names::StartDiscovering);
        outlets().addButton->click();
        QCOMPARE(mFixture->distributedCenter->postCount(Names::StartDiscovering), before + 1);
        QVERIFY(mFixture->distributedCenter->lastUserInfo(Names::StartDiscovering).isEmpty());
        QVERIFY(!outlets().searchingIndicator->isAnimating());
        QVERIFY(outlets().discoveringMessage->isHidden());
    }

    void theSearchIsShownWhileTheAgentSearches()
    {
        showPane();
        agentSays(Names::StartedDiscovering);
        QVERIFY(outlets().searchingIndicator->isAnimating());
        QVERIFY(outlets().discoveringMessage->isVisible());
        agentSays(Names::StoppedDiscovering);
        QVERIFY(!outlets().searchingIndicator->isAnimating());
        QVERIFY(outlets().discoveringMessage->isHidden());
    }

    void aRowBeyondTheSortedListHasNoCamera()
    {
        addThreeCameras();
        agent().sorted.removeLast();
        showPane();
        QCOMPARE(table().numberOfRows(), 3);
        QVERIFY(cameraInRow(1) != nullptr);
        QVERIFY(!controller().tableViewObjectValue(&table(), QStringLiteral("2"), 2).isValid());
        clickRow(2);
        QCOMPARE(mFixture->takeRemoteCalls().at(1), QStringLiteral("setPreferredDeviceAddress nil"));
        QCOMPARE(table().selectedRow(), 2);
        QVERIFY(!outlets().startButton->isEnabled());
    }

    void aSortedNameWithoutAnEntryHasNoCamera()
    {
        addThreeCameras();
        agent().cameraDict.remove(Kitchen);
        showPane();
        QCOMPARE(table().numberOfRows(), 2);
        QVERIFY(!controller().tableViewObjectValue(&table(), QStringLiteral("2"), 0).isValid());
        clickRow(0);
        // The agent's sorted list still has Kitchen's address, so the click makes Kitchen the preferred
        // camera, although its record is missing in cameraDict.
        QCOMPARE(mFixture->takeRemoteCalls().at(1), QStringLiteral("setPreferredDeviceAddress ") + Kitchen);
        QVERIFY(!outlets().removeButton->isEnabled());
    }

    void aSortedListLongerThanTheDictionaryIsCut()
    {
        addThreeCameras();
        agent().cameraDict.remove(Desk);
        agent().indexOfPreferred = 2;
        showPane();
        QCOMPARE(table().numberOfRows(), 2);
        QCOMPARE(table().textOfRow(0), QStringLiteral("Kitchen, Streaming"));
        QCOMPARE(table().textOfRow(1), QStringLiteral("Unknown camera"));
        // cameraDict has two records, so the table has two rows. The sorted list has three addresses. The
        // record of the third address is therefore not shown, although cameraInRow() returns it.
        QVERIFY(cameraInRow(2));
        QCOMPARE(table().selectedRow(), -1);
        QVERIFY(controller().selectedCamAddress().isNull());
        QVERIFY(!outlets().removeButton->isEnabled() && !outlets().startButton->isEnabled());
    }

    void rowsOutsideTheListHaveNoValue()
    {
        addThreeCameras();
        showPane();
        for (const int row : {-1, 3, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()})
            QVERIFY(!controller().tableViewObjectValue(&table(), QStringLiteral("2"), row).isValid());
    }

    void aSortedRowBeyondTheCountHasNoAddress()
    {
        addThreeCameras();
        showPane();
        table().selectRow(2);
        QCOMPARE(controller().selectedCamAddress(), Attic);
        agent().cameraDict.remove(Kitchen);
        controller().copyCamerasLocal();
        QCOMPARE(table().selectedRow(), 2);
        QVERIFY(controller().selectedCamAddress().isNull());
        QCOMPARE(controller().selectedCam(), std::shared_ptr<KS7Cam>());
        controller().setActiveCamera(nullptr);
        QVERIFY(mFixture->takeRemoteCalls().contains(QStringLiteral("setPreferredDeviceAddress nil")));
    }

    void copyingTheListKeepsTheLowerHalfOfThePreferredIndex()
    {
        addThreeCameras();
        showPane();
        const std::map<std::uint64_t, int> kept{
            {2, 2}, {0x1'0000'0001ULL, 1}, {0xFFFF'FFF0ULL, -16}, {NoPreferredCamera, -1}};
        for (const auto &[index, lowerHalf] : kept) {
            agent().indexOfPreferred = index;
            controller().copyCamerasLocal();
            QCOMPARE(controller().indexOfPreferred(), lowerHalf);
        }
        QCOMPARE(table().selectedRow(), -1);
    }

    void otherColumnsAndOtherTablesGetAnEmptyText()
    {
        addThreeCameras();
        showPane();
        KS7AnimatingStatusTableView other;
        const auto empty = QVariant(QString(QLatin1String("")));
        QCOMPARE(controller().tableViewObjectValue(&table(), QStringLiteral("1"), 0), empty);
        QCOMPARE(controller().tableViewObjectValue(&other, QStringLiteral("2"), 0), empty);
        QCOMPARE(controller().numberOfRowsInTableView(&other), 0);
        QVERIFY(outlets().pulldownMenu->isEnabled());
    }

    void withoutAnAgentThereAreNoRowsAndNoValues()
    {
        addThreeCameras();
        agent().running = false;
        showPane();
        QCOMPARE(table().numberOfRows(), 0);
        QVERIFY(!controller().tableViewObjectValue(&table(), QStringLiteral("1"), 0).isValid());
        QVERIFY(!outlets().startButton->isEnabled());
        QVERIFY(controller().selectedCamAddress().isNull());
        QCOMPARE(controller().selectedCam(), std::shared_ptr<KS7Cam>());
    }

    void anIndexWithoutARowKeepsTheSelection_data()
    {
        QTest::addColumn<qulonglong>("index");
        QTest::addColumn<int>("kept");
        QTest::newRow("none") << qulonglong(NoPreferredCamera) << -1;
        QTest::newRow("past the end") << qulonglong(3) << 3;
        QTest::newRow("largest") << std::numeric_limits<qulonglong>::max() << -1;
        QTest::newRow("row 1 in its lower half") << 0x1'0000'0001ULL << 1;
        QTest::newRow("negative in 32 bits") << 0xFFFF'FFF0ULL << -16;
        QTest::newRow("largest 32 bits") << 0x7FFF'FFFFULL << 0x7FFF'FFFF;
    }
    void anIndexWithoutARowKeepsTheSelection()
    {
        QFETCH(qulonglong, index);
        QFETCH(int, kept);
        addThreeCameras();
        showPane();
        table().selectRow(2);
        agent().indexOfPreferred = index;
        controller().pickPreferredCamera();
        QCOMPARE(table().selectedRow(), 2);
        QCOMPARE(controller().indexOfPreferred(), kept);
    }

    void malformedEntriesReadAsZeroOrNull()
    {
        agent().cameraDict[Kitchen] = {{QStringLiteral("Status"), QStringLiteral("four")},
                                       {QStringLiteral("FriendlyName"), 12},
                                       {QStringLiteral("CameraIDString"), QVariantList{1}}};
        agent().cameraDict[Desk] = {};
        agent().cameraDict[Attic] = {{QStringLiteral("Status"), std::numeric_limits<double>::quiet_NaN()},
                                     {QStringLiteral("FriendlyName"), QStringLiteral("Attic")}};
        agent().sorted = QStringList{Kitchen, Desk, Attic};
        showPane();
        QCOMPARE(table().numberOfRows(), 3);
        for (int row = 0; row < 3; ++row) {
            QCOMPARE(cameraInRow(row)->status(), 0);
            QVERIFY(cameraInRow(row)->cameraIDString().isNull());
        }
        QVERIFY(cameraInRow(0)->friendlyName().isNull());
        QCOMPARE(cameraInRow(2)->friendlyName(), QStringLiteral("Attic"));
    }

    void aStatusIsReadFromAnyNumber()
    {
        const QList<QVariant> fours{4,
                                    4U,
                                    4LL,
                                    4ULL,
                                    4.9,
                                    4.9F,
                                    QVariant::fromValue<uchar>(4),
                                    QVariant::fromValue<short>(4),
                                    0x1'0000'0004LL};
        for (const auto &four : fours) {
            agent().addCamera(Kitchen, QStringLiteral("Kitchen"), 0);
            agent().cameraDict[Kitchen][QStringLiteral("Status")] = four;
            if (!mFixture->pane)
                showPane();
            controller().cameraStatusChanged();
            QCOMPARE(cameraInRow(0)->status(), 4);
        }
    }

    void anEmptyAddressIsValid()
    {
        agent().addCamera(QStringLiteral(""), QStringLiteral("Nowhere"), 1);
        showPane();
        clickRow(0);
        QVERIFY(controller().selectedCam() != nullptr);
        QVERIFY(!controller().selectedCamAddress().isNull());
    }

    void unusualNamesAreShown()
    {
        agent().addCamera(Kitchen, QString(), 4);
        agent().addCamera(Desk, QString(10000, QLatin1Char('x')), 3);
        agent().addCamera(Attic, QStringLiteral("a\nb\u202Ec%1%2"), 0);
        showPane();
        QCOMPARE(table().textOfRow(0), QStringLiteral(", Streaming"));
        QVERIFY(table().textOfRow(1).startsWith(QStringLiteral("xxx")));
        QCOMPARE(table().textOfRow(2),
                 QStringLiteral("\u2068a\u27E8U+000A\u27E9b\u202Ec%1%2\u2069, Not Found"));
        QVERIFY(!mFixture->window.grab().isNull());
    }

    void aStatusWithoutATextIsNotReadOut()
    {
        agent().addCamera(Kitchen, QStringLiteral("Kitchen"), 17);
        showPane();
        QCOMPARE(table().textOfRow(0), QStringLiteral("Kitchen"));
        const auto *rows = table().model();
        QCOMPARE(rows->data(rows->index(0, 0), Qt::ToolTipRole).toString(),
                 QStringLiteral("<qt>Kitchen</qt>"));
    }

    void aRowWithoutACameraIsNotPaintedLikeTheRowAbove()
    {
        addThreeCameras();
        agent().sorted.removeLast();
        showPane();
        QVERIFY(showsText(1));
        QVERIFY(!showsText(2));
    }

    void aNameIsPlainTextInItsToolTip()
    {
        agent().addCamera(Kitchen, QStringLiteral("<b>Kitchen</b>"), 4);
        showPane();
        const auto *rows = table().model();
        QCOMPARE(rows->data(rows->index(0, 0), Qt::ToolTipRole).toString(),
                 QStringLiteral("<qt>&lt;b&gt;Kitchen&lt;/b&gt;, Streaming</qt>"));
    }

    void fiveThousandCamerasCostOnlyTheVisibleRows()
    {
        for (int number = 0; number < 5000; ++number)
            agent().addCamera(QStringLiteral("address %1").arg(number), QStringLiteral("Camera"), 1);
        agent().prefer(QStringLiteral("address 4999"));
        showPane();
        QCOMPARE(table().numberOfRows(), 5000);
        QCOMPARE(table().selectedRow(), 4999);
        QVERIFY(table().viewport()->rect().intersects(table().visualRect(table().model()->index(4999, 0))));
        controller().cameraStatusChanged();
        QVERIFY(mFixture->takeRemoteCalls().size() < 12);
    }

    void aVanishedCameraLosesItsSelection()
    {
        addThreeCameras();
        agent().prefer(Attic);
        showPane();
        QCOMPARE(table().selectedRow(), 2);
        agent().cameraDict.remove(Attic);
        agent().sorted.removeOne(Attic);
        agent().indexOfPreferred = NoPreferredCamera;
        agentSays(Names::CameraListChanged);
        QCOMPARE(table().selectedRow(), -1);
        QVERIFY(!mFixture->takeRemoteCalls().contains(QStringLiteral("setPreferredDeviceAddress nil")));
    }

    void anEmptyListSaysWhatToDo()
    {
        showPane();
        QCOMPARE(table().placeholderText(), QStringLiteral("No cameras found. Choose + to search."));
        QCOMPARE(table().accessibleDescription(), table().placeholderText());
        agentSays(Names::NoBluetooth);
        QCOMPARE(table().placeholderText(), QStringLiteral("Bluetooth is off."));
        switchService(false);
        agentSays(Names::OnOffChanged);
        QCOMPARE(table().placeholderText(), QStringLiteral("KS-7 is switched off."));
        addThreeCameras();
        agentSays(Names::CameraListChanged);
        QCOMPARE(table().accessibleDescription(), QStringLiteral("KS-7 is switched off."));
    }

    void doubleClickShowsTheProperties()
    {
        addThreeCameras();
        showPane();
        clickRow(1);
        const auto spot = table().visualRect(table().model()->index(1, 0)).center();
        QTest::mouseDClick(table().viewport(), Qt::LeftButton, {}, spot);
        QVERIFY(mFixture->sheets->isUp(outlets().propertiesSheet));
    }
};

QTEST_MAIN(ControllerCameraListTest)
#include "ControllerCameraList_test.moc"
