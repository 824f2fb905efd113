#include "preview/KS7QTCaptureView.h"
#include "tests/fakes/FakeCapture.h"
#include "tests/support/Timeout.h"

#include <QTest>

namespace {

/// A view that counts its paint events.
class CountingView : public KS7QTCaptureView {
public:
    int paints = 0;

protected:
    void drawRect(const QRect &rect) override
    {
        ++paints;
        KS7QTCaptureView::drawRect(rect);
    }
};

/// Renders the view at a scale of 200 %.
QImage drawnAtDoubleScale(QWidget &view)
{
    QImage surface(view.size() * 2, QImage::Format_RGB32);
    surface.setDevicePixelRatio(2);
    surface.fill(Qt::magenta);
    view.render(&surface);
    return surface;
}

} // namespace

/// Tests when and how the view paints the frames of its session.
class KS7QTCaptureViewTest : public QObject {
    Q_OBJECT

private:
    std::shared_ptr<FakeCaptureSession> mSession;
    std::unique_ptr<CountingView> mView;

    void showView(const QSize &size)
    {
        mView->resize(size);
        mView->show();
        QVERIFY(QTest::qWaitForWindowExposed(mView.get(), Timeout));
    }
    void startWithPicture(const QImage &picture)
    {
        mView->setCaptureSession(mSession);
        mSession->startRunning();
        mSession->deliverFrame(picture);
    }
    static QImage plainPicture(const QSize &size, const QColor &color)
    {
        QImage picture(size, QImage::Format_RGB32);
        picture.fill(color);
        return picture;
    }
    [[nodiscard]] QColor shownAt(int x, int y) const { return mView->grab().toImage().pixelColor(x, y); }

private Q_SLOTS:
    void init()
    {
        mSession = std::make_shared<FakeCaptureSession>(Journal());
        mView = std::make_unique<CountingView>();
    }

    void aNewViewIsHidden() { QVERIFY(mView->isHidden()); }

    void withoutASessionItIsBlack()
    {
        showView({200, 100});
        QCOMPARE(shownAt(0, 0), QColor(Qt::black));
        QCOMPARE(shownAt(199, 99), QColor(Qt::black));
    }

    void aSessionWithoutAFrameIsBlack()
    {
        showView({200, 100});
        mView->setCaptureSession(mSession);
        mSession->startRunning();
        QCOMPARE(shownAt(100, 50), QColor(Qt::black));
    }

    void aStoppedSessionIsBlack()
    {
        showView({200, 100});
        startWithPicture(plainPicture({40, 20}, Qt::green));
        QCOMPARE(shownAt(100, 50), QColor(Qt::green));
        mSession->stopRunning();
        QCOMPARE(shownAt(100, 50), QColor(Qt::black));
    }

    void anEmptyFrameMakesTheViewBlack()
    {
        showView({200, 100});
        startWithPicture(plainPicture({40, 20}, Qt::green));
        mSession->deliverFrame({});
        QCOMPARE(shownAt(100, 50), QColor(Qt::black));
    }

    void theAspectRatioIsKept_data()
    {
        QTest::addColumn<QSize>("window");
        QTest::addColumn<QRect>("picture");
        QTest::newRow("as large") << QSize(80, 60) << QRect(0, 0, 80, 60);
        QTest::newRow("wide window") << QSize(200, 60) << QRect(60, 0, 80, 60);
        QTest::newRow("tall window") << QSize(80, 100) << QRect(0, 20, 80, 60);
        QTest::newRow("larger") << QSize(400, 300) << QRect(0, 0, 400, 300);
    }
    void theAspectRatioIsKept()
    {
        QFETCH(QSize, window);
        QFETCH(QRect, picture);
        showView(window);
        startWithPicture(plainPicture({80, 60}, Qt::blue));
        const QImage shown = mView->grab().toImage();
        for (int x = 0; x < window.width(); ++x) {
            for (int y = 0; y < window.height(); ++y) {
                const QColor expected = picture.contains(x, y) ? Qt::blue : Qt::black;
                if (shown.pixelColor(x, y) != expected)
                    QFAIL(qPrintable(QStringLiteral("wrong colour at %1, %2").arg(x).arg(y)));
            }
        }
    }

    void aFrameOfTheScreensSizeIsSharpAtDoubleScale()
    {
        showView({40, 30});
        QImage stripes(80, 60, QImage::Format_RGB32);
        for (int y = 0; y < stripes.height(); ++y) {
            for (int x = 0; x < stripes.width(); ++x)
                stripes.setPixel(x, y, x % 2 == 0 ? 0xFFFFFFFF : 0xFF000000);
        }
        startWithPicture(stripes);
        QCOMPARE(drawnAtDoubleScale(*mView).convertToFormat(QImage::Format_RGB32).pixelColor(4, 10),
                 QColor(Qt::white));
        QCOMPARE(drawnAtDoubleScale(*mView).pixelColor(5, 10), QColor(Qt::black));
    }

    void framesAreRequestedInDevicePixels()
    {
        showView({200, 100});
        mView->setCaptureSession(mSession);
        const qreal ratio = mView->devicePixelRatioF();
        QCOMPARE(mSession->largestFrame, (QSizeF(200, 100) * ratio).toSize());
        mSession->startRunning();
        mView->resize(300, 200);
        mSession->deliverFrame(plainPicture({200, 100}, Qt::green));
        QCOMPARE(mSession->largestFrame, (QSizeF(300, 200) * ratio).toSize());
    }

    void everySessionGetsTheLargestFrameSize()
    {
        showView({200, 100});
        mView->setCaptureSession(mSession);
        const auto other = std::make_shared<FakeCaptureSession>(Journal());
        mView->setCaptureSession(other);
        QCOMPARE(other->largestFrame, mSession->largestFrame);
        QVERIFY(!other->largestFrame.isEmpty());
    }

    void aHiddenViewPaintsNothing()
    {
        startWithPicture(plainPicture({80, 60}, Qt::blue));
        for (int i = 0; i < 10; ++i)
            mSession->deliverFrame(plainPicture({80, 60}, Qt::red));
        mView->repaint();
        QCoreApplication::processEvents();
        QCOMPARE(mView->paints, 0);
        showView({80, 60});
        QCOMPARE(shownAt(40, 30), QColor(Qt::red));
    }

    void aBurstOfFramesIsPaintedOnce()
    {
        showView({80, 60});
        startWithPicture(plainPicture({80, 60}, Qt::blue));
        QTRY_VERIFY_WITH_TIMEOUT(mView->paints > 0, Timeout);
        QCoreApplication::processEvents();
        mView->paints = 0;
        for (int i = 0; i < 10; ++i)
            mSession->deliverFrame(plainPicture({80, 60}, Qt::red));
        QTRY_VERIFY_WITH_TIMEOUT(mView->paints > 0, Timeout);
        QCoreApplication::processEvents();
        QCOMPARE(mView->paints, 1);
    }

    void aSessionOutlivesItsView()
    {
        startWithPicture(plainPicture({80, 60}, Qt::blue));
        mView.reset();
        mSession->deliverFrame(plainPicture({80, 60}, Qt::red));
        QVERIFY(mSession->isRunning());
    }

    void anotherSessionsFrameIsNotShown()
    {
        showView({80, 60});
        startWithPicture(plainPicture({80, 60}, Qt::blue));
        const auto other = std::make_shared<FakeCaptureSession>(Journal());
        mView->setCaptureSession(other);
        other->startRunning();
        mSession->deliverFrame(plainPicture({80, 60}, Qt::red));
        QCOMPARE(shownAt(40, 30), QColor(Qt::black));
    }
};

QTEST_MAIN(KS7QTCaptureViewTest)
#include "KS7QTCaptureView_test.moc"
