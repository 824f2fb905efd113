#include <QFileInfo>
#include <QIcon>
#include <QImage>
#include <QJsonObject>
#include <QPluginLoader>
#include <QTest>

namespace {

constexpr QRgb LensColour = 0xff2e6fb0;
constexpr int Tolerance = 25;
// The part of the icon's square that its shapes cover.
constexpr double CoveredPart = 0.41;

bool isLensColour(QRgb pixel)
{
    const auto isNear = [](int one, int other) { return qAbs(one - other) <= Tolerance; };
    return isNear(qRed(pixel), qRed(LensColour)) && isNear(qGreen(pixel), qGreen(LensColour))
        && isNear(qBlue(pixel), qBlue(LensColour)) && isNear(qAlpha(pixel), qAlpha(LensColour));
}

int countPixels(const QImage &image, bool (*fits)(QRgb))
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            count += fits(image.pixel(x, y)) ? 1 : 0;
    return count;
}

} // namespace

/// Tests the icon that the module's metadata names, as the build installs it.
class ModuleIconTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void theIconFillsEverySize_data();
    void theIconFillsEverySize();

private:
    QString mFile;
};

void ModuleIconTest::initTestCase()
{
    const QString build = qEnvironmentVariable("KS7_BUILD");
    const QPluginLoader module(build + QStringLiteral("/plugins/plasma/kcms/systemsettings/kcm_ks7.so"));
    const auto data = module.metaData().value(QStringLiteral("MetaData")).toObject();
    const auto icon =
        data.value(QStringLiteral("KPlugin")).toObject().value(QStringLiteral("Icon")).toString();
    QVERIFY(!icon.isEmpty());
    mFile = build + QStringLiteral("/share/icons/hicolor/scalable/apps/") + icon + QStringLiteral(".svg");
    QVERIFY2(QFileInfo::exists(mFile), qPrintable(mFile));
}

void ModuleIconTest::theIconFillsEverySize_data()
{
    QTest::addColumn<int>("size");
    for (const int size : {16, 22, 32, 48, 64})
        QTest::addRow("%d", size) << size;
}

void ModuleIconTest::theIconFillsEverySize()
{
    QFETCH(const int, size);
    const QImage image = QIcon(mFile).pixmap(size, size).toImage();
    QCOMPARE(image.size(), QSize(size, size));
    QVERIFY(countPixels(image, isLensColour) > 0);
    QCOMPARE(qAlpha(image.pixel(0, 0)), 0);
    const int covered = countPixels(image, [](QRgb pixel) { return qAlpha(pixel) > 127; });
    QVERIFY2(qAbs(covered - CoveredPart * size * size) < 0.06 * size * size,
             qPrintable(QString::number(covered)));
}

QTEST_MAIN(ModuleIconTest)
#include "ModuleIcon_test.moc"
