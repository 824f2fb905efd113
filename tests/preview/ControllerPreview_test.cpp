#include "agent/NotificationNames.h"
#include "preview/KS7PreviewController.h"
#include "preview/KS7QTCaptureView.h"
#include "tests/support/PaintWatch.h"
#include "tests/support/PaneFixture.h"
#include "widgets/Indicators.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QPushButton>
#include <QTest>

using namespace std::chrono_literals;

namespace {

const QString CameraID = QStringLiteral("KS-7 Wireless Webcam");
const QString LegacyCameraID =
    QStringLiteral("com.apple.QTKit.legacydevice-KS-7 Wireless Webcam-vdig-usbv-Orvx");
const QString ErrorTitle = QStringLiteral("Couldn't Start Preview");

QImage plainPicture(const QColor &color)
{
    QImage picture(64, 48, QImage::Format_RGB32);
    picture.fill(color);
    return picture;
}

} // namespace

/// Tests the preview as the user sees it, with fakes for all services.
class ControllerPreviewTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<PaneFixture> mPane;
    std::shared_ptr<FakeCaptureDevice> mCamera;

    void showPane()
    {
        mPane->agent.addCamera(QStringLiteral("00-11-22-33-44-55"), QStringLiteral("Kitchen"), 4);
        mPane->agent.prefer(QStringLiteral("00-11-22-33-44-55"));
        mPane->defaults->agentWrites(QStringLiteral("KS7On"), true);
        mPane->show();
        mPane->takeJournal();
    }
    void showPaneWithCamera(const QString &uniqueID = CameraID)
    {
        mCamera = mPane->capture->addDevice(uniqueID, QStringLiteral("KS-7"));
        showPane();
    }
    void pressButton() { mPane->outlets().startButton->click(); }
    void wait(std::chrono::milliseconds time) { mPane->runLoop->advance(time); }
    [[nodiscard]] KS7QTCaptureView &view() const { return *mPane->outlets().previewView->qtView; }
    [[nodiscard]] FakeCaptureSession &session() const { return *mPane->capture->sessions.back(); }
    [[nodiscard]] double leftMeter() const { return mPane->outlets().levelIndicator_l->doubleValue(); }
    [[nodiscard]] double rightMeter() const { return mPane->outlets().levelIndicator_r->doubleValue(); }
    [[nodiscard]] QString lastError() const
    {
        return mPane->sheets->alerts.empty() ? QString() : mPane->sheets->alerts.back().alert.message;
    }
    [[nodiscard]] static QString errorText(int code)
    {
        return QStringLiteral("QuickTime had an error starting the camera preview.\nError: %1").arg(code);
    }
    void compareIdle()
    {
        QCOMPARE(mPane->outlets().startButton->text(), QStringLiteral("Start &Preview"));
        QVERIFY(!mPane->controller().isStreaming());
        QVERIFY(!mPane->controller().hasLevelsTimer());
        QVERIFY(view().isHidden());
        QCOMPARE(leftMeter(), 0.0);
        QCOMPARE(rightMeter(), 0.0);
    }
    void compareRunning()
    {
        QCOMPARE(mPane->outlets().startButton->text(), QStringLiteral("Stop &Preview"));
        QVERIFY(mPane->controller().isStreaming());
        QVERIFY(mPane->controller().hasLevelsTimer());
        QVERIFY(session().isRunning());
    }
    [[nodiscard]] QColor colorOnScreen() const
    {
        return view().grab().toImage().pixelColor(view().rect().center());
    }

private Q_SLOTS:
    void init() { mPane = std::make_unique<PaneFixture>(); }
    void cleanup()
    {
        mPane.reset();
        mCamera.reset();
    }

    void theCaptureSystemIsNotUsedBeforeTheFirstPreview()
    {
        showPaneWithCamera();
        mPane->hide();
        mPane->show();
        QVERIFY(mPane->capture->sessions.empty());
        QVERIFY(!mPane->journal->contains(QStringLiteral("list devices")));
        compareIdle();
    }

    void everyPressIsLogged()
    {
        mPane->defaults->agentWrites(QStringLiteral("LogToFile"), true);
        showPaneWithCamera();
        pressButton();
        pressButton();
        QDirIterator files(QDir::homePath() + QStringLiteral("/Library/Logs"), QDir::Files,
                           QDirIterator::Subdirectories);
        QByteArray logged;
        while (files.hasNext()) {
            QFile file(files.next());
            QVERIFY(file.open(QIODevice::ReadOnly));
            logged += file.readAll();
        }
        QCOMPARE(logged.count(" startVideo:\n"), 2);
    }

    void startingTakesTheStepsInTheirOrder()
    {
        showPaneWithCamera();
        pressButton();
        QCOMPARE(mPane->takeJournal(),
                 (QStringList{QStringLiteral("make session"), QStringLiteral("list devices"),
                              QStringLiteral("open device"), QStringLiteral("add input"),
                              QStringLiteral("start session")}));
        compareRunning();
        QCOMPARE(session().input->device(), std::shared_ptr<platform::CaptureDevice>(mCamera));
        QCOMPARE(view().captureSession().get(), &session());
        QCOMPARE(view().delegate(), static_cast<const void *>(mPane->outlets().previewView));
    }

    void thePictureIsRevealedAfterThreeQuartersOfASecond()
    {
        showPaneWithCamera();
        pressButton();
        wait(749ms);
        QVERIFY(view().isHidden());
        wait(1ms);
        QVERIFY(!view().isHidden());
        session().deliverFrame(plainPicture(Qt::red));
        QCOMPARE(colorOnScreen(), QColor(Qt::red));
    }

    void stoppingWithinThreeQuartersOfASecondNeverShowsTheView()
    {
        showPaneWithCamera();
        pressButton();
        session().deliverFrame(plainPicture(Qt::red));
        wait(749ms);
        pressButton();
        compareIdle();
        wait(10s);
        compareIdle();
        QCOMPARE(mPane->runLoop->pendingCount(), std::size_t(0));
        QVERIFY(!session().isRunning());
        QCOMPARE(colorOnScreen(), QColor(Qt::black));
    }

    void aSecondStartReusesSessionAndDevice()
    {
        showPaneWithCamera();
        pressButton();
        wait(1s);
        pressButton();
        QVERIFY(mCamera->isOpen());
        mPane->takeJournal();
        pressButton();
        QCOMPARE(mPane->takeJournal(), QStringList{QStringLiteral("start session")});
        compareRunning();
        QVERIFY(view().isHidden());
        wait(750ms);
        QVERIFY(!view().isHidden());
    }

    void theButtonStopsTheSessionInEveryState()
    {
        showPaneWithCamera();
        pressButton();
        session().stopRunning();
        pressButton();
        compareIdle();
    }

    void aCameraWithTheOldIdIsTaken()
    {
        showPaneWithCamera(LegacyCameraID);
        pressButton();
        compareRunning();
        QVERIFY(mCamera->isOpen());
    }

    void theFirstOfTheListIsTakenWhicheverIdItHas()
    {
        const auto other = mPane->capture->addDevice(QStringLiteral("Built-in"));
        const auto first = mPane->capture->addDevice(CameraID);
        showPaneWithCamera(LegacyCameraID);
        pressButton();
        QVERIFY(first->isOpen());
        QVERIFY(!other->isOpen());
        QVERIFY(!mCamera->isOpen());
    }

    void aDisplayNameIsNotAnId()
    {
        const auto impostor = mPane->capture->addDevice(QStringLiteral("something"), CameraID);
        showPane();
        pressButton();
        QVERIFY(!impostor->isOpen());
        compareIdle();
        QCOMPARE(lastError(), errorText(-333));
    }

    void withoutACameraTheStartFailsAndTheNextOneIsBlack()
    {
        showPane();
        pressButton();
        compareIdle();
        QCOMPARE(mPane->sheets->alerts.size(), std::size_t(1));
        const auto &shown = mPane->sheets->alerts.front();
        QCOMPARE(shown.alert.title, ErrorTitle);
        QCOMPARE(shown.alert.defaultButton, QStringLiteral("OK"));
        QCOMPARE(shown.alert.message, errorText(-333));
        QCOMPARE(shown.window, mPane->pane->mainWindow());

        pressButton();
        compareRunning();
        QCOMPARE(mPane->capture->sessions.size(), std::size_t(1));
        wait(750ms);
        QVERIFY(!view().isHidden());
        QCOMPARE(colorOnScreen(), QColor(Qt::black));
        QCOMPARE(mPane->sheets->alerts.size(), std::size_t(1));
    }

    void anOpenThatFailsIsReportedWithItsCode_data()
    {
        QTest::addColumn<bool>("hasError");
        QTest::addColumn<int>("code");
        QTest::addColumn<int>("shown");
        QTest::newRow("no error object") << false << 0 << -343;
        QTest::newRow("a code") << true << -16 << -16;
        QTest::newRow("cut to 16 bits") << true << 0x12345 << 0x2345;
        QTest::newRow("sign of 16 bits") << true << 0xFFFF << -1;
    }
    void anOpenThatFailsIsReportedWithItsCode()
    {
        QFETCH(bool, hasError);
        QFETCH(int, code);
        QFETCH(int, shown);
        showPaneWithCamera();
        mCamera->opens = false;
        if (hasError)
            mCamera->openError = platform::CaptureError{code};
        pressButton();
        compareIdle();
        QCOMPARE(lastError(), errorText(shown));
        pressButton();
        compareRunning();
        QVERIFY(!mCamera->isOpen());
    }

    void anErrorCodeCutToZeroCountsAsSuccess()
    {
        showPaneWithCamera();
        mCamera->opens = false;
        mCamera->openError = platform::CaptureError{0x10000};
        pressButton();
        compareRunningWithoutPicture();
        // The start has failed, so it has started no session and scheduled no reveal of the view.
        wait(1s);
        QVERIFY(!session().isRunning());
        QVERIFY(view().isHidden());
    }

    void anInputThatDoesNotFitIsReported_data()
    {
        QTest::addColumn<bool>("hasError");
        QTest::addColumn<int>("shown");
        QTest::newRow("no error object") << false << -345;
        QTest::newRow("a code") << true << 77;
    }
    void anInputThatDoesNotFitIsReported()
    {
        QFETCH(bool, hasError);
        QFETCH(int, shown);
        showPaneWithCamera();
        mPane->capture->sessionsAccept = false;
        if (hasError)
            mPane->capture->addError = platform::CaptureError{77};
        pressButton();
        compareIdle();
        QCOMPARE(lastError(), errorText(shown));
        QCOMPARE(mPane->takeJournal(),
                 (QStringList{QStringLiteral("make session"), QStringLiteral("list devices"),
                              QStringLiteral("open device"), QStringLiteral("add input"),
                              QStringLiteral("stop session"), QStringLiteral("alert ") + ErrorTitle}));
        QVERIFY(!view().captureSession());
        QVERIFY(mCamera->isOpen());
    }

    void stopSessionReleasesEverything()
    {
        showPaneWithCamera();
        auto &preview = *mPane->outlets().previewView;
        preview.stopSession();
        QVERIFY(mPane->takeJournal().isEmpty());
        pressButton();
        mPane->takeJournal();
        preview.stopSession();
        QCOMPARE(mPane->takeJournal(),
                 (QStringList{QStringLiteral("stop session"), QStringLiteral("close device")}));
        // Only the fake's list and the view still hold the session. The controller has released it.
        QCOMPARE(mPane->capture->sessions.back().use_count(), 2L);
        preview.stopSession();
        QVERIFY(mPane->takeJournal().isEmpty());
        preview.doSeqGrab();
        QCOMPARE(mPane->capture->sessions.size(), std::size_t(2));
        QVERIFY(session().isRunning());
        QCOMPARE(view().captureSession().get(), &session());
    }

    void stopSessionOfAStoppedSessionStillClosesTheDevice()
    {
        showPaneWithCamera();
        pressButton();
        pressButton();
        mPane->takeJournal();
        mPane->outlets().previewView->stopSession();
        QCOMPARE(mPane->takeJournal(), QStringList{QStringLiteral("close device")});
    }

    void stopSessionOfAStartThatFailed()
    {
        showPane();
        pressButton();
        mPane->takeJournal();
        mPane->outlets().previewView->stopSession();
        QCOMPARE(mPane->takeJournal(), QStringList());
        // stopSession() has dropped the session of the failed start. So the next start must look up the
        // camera again and find the one that is added here.
        mCamera = mPane->capture->addDevice(CameraID);
        pressButton();
        compareRunning();
        QVERIFY(mCamera->isOpen());
    }

    void stopSessionAfterAnInputThatDidNotFitClosesTheDevice()
    {
        showPaneWithCamera();
        mPane->capture->sessionsAccept = false;
        pressButton();
        mPane->takeJournal();
        mPane->outlets().previewView->stopSession();
        QCOMPARE(mPane->takeJournal(), QStringList{QStringLiteral("close device")});
    }

    void stopSessionClosesNoDeviceThatIsClosed()
    {
        showPaneWithCamera();
        pressButton();
        mCamera->close();
        mPane->takeJournal();
        mPane->outlets().previewView->stopSession();
        QCOMPARE(mPane->takeJournal(), QStringList{QStringLiteral("stop session")});
    }

    void metersFollowTheAgentTenTimesASecond()
    {
        mPane->agent.left = 0.5F;
        mPane->agent.right = 0.2F;
        showPaneWithCamera();
        pressButton();
        QCOMPARE(leftMeter(), 0.0);
        wait(100ms);
        QCOMPARE(leftMeter(), 0.75);
        QCOMPARE(static_cast<float>(rightMeter()), 0.3F);
        mPane->takeJournal();
        wait(1s);
        const auto calls = mPane->takeRemoteCalls();
        QCOMPARE(calls.count(QStringLiteral("getAudioLevel_l")), 10);
        QCOMPARE(calls.size(), 10);
        pressButton();
        compareIdle();
        mPane->takeJournal();
        wait(1s);
        QVERIFY(mPane->takeRemoteCalls().isEmpty());
        QCOMPARE(mPane->runLoop->timerCount(), std::size_t(0));
    }

    void metersAreNotClamped()
    {
        mPane->agent.left = 4.0F;
        showPaneWithCamera();
        pressButton();
        wait(100ms);
        QCOMPARE(leftMeter(), 6.0);
    }

    void withoutAReplyTheMetersShowNothing()
    {
        mPane->agent.left = 0.5F;
        showPaneWithCamera();
        pressButton();
        wait(100ms);
        mPane->agent.answersLevels = false;
        wait(100ms);
        QCOMPARE(leftMeter(), 0.0);
        QCOMPARE(rightMeter(), 0.0);
    }

    void aCaptureErrorStopsThePreviewAndIsShown_data()
    {
        QTest::addColumn<QVariantMap>("userInfo");
        QTest::addColumn<int>("code");
        QTest::newRow("code") << QVariantMap{{platform::QuickTimeErrorCodeKey, -32}} << -32;
        QTest::newRow("all 32 bits") << QVariantMap{{platform::QuickTimeErrorCodeKey, -2147483647}}
                                     << -2147483647;
        QTest::newRow("no code") << QVariantMap{} << 0;
    }
    void aCaptureErrorStopsThePreviewAndIsShown()
    {
        QFETCH(QVariantMap, userInfo);
        QFETCH(int, code);
        showPaneWithCamera();
        pressButton();
        wait(1s);
        mPane->takeJournal();
        mPane->localCenter->deliver(platform::QuickTimeErrorNotification, userInfo);
        compareIdle();
        QVERIFY(!session().isRunning());
        QCOMPARE(lastError(), errorText(code));
        const auto journal = mPane->takeJournal();
        QVERIFY(journal.indexOf(QStringLiteral("stop session"))
                < journal.indexOf(QStringLiteral("remote cameraDict")));
        QVERIFY(journal.indexOf(QStringLiteral("remote cameraDict"))
                < journal.indexOf(QStringLiteral("alert ") + ErrorTitle));
        pressButton();
        compareRunning();
    }

    void aStoppedPictureIsHiddenBeforeItIsRedrawn()
    {
        showPaneWithCamera();
        pressButton();
        wait(1s);
        session().deliverFrame(plainPicture(Qt::red));
        PaintWatch watch(&view());
        QVERIFY(watch.begin());
        pressButton();
        QCOMPARE(watch.count, 0);
        compareIdle();
    }

    void notificationsOfTheAgentDoNotStopAPreview_data()
    {
        QTest::addColumn<QString>("news");
        for (const QString &news : {NotificationNames::CameraListChanged, NotificationNames::StreamingStarted,
                                    NotificationNames::PairingInitiated,
                                    NotificationNames::StreamingInitiated, NotificationNames::StreamingEnded})
            QTest::newRow(qPrintable(news)) << news;
    }
    void notificationsOfTheAgentDoNotStopAPreview()
    {
        QFETCH(QString, news);
        showPaneWithCamera();
        pressButton();
        wait(1s);
        mPane->takeJournal();
        mPane->agent.addCamera(QStringLiteral("00-11-22-33-44-66"), QStringLiteral("Desk"), 4);
        mPane->agentPosts(news);
        wait(1s);
        QVERIFY(mPane->takeRemoteCalls().contains(QStringLiteral("cameraDict")));
        compareRunning();
        QVERIFY(!view().isHidden());
        session().deliverFrame(plainPicture(Qt::red));
        QCOMPARE(colorOnScreen(), QColor(Qt::red));
    }

    void aPendingRevealEndsWithThePreview()
    {
        const auto runLoop = std::make_shared<FakeRunLoop>(mPane->journal);
        const auto capture = std::make_shared<FakeCapture>(mPane->journal);
        capture->addDevice(CameraID);
        KS7QTCaptureView alone;
        {
            KS7PreviewController preview(capture, runLoop);
            preview.qtView = &alone;
            QCOMPARE(preview.doSeqGrab(), std::int16_t(KS7PreviewController::Running));
            QCOMPARE(runLoop->pendingCount(), std::size_t(1));
        }
        QCOMPARE(runLoop->pendingCount(), std::size_t(0));
        runLoop->advance(1s);
        QVERIFY(alone.isHidden());
    }

    void hidingThePaneStopsTheCapture()
    {
        showPaneWithCamera();
        pressButton();
        wait(1s);
        mPane->hide();
        QVERIFY(!session().isRunning());
        QVERIFY(view().isHidden());
    }

    void hidingDuringTheRevealDelayCancelsTheReveal()
    {
        showPaneWithCamera();
        pressButton();
        mPane->hide();
        wait(1s);
        QVERIFY(view().isHidden());
    }

    void theButtonClosesTheErrorSheet()
    {
        showPane();
        pressButton();
        QVERIFY(mPane->sheets->dismissAlert());
    }

    void hidingThePaneStopsOnlyTheSession()
    {
        // Use no agent: the end of an agent's connection would stop the preview too and hide the effect of
        // hiding the pane.
        mPane->agent.running = false;
        mCamera = mPane->capture->addDevice(CameraID);
        mPane->show();
        mPane->controller().startVideo(nullptr);
        mPane->hide();
        QVERIFY(!session().isRunning());
        QVERIFY(mPane->controller().isStreaming());
        QVERIFY(mPane->controller().hasLevelsTimer());
        QCOMPARE(mPane->outlets().startButton->text(), QStringLiteral("Stop &Preview"));
    }

    void wakingUpClearsSessionAndInput()
    {
        showPaneWithCamera();
        pressButton();
        pressButton();
        mPane->takeJournal();
        mPane->outlets().previewView->awakeFromNib();
        mPane->outlets().previewView->stopSession();
        QCOMPARE(mPane->takeJournal(), QStringList());
        pressButton();
        QCOMPARE(mPane->capture->sessions.size(), std::size_t(2));
    }

private:
    void compareRunningWithoutPicture()
    {
        QCOMPARE(mPane->outlets().startButton->text(), QStringLiteral("Stop &Preview"));
        QVERIFY(mPane->controller().isStreaming());
        QVERIFY(mPane->sheets->alerts.empty());
        QVERIFY(!view().captureSession());
    }
};

QTEST_MAIN(ControllerPreviewTest)
#include "ControllerPreview_test.moc"
