#include "platform/base/RunLoop.h"
#include "platform/base/ToInt32.h"
#include "platform/bus/NotificationCenter.h"
#include "platform/capture/PipeWireCapture.h"
#include "preview/KS7PreviewController.h"
#include "preview/KS7QTCaptureView.h"
#include "tests/support/Timeout.h"
#include "tests/support/VirtualCamera.h"

#include <QTest>

namespace {

const QString CameraID = QStringLiteral("KS-7 Wireless Webcam");
const QString LegacyCameraID =
    QStringLiteral("com.apple.QTKit.legacydevice-KS-7 Wireless Webcam-vdig-usbv-Orvx");
constexpr QRgb Black = 0xFF000000;
constexpr QRgb Red = 0xFFFF0000;
constexpr QRgb Blue = 0xFF0000FF;

} // namespace

/// Tests the preview with cameras of a real PipeWire: the selected camera and the visible picture.
class KS7PreviewControllerTest : public QObject {
    Q_OBJECT

private:
    std::shared_ptr<platform::Capture> mCapture;
    std::unique_ptr<QWidget> mPane;
    std::unique_ptr<KS7PreviewController> mPreview;
    std::vector<std::unique_ptr<VirtualCamera>> mCameras;
    std::vector<int> mErrors;

    void plugIn(const QString &nodeName, const QString &description, QRgb color)
    {
        mCameras.push_back(
            std::make_unique<VirtualCamera>(nodeName, description, color, QStringLiteral("BGRx 320x240")));
        QTRY_VERIFY_WITH_TIMEOUT(isThere(nodeName), Timeout);
    }
    [[nodiscard]] bool isThere(const QString &nodeName) const
    {
        const auto devices = mCapture->videoInputDevices();
        return std::any_of(devices.begin(), devices.end(),
                           [&](const auto &device) { return device->uniqueID() == nodeName; });
    }
    [[nodiscard]] KS7QTCaptureView &view() const { return *mPreview->qtView; }
    [[nodiscard]] QRgb shown() const { return mPane->grab().toImage().pixel(mPane->rect().center()); }

private Q_SLOTS:
    void init()
    {
        mErrors.clear();
        const auto center = std::make_shared<platform::LocalNotificationCenter>();
        center->addObserver(this, platform::QuickTimeErrorNotification, [this](const auto &notification) {
            mErrors.push_back(platform::toInt32(notification.userInfo, platform::QuickTimeErrorCodeKey));
        });
        const auto runLoop = platform::makeQtRunLoop();
        mCapture = platform::makePipeWireCapture(center, runLoop);
        mPane = std::make_unique<QWidget>();
        mPane->resize(320, 240);
        mPane->setStyleSheet(QStringLiteral("background: gray"));
        mPreview = std::make_unique<KS7PreviewController>(mCapture, runLoop);
        mPreview->qtView = new KS7QTCaptureView(mPane.get());
        mPreview->qtView->resize(320, 240);
        mPreview->awakeFromNib();
        mPane->show();
    }
    void cleanup()
    {
        mPreview->stopSession();
        mPane.reset();
        mPreview.reset();
        mCapture.reset();
        mCameras.clear();
    }

    void theCameraIsFoundByEitherOfItsIds_data()
    {
        QTest::addColumn<QString>("id");
        QTest::newRow("its name") << CameraID;
        QTest::newRow("the older one") << LegacyCameraID;
    }
    void theCameraIsFoundByEitherOfItsIds()
    {
        QFETCH(QString, id);
        plugIn(QStringLiteral("Built-in"), QStringLiteral("Built-in"), Blue);
        plugIn(id, QStringLiteral("Kitchen"), Red);
        QCOMPARE(mPreview->doSeqGrab(), std::int16_t(KS7PreviewController::Running));
        QVERIFY(view().isHidden());
        QTRY_COMPARE_WITH_TIMEOUT(shown(), Red, Timeout);
        QVERIFY(view().isVisible());
        mPreview->endGrab();
        QVERIFY(view().isHidden());
        QVERIFY(mErrors.empty());
    }

    void aSimilarIdFindsNoCamera_data()
    {
        QTest::addColumn<QString>("id");
        QTest::newRow("its name and a number") << CameraID + QStringLiteral(" 2");
        QTest::newRow("its name in small letters") << CameraID.toLower();
        QTest::newRow("the older one and a letter") << LegacyCameraID + QLatin1Char('x');
    }
    void aSimilarIdFindsNoCamera()
    {
        QFETCH(QString, id);
        plugIn(id, QStringLiteral("Kitchen"), Blue);
        QCOMPARE(mPreview->doSeqGrab(), std::int16_t(-333));
        QVERIFY(view().isHidden());
    }

    void aDisplayNameIsNotAnId()
    {
        plugIn(QStringLiteral("Built-in"), CameraID, Blue);
        mCameras.back()->tell(QStringLiteral("tell"));
        QCOMPARE(mPreview->doSeqGrab(), std::int16_t(KS7PreviewController::NoCamera));
        QVERIFY(view().isHidden());
        // The failed start has kept its session without a camera. The next start runs this session, so the
        // picture is black.
        QCOMPARE(mPreview->doSeqGrab(), std::int16_t(KS7PreviewController::Running));
        QTRY_VERIFY_WITH_TIMEOUT(view().isVisible(), Timeout);
        QCOMPARE(shown(), Black);
        QCOMPARE(mCameras.back()->told(), 0);
    }

    void aCameraThatVanishesInMidStreamIsReported()
    {
        plugIn(CameraID, QStringLiteral("Kitchen"), Red);
        mPreview->doSeqGrab();
        QTRY_COMPARE_WITH_TIMEOUT(shown(), Red, Timeout);
        mCameras.back()->unplug();
        QTRY_COMPARE_WITH_TIMEOUT(mErrors.size(), std::size_t(1), Timeout);
        mPreview->endGrab();
        mCameras.clear();
        plugIn(CameraID, QStringLiteral("Kitchen"), Blue);
        QCOMPARE(mPreview->doSeqGrab(), std::int16_t(KS7PreviewController::Running));
        QTRY_COMPARE_WITH_TIMEOUT(shown(), Blue, Timeout);
    }

    void aCameraThatNeverSendsIsBlack()
    {
        plugIn(CameraID, QStringLiteral("Kitchen"), Red);
        mCameras.back()->tell(QStringLiteral("pause"));
        mCameras.back()->tell(QStringLiteral("tell"));
        QCOMPARE(mPreview->doSeqGrab(), std::int16_t(KS7PreviewController::Running));
        QTRY_VERIFY_WITH_TIMEOUT(mCameras.back()->told() > 60 && view().isVisible(), Timeout);
        QCOMPARE(shown(), Black);
        QVERIFY(mErrors.empty());
        mCameras.back()->tell(QStringLiteral("resume"));
        QTRY_COMPARE_WITH_TIMEOUT(shown(), Red, Timeout);
    }

    void stoppingBeforeTheRevealNeverShowsTheView()
    {
        plugIn(CameraID, QStringLiteral("Kitchen"), Red);
        mCameras.back()->tell(QStringLiteral("tell"));
        mPreview->doSeqGrab();
        QTRY_VERIFY_WITH_TIMEOUT(mCameras.back()->told() > 0 || view().isVisible(), Timeout);
        mPreview->endGrab();
        mPreview->display();
        QVERIFY(view().isHidden());
        // A preview shows its view after a delay, which endGrab() must cancel. Wait for the same delay: start
        // a second preview and wait until its view is visible.
        KS7PreviewController other(mCapture, platform::makeQtRunLoop());
        KS7QTCaptureView otherView;
        other.qtView = &otherView;
        other.doSeqGrab();
        QTRY_VERIFY_WITH_TIMEOUT(otherView.isVisible(), Timeout);
        QVERIFY(view().isHidden());
        other.stopSession();
    }
};

QTEST_MAIN(KS7PreviewControllerTest)
#include "KS7PreviewController_test.moc"
