#include "cameras/CamCell.h"
#include "cameras/CameraTableSource.h"
#include "cameras/KS7AnimatingStatusTableView.h"
#include "cameras/PrefsBundle.h"
#include "tests/fakes/FakeBundle.h"
#include "tests/fakes/FakeRunLoop.h"

#include <QPainter>
#include <QTemporaryDir>
#include <QTest>

using namespace std::chrono_literals;

namespace {

const QColor DarkGray(85, 85, 85);

enum class Dot { Green, Red, Orange, Gray, Unknown };

/// Returns which of a camera's four status dots has this colour at its centre.
Dot dotOfColor(const QColor &color)
{
    if (color.saturation() < 40)
        return color.value() > 245 ? Dot::Unknown : Dot::Gray;
    if (color.hue() > 80 && color.hue() < 160)
        return Dot::Green;
    return color.hue() > 20 && color.hue() < 60 ? Dot::Orange : Dot::Red;
}

} // namespace

/// Wraps the pane's resources and records the names of the requested ones.
class AskedBundle final : public platform::Bundle {
public:
    [[nodiscard]] QString pathForResource(const QString &name, const QString &type) const override
    {
        asked.append(name + QLatin1Char('.') + type);
        return mResources.pathForResource(name, type);
    }
    [[nodiscard]] QVariantMap infoDictionary() const override { return mResources.infoDictionary(); }
    mutable QStringList asked;

private:
    FakeBundle mResources;
};

/// A table source without cameras. The table's cycle() ends the animation if no camera of its source is
/// starting, so it always does with this source.
class NoCameras final : public CameraTableSource {
public:
    int numberOfRowsInTableView(const QObject *) override { return 0; }
    QVariant tableViewObjectValue(const QObject *, const QString &, int) override { return {}; }
    void tableViewSelectionDidChange(const platform::Notification &) override { }
    [[nodiscard]] const QHash<QString, std::shared_ptr<KS7Cam>> &cameras() const override { return mCameras; }

private:
    QHash<QString, std::shared_ptr<KS7Cam>> mCameras;
};

/// A widget on a screen with a given font DPI.
class ViewOfDpi final : public QWidget {
public:
    int dpi = 96;

protected:
    [[nodiscard]] int metric(PaintDeviceMetric metric) const override
    {
        return metric == PdmDpiY ? dpi : QWidget::metric(metric);
    }
};

/// Tests the rows of the camera table by their pixels.
class CamCellTest : public QObject {
    Q_OBJECT

    std::shared_ptr<AskedBundle> mBundle = std::make_shared<AskedBundle>();
    std::shared_ptr<FakeRunLoop> mRunLoop = std::make_shared<FakeRunLoop>(nullptr);
    std::unique_ptr<KS7AnimatingStatusTableView> mTable;
    CamCell mCell;
    qreal mScale = 1;
    QColor mGround;

    static constexpr QRect Frame{20, 10, 200, 36};

    void showCamera(const QString &name, int status)
    {
        mCell.setObjectValue(KS7Cam::camWithName(name, QString(), status));
    }

    QImage drawn(const QRect &frame = Frame)
    {
        const QRect canvas = frame.adjusted(0, 0, 60, 20);
        QImage image(QSize(canvas.right() + 1, canvas.bottom() + 1) * mScale,
                     QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(mScale);
        image.fill(mGround);
        QPainter painter(&image);
        mCell.drawWithFrame(&painter, frame, mTable.get());
        return image;
    }

    /// The opacity of each of the image's pixels.
    static QImage shapeOf(const QString &name)
    {
        const QImage image(FakeBundle().pathForResource(name, QStringLiteral("png")));
        return image.convertToFormat(QImage::Format_Alpha8);
    }

    /// Returns how many per cent of the pixels are much more opaque in one image than in the other.
    static int differenceInShape(const QImage &one, const QImage &other)
    {
        int count = 0;
        for (int y = 0; y < one.height(); ++y) {
            for (int x = 0; x < one.width(); ++x)
                count += std::abs(one.pixelColor(x, y).alpha() - other.pixelColor(x, y).alpha()) > 80 ? 1 : 0;
        }
        return 100 * count / (one.width() * one.height());
    }

    /// The bounds of all pixels in `part` that differ from the background, in logical coordinates.
    QRectF inkWithin(const QImage &image, const QRect &part) const
    {
        QRect ink;
        const QRect pixels(part.topLeft() * mScale, part.size() * mScale);
        for (int y = pixels.top(); y <= pixels.bottom(); ++y) {
            for (int x = pixels.left(); x <= pixels.right(); ++x) {
                if (image.valid(x, y) && image.pixelColor(x, y) != mGround)
                    ink |= QRect(x, y, 1, 1);
            }
        }
        return {QPointF(ink.topLeft()) / mScale, QSizeF(ink.size()) / mScale};
    }

    QRectF inkOf(const QImage &image) const { return inkWithin(image, QRect({0, 0}, image.size() / mScale)); }

    QColor at(const QImage &image, const QPoint &point) const { return image.pixelColor(point * mScale); }

    Dot dotOf(const QImage &image) const { return dotOfColor(at(image, Frame.topLeft() + QPoint(7, 26))); }

    /// The colour in `part` that differs most from the background. Thick parts of a text have the text's own
    /// colour.
    QColor inkColorWithin(const QImage &image, const QRect &part) const
    {
        QColor ink = mGround;
        int furthest = 0;
        for (int y = part.top() * int(mScale); y <= part.bottom() * int(mScale); ++y) {
            for (int x = part.left() * int(mScale); x <= part.right() * int(mScale); ++x) {
                const auto color = image.pixelColor(x, y);
                const int distance = std::abs(qGray(color.rgb()) - qGray(mGround.rgb()));
                if (distance > furthest) {
                    furthest = distance;
                    ink = color;
                }
            }
        }
        return ink;
    }

    /// Returns whether two colours are about equally bright. Thin text is blended with the background, so it
    /// may have no pixel of the exact colour.
    static bool isAbout(const QColor &color, const QColor &expected)
    {
        return std::abs(qGray(color.rgb()) - qGray(expected.rgb())) <= 24;
    }

    static QRect nameArea() { return {Frame.left() + 3, Frame.top() + 3, Frame.width() - 10, 15}; }
    static QRect statusArea() { return {Frame.left() + 13, Frame.top() + 19, 100, 13}; }

    static void scales()
    {
        QTest::addColumn<qreal>("scale");
        QTest::newRow("scale 1") << qreal(1);
        QTest::newRow("scale 2") << qreal(2);
    }

private Q_SLOTS:
    void init()
    {
        mScale = 1;
        mGround = QColor(250, 250, 250);
        mTable = std::make_unique<KS7AnimatingStatusTableView>();
        mTable->awakeFromNib(mRunLoop);
        mCell = CamCell();
        mCell.initTextCell(QStringLiteral("foobar"), mBundle);
    }

    void theRectanglesOfARowAreFixed()
    {
        const auto layout = camCellLayout(QRect(20, 10, 200, 36), QSize(8, 8));
        QCOMPARE(layout.name, QRect(23, 13, 190, 20));
        QCOMPARE(layout.status, QPoint(33, 29));
        QCOMPARE(layout.dot, QRect(23, 32, 8, 8));
    }

    void theHeightOfTheFrameIsNotUsed()
    {
        const auto low = camCellLayout(QRect(0, 0, 100, 1), QSize(8, 8));
        const auto high = camCellLayout(QRect(0, 0, 100, 500), QSize(8, 8));
        QCOMPARE(low.dot, high.dot);
        QCOMPARE(low.name, high.name);
    }

    void aRowTooNarrowForANameHasAnEmptyNameRectangle()
    {
        QCOMPARE(camCellLayout(QRect(0, 0, 5, 36), QSize(8, 8)).name.width(), 0);
        showCamera(QStringLiteral("Kitchen"), 4);
        drawn(QRect(0, 0, 5, 36));
    }

    void thePartsOfARowAreInTheirRectangles_data() { scales(); }
    void thePartsOfARowAreInTheirRectangles()
    {
        QFETCH(qreal, scale);
        mScale = scale;
        showCamera(QStringLiteral("Kitchen"), 4);
        const auto image = drawn();
        // The row begins at (20, 10). The status dot begins 3 pixels right of the row's left edge and ends 30
        // pixels below its upper edge. The dot is at most 8 pixels wide and high.
        const auto dot = inkWithin(image, QRect(Frame.left(), Frame.top() + 20, 12, 16));
        QVERIFY2(dot.left() >= 23.0 && dot.left() < 24.0, qPrintable(QString::number(dot.left())));
        QVERIFY(dot.bottom() <= 40.0 && dot.bottom() > 39.0);
        QVERIFY(dot.width() <= 8.0 && dot.height() <= 8.0);
        const auto status = inkWithin(image, QRect(Frame.left() + 12, Frame.top() + 19, 180, 17));
        QVERIFY(status.left() >= 33.0 && status.left() < 35.0);
        QVERIFY(status.top() >= 29.0 && status.bottom() <= 29.0 + 14.0);
        const auto name = inkWithin(image, QRect(Frame.left(), Frame.top(), 230, 19));
        QVERIFY(name.left() >= 23.0 && name.left() < 25.0);
        QVERIFY(name.top() >= 13.0);
    }

    void largerTextMakesEveryLengthLarger()
    {
        const auto layout = camCellLayout(QRect(20, 10, 200, 72), QSize(8, 8), 2.0);
        QCOMPARE(layout.name, QRect(26, 16, 180, 40));
        QCOMPARE(layout.status, QPoint(46, 48));
        QCOMPARE(layout.dot, QRect(26, 54, 16, 16));
        ViewOfDpi view;
        QFont font;
        const auto scaleOf = [&](double points) {
            font.setPointSizeF(points);
            view.setFont(font);
            return textScale(&view);
        };
        QCOMPARE(scaleOf(12.0), 1.0);
        QCOMPARE(scaleOf(8.0), 1.0);
        QCOMPARE(scaleOf(24.0), 2.0);
        view.dpi = 110;
        QCOMPARE(scaleOf(12.0), 1.0);
        view.dpi = 192;
        QCOMPARE(scaleOf(12.0), 2.0);
        font.setPixelSize(24);
        view.setFont(font);
        QCOMPARE(textScale(&view), 1.5);
    }

    void theDotShowsTheStatus_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<int>("dot");
        QTest::newRow("not found") << 0 << int(Dot::Red);
        QTest::newRow("not streaming") << 1 << int(Dot::Gray);
        QTest::newRow("pairing") << 2 << int(Dot::Orange);
        QTest::newRow("starting") << 3 << int(Dot::Orange);
        QTest::newRow("streaming") << 4 << int(Dot::Green);
        QTest::newRow("error") << 5 << int(Dot::Gray);
        QTest::newRow("unknown") << 17 << int(Dot::Gray);
        QTest::newRow("negative") << -1 << int(Dot::Gray);
    }
    void theDotShowsTheStatus()
    {
        QFETCH(int, status);
        QFETCH(int, dot);
        for (const qreal scale : {1.0, 2.0}) {
            mScale = scale;
            showCamera(QStringLiteral("Kitchen"), status);
            QCOMPARE(int(dotOf(drawn())), dot);
        }
    }

    void theDotsDifferWithoutColour_data()
    {
        QTest::addColumn<QString>("size");
        QTest::newRow("at 100 %") << QString();
        QTest::newRow("at 200 %") << QStringLiteral("@2x");
    }
    void theDotsDifferWithoutColour()
    {
        QFETCH(QString, size);
        QStringList names{QStringLiteral("greendot"), QStringLiteral("reddot"), QStringLiteral("orangedot"),
                          QStringLiteral("graydot")};
        while (names.size() > 1) {
            const QString name = names.takeFirst();
            for (const auto &other : std::as_const(names)) {
                const int share = differenceInShape(shapeOf(name + size), shapeOf(other + size));
                QVERIFY2(share >= 5, qPrintable(QStringLiteral("%1, %2: %3 %").arg(name, other).arg(share)));
            }
        }
    }

    void theSecondPhaseOfTheBlinkingIsGray_data()
    {
        QTest::addColumn<int>("status");
        QTest::newRow("pairing") << 2;
        QTest::newRow("starting") << 3;
    }
    void theSecondPhaseOfTheBlinkingIsGray()
    {
        QFETCH(int, status);
        NoCameras noCameras;
        mTable->settingsController = &noCameras;
        showCamera(QStringLiteral("Kitchen"), status);
        QCOMPARE(int(dotOf(drawn())), int(Dot::Orange));
        mTable->cycle(nullptr);
        mTable->settingsController = nullptr;
        QCOMPARE(int(dotOf(drawn())), int(Dot::Gray));
        // cycle() has ended the animation, because `noCameras` contains no starting camera. But drawing the
        // row has started the animation again, so the dot is orange once more.
        QCOMPARE(int(dotOf(drawn())), int(Dot::Orange));
    }

    void theDotsAreLoadedOnceForEveryCell()
    {
        QStringList loaded;
        for (const auto *dot : {"greendot", "reddot", "orangedot", "graydot"})
            loaded << QLatin1String(dot) + QStringLiteral(".png")
                   << QLatin1String(dot) + QStringLiteral("@2x.png");
        QCOMPARE(mBundle->asked, loaded);
        CamCell other;
        other.initTextCell(QStringLiteral("foobar"), mBundle);
        for (const int status : {0, 1, 2, 3, 4, 5}) {
            showCamera(QStringLiteral("Kitchen"), status);
            drawn();
        }
        QCOMPARE(mBundle->asked, loaded);
    }

    void theNameHasTwelvePixelsAndTheStatusTen()
    {
        showCamera(QStringLiteral("Kitchen"), 4);
        const auto image = drawn();
        QImage expected(image.size(), image.format());
        expected.fill(mGround);
        QPainter painter(&expected);
        const auto write = [&](const QRect &where, int size, const QColor &color, const QString &text) {
            QFont font = mTable->font();
            font.setPixelSize(size);
            painter.setFont(font);
            painter.setPen(color);
            painter.drawText(where, Qt::AlignLeft | Qt::AlignTop, text);
        };
        write(QRect(23, 13, 190, 20), 12, Qt::black, QStringLiteral("Kitchen"));
        write(QRect(33, 29, 190, 20), 10, DarkGray, QStringLiteral("Streaming"));
        const QRect besideTheDot(32, 10, 200, 36);
        QCOMPARE(image.copy(besideTheDot), expected.copy(besideTheDot));
    }

    void aRowWithoutARecordIsOnlyARedDot_data() { scales(); }
    void aRowWithoutARecordIsOnlyARedDot()
    {
        QFETCH(qreal, scale);
        mScale = scale;
        mCell.setObjectValue(nullptr);
        const auto image = drawn();
        QCOMPARE(int(dotOf(image)), int(Dot::Red));
        QVERIFY(QRectF(23, 32, 8, 8).contains(inkOf(image)));
        QVERIFY(!mTable->isAnimatingStatus());
    }

    void theDotIsSharpAtScaleTwo()
    {
        mScale = 2;
        showCamera(QString(), 4);
        const auto image = drawn();
        const QImage expected(mBundle->pathForResource(QStringLiteral("greendot@2x"), QStringLiteral("png")));
        QCOMPARE(expected.size(), QSize(16, 16));
        QCOMPARE(image.pixelColor(46 + 8, 64 + 8), expected.pixelColor(8, 8));
        QCOMPARE(image.pixelColor(46 + 5, 64 + 11), expected.pixelColor(5, 11));
    }

    void anEnabledRowIsBlackAndDarkGray_data() { scales(); }
    void anEnabledRowIsBlackAndDarkGray()
    {
        QFETCH(qreal, scale);
        mScale = scale;
        showCamera(QStringLiteral("HHHIII"), 1);
        const auto image = drawn();
        QVERIFY(isAbout(inkColorWithin(image, nameArea()), Qt::black));
        QVERIFY(isAbout(inkColorWithin(image, statusArea()), DarkGray));
    }

    void aHighlightedDotHasAWhiteRim()
    {
        mGround = QColor(46, 160, 67);
        mCell.setHighlighted(true);
        showCamera(QStringLiteral("Kitchen"), 4);
        const auto image = drawn();
        // The white rim surrounds the dot. Check one point of the rim left of the dot and one above the dot.
        QVERIFY(isAbout(at(image, Frame.topLeft() + QPoint(2, 26)), Qt::white));
        QVERIFY(isAbout(at(image, Frame.topLeft() + QPoint(7, 21)), Qt::white));
    }

    void aHighlightedRowIsWhiteInEveryState()
    {
        mGround = Qt::black;
        for (const bool enabled : {true, false}) {
            mCell.setEnabled(enabled);
            mCell.setHighlighted(true);
            showCamera(QStringLiteral("HHHIII"), 1);
            const auto image = drawn();
            QVERIFY(isAbout(inkColorWithin(image, nameArea()), Qt::white));
            QVERIFY(isAbout(inkColorWithin(image, statusArea()), Qt::white));
        }
    }

    void aDisabledRowHasTheDisabledTextColour()
    {
        const auto disabled = mTable->palette().color(QPalette::Disabled, QPalette::Text);
        mScale = 2;
        mCell.setEnabled(false);
        showCamera(QStringLiteral("HHHIII"), 1);
        const auto image = drawn();
        QVERIFY(isAbout(inkColorWithin(image, nameArea()), disabled));
        QVERIFY(isAbout(inkColorWithin(image, statusArea()), disabled));
    }

    void aLongNameIsShortenedInTheMiddle_data() { scales(); }
    void aLongNameIsShortenedInTheMiddle()
    {
        QFETCH(qreal, scale);
        mScale = scale;
        showCamera(QString(10000, QLatin1Char('i')), 1);
        const auto ink = inkWithin(drawn(), QRect(0, 0, 280, 29));
        QVERIFY(ink.left() >= 23.0);
        QVERIFY(ink.right() <= 23.0 + 190.0);
        QVERIFY(ink.width() > 150.0);
    }

    void namesThatDifferAtTheirEndsLookDifferent()
    {
        const QString middle(80, QLatin1Char('m'));
        showCamera(QStringLiteral("A") + middle + QStringLiteral("1"), 1);
        const auto first = drawn();
        showCamera(QStringLiteral("A") + middle + QStringLiteral("2"), 1);
        QVERIFY(drawn() != first);
        showCamera(QStringLiteral("B") + middle + QStringLiteral("1"), 1);
        QVERIFY(drawn() != first);
    }

    void namesThatDifferInALineBreakAreDrawnDifferently()
    {
        showCamera(QStringLiteral("Kit\nchen"), 1);
        const auto broken = drawn();
        for (const auto &other :
             {QStringLiteral("Kit chen"), QStringLiteral("Kitchen"), QStringLiteral("Kit")}) {
            showCamera(other, 1);
            QVERIFY(drawn() != broken);
        }
    }

    void startingAndPairingRowsAnimateTheTable_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<bool>("animates");
        for (int status = -1; status <= 6; ++status)
            QTest::addRow("status %d", status) << status << (status == 2 || status == 3);
    }
    void startingAndPairingRowsAnimateTheTable()
    {
        QFETCH(int, status);
        QFETCH(bool, animates);
        showCamera(QStringLiteral("Kitchen"), status);
        drawn();
        QCOMPARE(mTable->isAnimatingStatus(), animates);
        QCOMPARE(mRunLoop->timerCount(), std::size_t(animates ? 1 : 0));
    }

    void aCopyHasNoRecordAndPaintsARedDot()
    {
        showCamera(QStringLiteral("Kitchen"), 4);
        const auto copy = mCell.copy();
        QCOMPARE(copy->objectValue(), std::shared_ptr<KS7Cam>());
        QVERIFY(mCell.objectValue() != nullptr);
        mCell = *copy;
        QCOMPARE(int(dotOf(drawn())), int(Dot::Red));
    }

    void theFourDotsAreInThePluginAndFitLeftOfTheStatus()
    {
        for (const auto *name : {"greendot", "reddot", "orangedot", "graydot"}) {
            const auto icon = imageNamedFromOurBundle(*mBundle, QLatin1String(name));
            QVERIFY(!icon.isNull());
            QVERIFY(icon.actualSize(QSize(8, 8)).width() <= 10);
        }
        QVERIFY(imageNamedFromOurBundle(*mBundle, QStringLiteral("bluedot")).isNull());
    }

    void anImageIsTakenAsPngThenTifThenTiff()
    {
        QTemporaryDir folder;
        FakeBundle bundle;
        bundle.folder = folder.path();
        const auto put = [&](const char *type, Qt::GlobalColor color) {
            QImage image(4, 4, QImage::Format_RGB32);
            image.fill(color);
            // Qt detects the image format from the file's contents, so a PNG file may have any extension.
            QVERIFY(image.save(folder.filePath(QStringLiteral("dot.") + QLatin1String(type)), "PNG"));
        };
        const auto found = [&] {
            const auto icon = imageNamedFromOurBundle(bundle, QStringLiteral("dot"));
            return icon.isNull() ? QColor() : icon.pixmap(4).toImage().pixelColor(1, 1);
        };
        QVERIFY(!found().isValid());
        put("tiff", Qt::red);
        QCOMPARE(found(), QColor(Qt::red));
        put("tif", Qt::green);
        QCOMPARE(found(), QColor(Qt::green));
        put("png", Qt::blue);
        QCOMPARE(found(), QColor(Qt::blue));
    }
};

QTEST_MAIN(CamCellTest)
#include "CamCell_test.moc"
