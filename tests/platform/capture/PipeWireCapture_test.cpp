#include "platform/base/RunLoop.h"
#include "platform/base/ToInt32.h"
#include "platform/bus/NotificationCenter.h"
#include "platform/capture/PipeWireCapture.h"
#include "tests/support/StoppedProcess.h"
#include "tests/support/Timeout.h"
#include "tests/support/VirtualCamera.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QPainter>
#include <QProcess>
#include <QTest>

#include <algorithm>
#include <cerrno>
#include <clocale>
#include <csignal>
#include <map>

using platform::CaptureDevice;
using platform::CaptureError;

namespace {

const QString CameraName = QStringLiteral("KS-7 Wireless Webcam");
constexpr QRgb Red = 0xFFFF0000;
constexpr QRgb Green = 0xFF00FF00;
constexpr QRgb Blue = 0xFF0000FF;

/// Compares with a tolerance, because conversions between video formats change colours slightly.
bool looksLike(QRgb shown, QRgb expected)
{
    const auto near = [](int a, int b) { return qAbs(a - b) < 24; };
    return near(qRed(shown), qRed(expected)) && near(qGreen(shown), qGreen(expected))
        && near(qBlue(shown), qBlue(expected));
}

QStringList entries(const QString &folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
}

int openDescriptors()
{
    return static_cast<int>(entries(QStringLiteral("/proc/self/fd")).size());
}

QByteArrayList threadNames()
{
    const QString tasks = QStringLiteral("/proc/self/task/");
    QByteArrayList names;
    for (const auto &task : entries(tasks)) {
        QFile name(tasks + task + QStringLiteral("/comm"));
        if (name.open(QIODevice::ReadOnly))
            names.append(name.readAll().trimmed());
    }
    return names;
}

/// The number of threads. "pool-spawner" does not count, because GLib starts it once and keeps it.
int threads()
{
    const auto names = threadNames();
    return static_cast<int>(names.size() - names.count("pool-spawner"));
}

/// The resident memory of this process, in kilobytes.
int residentMemory()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const auto &line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').first().toInt();
    }
    return 0;
}

/// AddressSanitizer delays the release of memory. With it, the growth cannot be measured, so the result is
/// always true.
bool hasGrownByLess(int before, int kilobytes)
{
#ifdef __SANITIZE_ADDRESS__
    return before > 0 && kilobytes > 0;
#else
    return residentMemory() - before < kilobytes;
#endif
}

std::map<int, void (*)(int)> signalHandlers()
{
    std::map<int, void (*)(int)> handlers;
    for (int number = 1; number < SIGRTMIN; ++number) {
        struct sigaction action = {};
        if (sigaction(number, nullptr, &action) == 0)
            handlers[number] = action.sa_handler;
    }
    return handlers;
}

/// The alpha in memory of the first pixel: QImage::pixel() is always opaque for a format without alpha.
int storedAlpha(const QImage &picture)
{
    return qAlpha(*reinterpret_cast<const QRgb *>(picture.constScanLine(0)));
}

} // namespace

/// Tests cameras of a real PipeWire, from their look-up to the pixels in the view.
class PipeWireCaptureTest : public QObject {
    Q_OBJECT

private:
    std::shared_ptr<platform::LocalNotificationCenter> mCenter;
    std::shared_ptr<platform::Capture> mCapture;
    std::shared_ptr<platform::CaptureSession> mSession;
    std::unique_ptr<platform::CaptureView> mView;
    std::unique_ptr<VirtualCamera> mCamera;
    std::vector<int> mErrors;
    int mFrames = 0;
    QImage mLast;

    std::shared_ptr<CaptureDevice> find(const QString &name)
    {
        for (const auto &device : mCapture->videoInputDevices()) {
            if (device->uniqueID() == name)
                return device;
        }
        return nullptr;
    }
    std::shared_ptr<CaptureDevice> waitFor(const QString &name)
    {
        std::shared_ptr<CaptureDevice> device;
        [&] { QTRY_VERIFY_WITH_TIMEOUT((device = find(name)), Timeout); }();
        return device;
    }
    void plugIn(const QString &format = {}, QRgb color = Red)
    {
        mCamera = std::make_unique<VirtualCamera>(CameraName, QStringLiteral("Kitchen"), color, format);
    }
    void openSession(const QString &name = CameraName)
    {
        const auto device = waitFor(name);
        QVERIFY(device);
        std::optional<CaptureError> error;
        QVERIFY(device->open(error));
        mSession = mCapture->makeSession();
        QVERIFY(mSession->addInput(std::make_shared<platform::CaptureDeviceInput>(device), error));
    }
    /// Makes the session deliver its frames to this test instead of a view.
    void listen()
    {
        mSession->setFrameHandler([this](const QImage &picture) {
            mLast = picture;
            mFrames += picture.isNull() ? 0 : 1;
        });
    }
    void showInView(const QSize &size)
    {
        mView = std::make_unique<platform::CaptureView>();
        mView->resize(size);
        mView->show();
        mView->setCaptureSession(mSession);
    }
    [[nodiscard]] QRgb shownAt(int x, int y) const { return mView->grab().toImage().pixel(x, y); }
    [[nodiscard]] bool arrived(QRgb color) const
    {
        if (mLast.isNull())
            return false;
        // Compare two points in different chroma samples. Chroma read from a wrong address would give them
        // different colours.
        const QPoint center = mLast.rect().center();
        const QPoint other(qMax(0, center.x() - 2), center.y());
        return looksLike(mLast.pixel(center), color) && looksLike(mLast.pixel(other), color);
    }
    void startAndStop()
    {
        mFrames = 0;
        mSession->startRunning();
        QTRY_VERIFY_WITH_TIMEOUT(mFrames > 0, Timeout);
        mSession->stopRunning();
    }
    /// Starts and stops the session `times` times with a frame in between, then `times` times without one.
    void previewAndLetGo(int times)
    {
        mCapture = platform::makePipeWireCapture(mCenter, platform::makeQtRunLoop());
        openSession();
        listen();
        for (int i = 0; i < times; ++i)
            startAndStop();
        for (int i = 0; i < times; ++i) {
            mSession->startRunning();
            mSession->stopRunning();
        }
        mSession.reset();
        mCapture.reset();
    }
    static int pidOf(const QString &program)
    {
        QProcess pgrep;
        // Find the newest process of that name in this test's private session.
        pgrep.start(QStringLiteral("pgrep"),
                    {QStringLiteral("-x"), QStringLiteral("-P"), QString::number(getppid()), program});
        pgrep.waitForFinished();
        return pgrep.readAllStandardOutput().trimmed().split('\n').last().toInt();
    }

    static bool aSourceIsAtWork()
    {
        const auto names = threadNames();
        return std::any_of(names.begin(), names.end(),
                           [](const auto &name) { return name.startsWith("pipewiresrc"); });
    }

    /// Returns whether PipeWire replies. Its socket may exist although it does not: a daemon that was killed
    /// leaves its socket behind.
    static bool pipeWireAnswers()
    {
        QProcess info;
        info.start(QStringLiteral("pw-cli"), {QStringLiteral("info"), QStringLiteral("0")});
        info.waitForFinished();
        return info.exitStatus() == QProcess::NormalExit && info.exitCode() == 0;
    }
    /// Returns whether the session manager knows the node. A stream that starts earlier would fail, because
    /// no one would link it to the node.
    static bool policyKnowsTheCamera()
    {
        QProcess metadata;
        metadata.start(QStringLiteral("pw-metadata"),
                       {QStringLiteral("-n"), QStringLiteral("default"), QStringLiteral("0")});
        metadata.waitForFinished();
        return metadata.readAll().contains(CameraName.toUtf8());
    }
    void watchTheCamera()
    {
        plugIn();
        openSession();
        QVERIFY(mSession);
        listen();
        mSession->startRunning();
        QTRY_VERIFY_WITH_TIMEOUT(mFrames > 3, Timeout);
    }

private Q_SLOTS:
    void init()
    {
        mErrors.clear();
        mFrames = 0;
        mLast = {};
        mCenter = std::make_shared<platform::LocalNotificationCenter>();
        mCenter->addObserver(this, platform::QuickTimeErrorNotification, [this](const auto &notification) {
            mErrors.push_back(platform::toInt32(notification.userInfo, platform::QuickTimeErrorCodeKey));
        });
        mCapture = platform::makePipeWireCapture(mCenter, platform::makeQtRunLoop());
    }
    void cleanup()
    {
        mView.reset();
        mSession.reset();
        mCapture.reset();
        mCamera.reset();
    }

    // This test must run first, because it needs a process in which GStreamer has not started yet.
    void theFirstPreviewDoesNotChangeTheProcess()
    {
        const auto gStreamerRuns = [] {
            QFile maps(QStringLiteral("/proc/self/maps"));
            return maps.open(QIODevice::ReadOnly) && maps.readAll().contains("libgstpipewire");
        };
        const QByteArray locale = std::setlocale(LC_ALL, nullptr);
        // Start the camera before the signal handlers are read, because QProcess may install a handler.
        plugIn();
        const auto handlers = signalHandlers();
        openSession();
        listen();
        QVERIFY(!gStreamerRuns());
        startAndStop();
        QVERIFY(gStreamerRuns());
        QCOMPARE(signalHandlers(), handlers);
        QCOMPARE(QByteArray(std::setlocale(LC_ALL, nullptr)), locale);
    }

    void lookUpsLeakNothing()
    {
        plugIn();
        waitFor(CameraName);
        const int threadsBefore = threads();
        const int descriptors = openDescriptors();
        const int memory = residentMemory();
        for (int i = 0; i < 200; ++i)
            QVERIFY(find(CameraName));
        QVERIFY(threads() <= threadsBefore);
        QCOMPARE(openDescriptors(), descriptors);
        QVERIFY2(hasGrownByLess(memory, 2048), qPrintable(QString::number(residentMemory() - memory)));
    }

    void aCameraIsIdentifiedByItsNodeAndShownByItsDescription()
    {
        plugIn();
        VirtualCamera impostor(QStringLiteral("other"), CameraName, Blue);
        const auto camera = waitFor(CameraName);
        const auto other = waitFor(QStringLiteral("other"));
        QVERIFY(camera && other);
        QCOMPARE(camera->localizedDisplayName(), QStringLiteral("Kitchen"));
        QCOMPARE(other->localizedDisplayName(), CameraName);
        QCOMPARE(mCapture->videoInputDevices().size(), std::size_t(2));
    }

    void eachOfTwoCamerasShowsItsOwnPicture()
    {
        plugIn();
        VirtualCamera other(QStringLiteral("other"), QStringLiteral("Desk"), Blue);
        for (const auto &[name, color] :
             {std::pair(QStringLiteral("other"), Blue), std::pair(CameraName, Red)}) {
            openSession(name);
            listen();
            mFrames = 0;
            mSession->startRunning();
            QTRY_VERIFY_WITH_TIMEOUT(mFrames > 5, Timeout);
            QVERIFY(arrived(color));
            mSession->stopRunning();
        }
        QVERIFY(mErrors.empty());
    }

    void thePictureIsInTheView_data()
    {
        QTest::addColumn<QString>("format");
        QTest::newRow("converted") << "I420 320x240";
        QTest::newRow("packed") << "YUY2 320x240";
        QTest::newRow("as it is") << "BGRx 320x240";
        QTest::newRow("padded lines") << "RGB 322x240";
        QTest::newRow("larger than the view") << "YUY2 640x480";
        QTest::newRow("larger, otherwise as it is") << "BGRx 640x480";
    }
    void thePictureIsInTheView()
    {
        QFETCH(QString, format);
        plugIn(format, Green);
        openSession();
        showInView({400, 240});
        QCOMPARE(shownAt(200, 120), QRgb(0xFF000000));
        mSession->startRunning();
        QTRY_VERIFY_WITH_TIMEOUT(looksLike(shownAt(200, 120), Green), Timeout);
        QVERIFY(looksLike(shownAt(45, 2), Green));
        QVERIFY(looksLike(shownAt(354, 237), Green));
        QCOMPARE(shownAt(10, 120), QRgb(0xFF000000));
        QCOMPARE(shownAt(390, 120), QRgb(0xFF000000));
        mSession->stopRunning();
        QCOMPARE(shownAt(200, 120), QRgb(0xFF000000));
        QVERIFY(mErrors.empty());
    }

    void aFrameOutlivesItsSession()
    {
        plugIn(QStringLiteral("BGRx 320x240"));
        openSession();
        QImage kept;
        mSession->setFrameHandler([&kept](const QImage &picture) {
            if (!picture.isNull())
                kept = picture;
        });
        mSession->startRunning();
        QTRY_VERIFY_WITH_TIMEOUT(!kept.isNull(), Timeout);
        mSession.reset();
        mCapture.reset();
        mCamera.reset();
        QVERIFY(looksLike(kept.pixel(160, 120), Red));
        QCOMPARE(storedAlpha(kept), 255);
    }

    void aLargeFrameArrivesInTheSizeOfTheView_data()
    {
        QTest::addColumn<QString>("format");
        QTest::addColumn<QSize>("limit");
        QTest::addColumn<QSize>("expected");
        QTest::newRow("same shape") << "I420 640x480" << QSize(320, 240) << QSize(320, 240);
        QTest::newRow("wider") << "YUY2 1280x720" << QSize(320, 240) << QSize(320, 180);
        QTest::newRow("higher") << "BGRx 240x480" << QSize(320, 240) << QSize(120, 240);
        QTest::newRow("an odd size") << "I420 640x480" << QSize(333, 251) << QSize(333, 250);
        QTest::newRow("smaller") << "I420 160x120" << QSize(320, 240) << QSize(160, 120);
        QTest::newRow("no size") << "I420 160x120" << QSize(0, 0) << QSize(2, 2);
    }
    void aLargeFrameArrivesInTheSizeOfTheView()
    {
        QFETCH(QString, format);
        QFETCH(QSize, limit);
        QFETCH(QSize, expected);
        plugIn(format);
        openSession();
        listen();
        mSession->setLargestFrame(limit);
        mSession->startRunning();
        QTRY_VERIFY_WITH_TIMEOUT(mFrames > 0, Timeout);
        QVERIFY(arrived(Red));
        QCOMPARE(mLast.size(), expected);
        QCOMPARE(storedAlpha(mLast), 255);
        QVERIFY(mErrors.empty());
    }

    void aRunningPictureFollowsTheViewsSize()
    {
        plugIn(QStringLiteral("YUY2 640x480"));
        openSession();
        listen();
        mSession->startRunning();
        QTRY_COMPARE_WITH_TIMEOUT(mLast.size(), QSize(640, 480), Timeout);
        for (const QSize &size : {QSize(320, 240), QSize(400, 300), QSize(160, 120), QSize(640, 480)}) {
            mSession->setLargestFrame(size);
            QTRY_COMPARE_WITH_TIMEOUT(mLast.size(), size, Timeout);
            QVERIFY(arrived(Red));
        }
        QVERIFY(mErrors.empty());
    }

    void onlyTheNewestFrameIsKept()
    {
        plugIn();
        openSession();
        listen();
        mSession->startRunning();
        QTRY_VERIFY_WITH_TIMEOUT(mFrames > 0, Timeout);
        mCamera->tell(QStringLiteral("colour 0xff00ff00"));
        mCamera->tell(QStringLiteral("tell"));
        mFrames = 0;
        mCamera->waitUntilTold(30);
        QCoreApplication::processEvents();
        // At most two frames arrive: the newest waiting frame, and one that comes while it is delivered.
        QVERIFY2(mFrames <= 2, qPrintable(QString::number(mFrames)));
        QVERIFY(arrived(Green));
    }

    void theFormatMayChangeInMidStream_data()
    {
        QTest::addColumn<QString>("format");
        QTest::addColumn<QSize>("size");
        QTest::newRow("smaller") << "I420 160x120" << QSize(160, 120);
        QTest::newRow("larger") << "I420 640x480" << QSize(640, 480);
        QTest::newRow("another format") << "BGRx 320x240" << QSize(320, 240);
        QTest::newRow("same number of bytes") << "NV12 320x240" << QSize(320, 240);
    }
    void theFormatMayChangeInMidStream()
    {
        QFETCH(QString, format);
        QFETCH(QSize, size);
        plugIn();
        openSession();
        listen();
        mSession->startRunning();
        QTRY_VERIFY_WITH_TIMEOUT(mFrames > 3, Timeout);
        mCamera->tell(QStringLiteral("colour 0xff00ff00"));
        mCamera->tell(QStringLiteral("format ") + format);
        // Frames of the old format may still arrive after the change.
        mFrames = 0;
        QTRY_VERIFY_WITH_TIMEOUT(mFrames > 30 || !mErrors.empty(), Timeout);
        QVERIFY(mErrors.empty());
        QTRY_VERIFY_WITH_TIMEOUT(arrived(Green) && mLast.size() == size, Timeout);
        QVERIFY(mErrors.empty());
        mSession->stopRunning();
        QVERIFY(mLast.isNull());
        mSession->startRunning();
        QTRY_VERIFY_WITH_TIMEOUT(arrived(Green) && mLast.size() == size, Timeout);
        QVERIFY(mErrors.empty());
    }

    void aNodeThatVanishesInMidStreamIsReportedOnce()
    {
        plugIn();
        openSession();
        listen();
        mSession->startRunning();
        QTRY_VERIFY_WITH_TIMEOUT(mFrames > 3, Timeout);
        mCamera->unplug();
        QTRY_VERIFY_WITH_TIMEOUT(!mErrors.empty(), Timeout);
        QCOMPARE(mErrors.size(), std::size_t(1));
        QVERIFY(mErrors.front() != 0);
        QVERIFY(mSession->isRunning());
        mSession->stopRunning();
        plugIn(QString(), Green);
        waitFor(CameraName);
        mSession->startRunning();
        QTRY_VERIFY_WITH_TIMEOUT(arrived(Green), Timeout);
        QCOMPARE(mErrors.size(), std::size_t(1));
    }

    void aSilentCameraThatVanishesIsReported()
    {
        watchTheCamera();
        mCamera->tell(QStringLiteral("pause"));
        // During 90 frame times, the session looks up the silent node several times. Each look-up must find
        // the node.
        mCamera->tell(QStringLiteral("tell"));
        QTRY_VERIFY_WITH_TIMEOUT(mCamera->told() > 90, Timeout);
        QVERIFY(mErrors.empty());
        mCamera->unplug();
        QTRY_COMPARE_WITH_TIMEOUT(mErrors.size(), std::size_t(1), Timeout);
    }

    void aNodeThatIsReplacedUnderItsNameIsStillShown()
    {
        watchTheCamera();
        VirtualCamera successor(CameraName, QStringLiteral("Kitchen"), Green);
        QTRY_COMPARE_WITH_TIMEOUT(mCapture->videoInputDevices().size(), std::size_t(2), Timeout);
        QVERIFY(arrived(Red));
        mCamera->unplug();
        QTRY_VERIFY_WITH_TIMEOUT(arrived(Green), Timeout);
        QVERIFY(mErrors.empty());
    }

    void aNodeThatReturnsResumesOrReportsAFailure()
    {
        watchTheCamera();
        mCamera->unplug();
        plugIn(QString(), Green);
        QTRY_VERIFY_WITH_TIMEOUT(arrived(Green) || !mErrors.empty(), Timeout);
    }

    void aCameraThatChangesItsFormatManyTimesIsStillShown()
    {
        watchTheCamera();
        // A format change restarts the stream. After five restarts without a frame the session reports an
        // error, but seven changes must work here, because a frame follows each of them.
        for (int change = 0; change < 7; ++change) {
            const QSize size = change % 2 == 0 ? QSize(160, 120) : QSize(320, 240);
            mCamera->tell(QStringLiteral("format I420 %1x%2").arg(size.width()).arg(size.height()));
            QTRY_VERIFY_WITH_TIMEOUT(mLast.size() == size || !mErrors.empty(), Timeout);
            QVERIFY(mErrors.empty());
        }
    }

    void aCameraThatIsReplacedRepeatedlyWithoutAFrameIsReportedOnce()
    {
        watchTheCamera();
        for (int successors = 0; successors < 20 && mErrors.empty(); ++successors) {
            auto successor = std::make_unique<VirtualCamera>(CameraName, QStringLiteral("Kitchen"), Red);
            successor->tell(QStringLiteral("pause"));
            successor->tell(QStringLiteral("tell"));
            QTRY_COMPARE_WITH_TIMEOUT(mCapture->videoInputDevices().size(), std::size_t(2), Timeout);
            mCamera = std::move(successor);
            // Wait until the session has connected to this camera, or has given up. Only a connected camera
            // reports frames.
            QTRY_VERIFY_WITH_TIMEOUT(mCamera->told() > 0 || !mErrors.empty(), Timeout);
        }
        QCOMPARE(mErrors.size(), std::size_t(1));
        QVERIFY(mErrors.front() != 0);
        // A node of this name existed all the time, so the error must not be ENODEV.
        QVERIFY(mErrors.front() != -ENODEV);
    }

    void aNodeThatShowsAnotherCameraIsStillShown()
    {
        watchTheCamera();
        mCamera->tell(QStringLiteral("colour 0xff000000"));
        QTRY_VERIFY_WITH_TIMEOUT(arrived(0xFF000000), Timeout);
        mCamera->tell(QStringLiteral("colour 0xff0000ff"));
        QTRY_VERIFY_WITH_TIMEOUT(arrived(Blue), Timeout);
        QVERIFY(mErrors.empty());
    }

    void anotherCameraDoesNotTakeThePlaceOfAVanishedOne()
    {
        plugIn();
        VirtualCamera other(QStringLiteral("other"), QStringLiteral("Desk"), Blue);
        waitFor(QStringLiteral("other"));
        openSession();
        listen();
        mSession->startRunning();
        QTRY_VERIFY_WITH_TIMEOUT(mFrames > 3, Timeout);
        mCamera->unplug();
        QTRY_VERIFY_WITH_TIMEOUT(!mErrors.empty(), Timeout);
        QVERIFY(arrived(Red));
        mSession->stopRunning();
        mErrors.clear();
        mFrames = 0;
        mSession->startRunning();
        QTRY_VERIFY_WITH_TIMEOUT(!mErrors.empty(), Timeout);
        QCOMPARE(mFrames, 0);
    }

    void stoppingAfterTheNodeHasVanishedReportsNothing()
    {
        plugIn();
        openSession();
        listen();
        startAndStop();
        mSession->startRunning();
        mCamera->unplug();
        mSession->stopRunning();
        QVERIFY(mLast.isNull());
        plugIn();
        waitFor(CameraName);
        startAndStop();
        QVERIFY(mErrors.empty());
    }

    void aFailureThatIsQueuedAtTheStopIsNotReported()
    {
        plugIn();
        openSession();
        mCamera->unplug();
        QTRY_VERIFY_WITH_TIMEOUT(!find(CameraName), Timeout);
        for (int i = 0; i < 10; ++i) {
            mSession->startRunning();
            // These look-ups take time but run no event loop. So the failure of the stream's own look-up is
            // still queued when the session stops.
            for (int lookUps = 0; lookUps < 5; ++lookUps)
                QVERIFY(!find(CameraName));
            mSession->stopRunning();
            QCoreApplication::processEvents();
            QVERIFY(mErrors.empty());
        }
    }

    void aNodeWithoutFramesIsBlackWithoutAnError()
    {
        mCamera = std::make_unique<VirtualCamera>(CameraName, QStringLiteral("Kitchen"), Red);
        mCamera->tell(QStringLiteral("pause"));
        openSession();
        showInView({320, 240});
        mSession->startRunning();
        // During 90 frame times, the session looks up the node several times. No look-up may report the
        // camera as missing.
        mCamera->tell(QStringLiteral("tell"));
        QTRY_VERIFY_WITH_TIMEOUT(mCamera->told() > 90, Timeout);
        QCOMPARE(shownAt(160, 120), QRgb(0xFF000000));
        QVERIFY(mErrors.empty());
        QVERIFY(mSession->isRunning());
        mSession->stopRunning();
        QVERIFY(mErrors.empty());
    }

    void theLastFrameStaysWhenFramesStop()
    {
        plugIn();
        openSession();
        showInView({320, 240});
        mSession->startRunning();
        QTRY_VERIFY_WITH_TIMEOUT(looksLike(shownAt(160, 120), Red), Timeout);
        mCamera->tell(QStringLiteral("pause"));
        mCamera->tell(QStringLiteral("colour 0xff00ff00"));
        // During 90 frame times, the session looks up the silent node several times. Each look-up must find
        // the node.
        mCamera->tell(QStringLiteral("tell"));
        QTRY_VERIFY_WITH_TIMEOUT(mCamera->told() > 90, Timeout);
        QVERIFY(mErrors.empty());
        QVERIFY(looksLike(shownAt(160, 120), Red));
        mCamera->tell(QStringLiteral("resume"));
        QTRY_VERIFY_WITH_TIMEOUT(looksLike(shownAt(160, 120), Green), Timeout);
    }

    void aVanishedDeviceCannotBeOpened()
    {
        plugIn();
        const auto device = waitFor(CameraName);
        QVERIFY(device);
        mCamera->unplug();
        QTRY_VERIFY_WITH_TIMEOUT(!find(CameraName), Timeout);
        std::optional<CaptureError> error;
        QVERIFY(!device->open(error));
        QVERIFY(error);
        QCOMPARE(error->code, -ENODEV);
        QVERIFY(!device->isOpen());
    }

    void aSessionTakesOneOpenDevice()
    {
        plugIn();
        const auto device = waitFor(CameraName);
        const auto input = std::make_shared<platform::CaptureDeviceInput>(device);
        const auto session = mCapture->makeSession();
        std::optional<CaptureError> error;
        QVERIFY(!session->addInput(input, error));
        QCOMPARE(error->code, -EINVAL);
        error.reset();
        QVERIFY(device->open(error));
        QVERIFY(device->isOpen());
        QVERIFY(session->addInput(input, error));
        QVERIFY(!error);
        QVERIFY(!session->addInput(input, error));
        QCOMPARE(error->code, -EBUSY);
        error.reset();
        QVERIFY(!session->addInput(nullptr, error));
        device->close();
        QVERIFY(!device->isOpen());
    }

    void aSessionWithoutAnInputRunsAndShowsNothing()
    {
        mSession = mCapture->makeSession();
        showInView({320, 240});
        mSession->startRunning();
        mSession->startRunning();
        QVERIFY(mSession->isRunning());
        QCOMPARE(shownAt(160, 120), QRgb(0xFF000000));
        mSession->stopRunning();
        mSession->stopRunning();
        QVERIFY(!mSession->isRunning());
        QVERIFY(mErrors.empty());
    }

    void manyStartsAndStopsLeakNothing()
    {
        const int threadsBefore = threads();
        plugIn();
        previewAndLetGo(10);
        // Streams must not use GLib's thread pool, which keeps idle threads for 15 s. The limit of 5 s is
        // shorter, so that such a thread fails the test.
        QTRY_VERIFY_WITH_TIMEOUT(threads() <= threadsBefore, 5000);
        const int descriptors = openDescriptors();
        const int memory = residentMemory();
        previewAndLetGo(200);
        QTRY_VERIFY_WITH_TIMEOUT(threads() <= threadsBefore, 5000);
        QTRY_VERIFY_WITH_TIMEOUT(openDescriptors() <= descriptors, 60000);
        QVERIFY2(hasGrownByLess(memory, 2048), qPrintable(QString::number(residentMemory() - memory)));
        QVERIFY(mErrors.empty());
    }

    void aHungPipeWireBlocksForALimitedTime()
    {
        watchTheCamera();
        const int daemon = pidOf(QStringLiteral("pipewire"));
        QVERIFY(stopProcess(daemon));
        mSession->stopRunning();
        const auto devices = mCapture->videoInputDevices();
        resumeProcess(daemon);
        QVERIFY(devices.empty());
        QVERIFY(waitFor(CameraName));
        startAndStop();
        QVERIFY(mErrors.empty());
    }

    void aHungStreamDoesNotDelayTheNext_data()
    {
        QTest::addColumn<bool>("waits");
        QTest::newRow("stopped while hung") << false;
        QTest::newRow("next one queued") << true;
    }
    void aHungStreamDoesNotDelayTheNext()
    {
        QFETCH(bool, waits);
        plugIn();
        openSession();
        QVERIFY(mSession);
        listen();
        startAndStop();
        const int policy = pidOf(QStringLiteral("wireplumber"));
        QVERIFY(stopProcess(policy));
        mFrames = 0;
        mSession->startRunning();
        // pipewiresrc now waits for the stopped session manager to link the camera, for up to half a minute.
        QTRY_VERIFY_WITH_TIMEOUT(aSourceIsAtWork(), Timeout);
        const QDeadlineTimer impatience(waits ? 0 : 1500);
        QTRY_VERIFY_WITH_TIMEOUT(impatience.hasExpired(), Timeout);
        mSession->stopRunning();
        if (waits)
            mSession->startRunning();
        resumeProcess(policy);
        mSession->startRunning();
        QTRY_VERIFY_WITH_TIMEOUT(mFrames > 0, Timeout);
        mSession->stopRunning();
        QVERIFY(mErrors.empty());
    }

    // This test must run last, because it kills the session's PipeWire.
    void pipeWireMayRestart()
    {
        watchTheCamera();
        const int pipeWire = pidOf(QStringLiteral("pipewire"));
        QVERIFY(pipeWire > 0);
        kill(pipeWire, SIGKILL);
        QTRY_VERIFY_WITH_TIMEOUT(!mErrors.empty(), Timeout);
        QCOMPARE(mErrors.size(), std::size_t(1));
        QVERIFY(mErrors.front() != 0);
        mSession->stopRunning();
        QVERIFY(mCapture->videoInputDevices().empty());

        QProcess daemon;
        QProcess policy;
        daemon.start(QStringLiteral("pipewire"), QStringList());
        QVERIFY(daemon.waitForStarted());
        QTRY_VERIFY_WITH_TIMEOUT(pipeWireAnswers(), Timeout);
        policy.start(QStringLiteral("wireplumber"), QStringList());
        plugIn(QString(), Green);
        QVERIFY(waitFor(CameraName));
        QTRY_VERIFY_WITH_TIMEOUT(policyKnowsTheCamera(), Timeout);
        mErrors.clear();
        mSession->startRunning();
        QTRY_VERIFY_WITH_TIMEOUT(arrived(Green), Timeout);
        QVERIFY(mErrors.empty());
        mSession->stopRunning();
        for (QProcess *process : {&policy, &daemon}) {
            process->kill();
            process->waitForFinished();
        }
    }
};

QTEST_MAIN(PipeWireCaptureTest)
#include "PipeWireCapture_test.moc"
