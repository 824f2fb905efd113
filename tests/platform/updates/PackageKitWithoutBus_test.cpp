#include "platform/bus/BusConnection.h"
#include "platform/updates/PackageKitUpdater.h"
#include "tests/support/LogLines.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/Timeout.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QTimeZone>
#include <QTimer>

#include <memory>

/// Tests the updater with an absent or silent system bus. When the bus replies, it has no package service, so
/// each query logs one line.
class PackageKitWithoutBusTest : public QObject {
    Q_OBJECT

private:
    void showPane() { mFramework->updaterForBundle(nullptr)->applicationDidFinishLaunching(); }
    void turn()
    {
        bool turned = false;
        QTimer::singleShot(0, this, [&] { turned = true; });
        QTRY_VERIFY_WITH_TIMEOUT(turned, Timeout);
    }
    [[nodiscard]] bool hasAsked() const
    {
        return QFile::exists(mFolder->filePath(QStringLiteral("updates")));
    }

    PrivateBus mSystemBus{"DBUS_SYSTEM_BUS_ADDRESS"};
    std::unique_ptr<QTemporaryDir> mFolder;
    std::shared_ptr<platform::SoftwareUpdateFramework> mFramework;

private Q_SLOTS:
    void init();
    void cleanup();
    void withoutABusNothingIsQueriedAndNothingLogged();
    void aBusThatStartsLaterIsQueriedOnce();
    void aSilentBusDoesNotBlockAndIsQueriedWhenItReplies();
};

void PackageKitWithoutBusTest::init()
{
    mFolder = std::make_unique<QTemporaryDir>();
    const QDateTime now(QDate(2026, 3, 1), QTime(12, 0), QTimeZone::utc());
    mFramework = platform::makePackageKitFramework(std::make_shared<platform::SystemBus>(),
                                                   {QStringLiteral("/usr/lib/ks7pane.so"),
                                                    mFolder->filePath(QStringLiteral("updates")),
                                                    [=] { return now; }});
}

void PackageKitWithoutBusTest::cleanup()
{
    mFramework.reset();
    mSystemBus.kill();
    mSystemBus.start();
}

void PackageKitWithoutBusTest::withoutABusNothingIsQueriedAndNothingLogged()
{
    mSystemBus.kill();
    const LogLines log;
    showPane();
    showPane();
    turn();
    QCOMPARE(log.lines, QStringList());
    QVERIFY(!hasAsked());
    QCOMPARE(mFramework->offer().stage(), platform::UpdateOffer::Stage::None);
}

void PackageKitWithoutBusTest::aBusThatStartsLaterIsQueriedOnce()
{
    mSystemBus.kill();
    showPane();
    showPane();
    turn();
    const LogLines log;
    mSystemBus.start();
    QTRY_COMPARE_WITH_TIMEOUT(log.lines.size(), 1, Timeout);
    QVERIFY(hasAsked());
    showPane();
    turn();
    QCOMPARE(log.lines.size(), 1);
}

void PackageKitWithoutBusTest::aSilentBusDoesNotBlockAndIsQueriedWhenItReplies()
{
    mSystemBus.stop();
    const LogLines log;
    showPane();
    turn();
    showPane();
    turn();
    QCOMPARE(log.lines, QStringList());
    // Only this thread can resume the bus, so a blocking call would have timed out before this line.
    mSystemBus.resume();
    QTRY_COMPARE_WITH_TIMEOUT(log.lines.size(), 1, Timeout);
    QVERIFY(hasAsked());
}

QTEST_GUILESS_MAIN(PackageKitWithoutBusTest)
#include "PackageKitWithoutBus_test.moc"
