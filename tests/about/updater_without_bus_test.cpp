#include "platform/updates/PackageKitUpdater.h"
#include "tests/support/Timeout.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QTimeZone>

/// The updater on a machine without a system bus.
class UpdaterWithoutBusTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void saysSoInTheLogOnceADay();
};

void UpdaterWithoutBusTest::saysSoInTheLogOnceADay()
{
    const QTemporaryDir folder;
    const QDateTime now(QDate(2026, 3, 1), QTime(12, 0), QTimeZone::utc());
    const auto framework =
        platform::makePackageKitFramework({QStringLiteral("/usr/lib/ks7pane.so"),
                                           folder.filePath(QStringLiteral("updates")), [=] { return now; }});
    static int lines;
    lines = 0;
    const auto previous =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &context, const QString &) {
            lines += qstrcmp(context.category, "ks7.platform") == 0 ? 1 : 0;
        });
    framework->updaterForBundle(nullptr)->applicationDidFinishLaunching();
    framework->updaterForBundle(nullptr)->applicationDidFinishLaunching();
    const bool told = QTest::qWaitFor([] { return lines > 0; }, Timeout);
    QCoreApplication::processEvents();
    qInstallMessageHandler(previous);
    QVERIFY(told);
    QCOMPARE(lines, 1);
    QCOMPARE(framework->offer().stage(), platform::UpdateOffer::Stage::None);
}

QTEST_GUILESS_MAIN(UpdaterWithoutBusTest)
#include "updater_without_bus_test.moc"
