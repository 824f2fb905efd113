#include "about/KSUpdater.h"
#include "platform/bus/BusConnection.h"
#include "platform/updates/PackageKitUpdater.h"
#include "platform/updates/UpdateState.h"
#include "tests/support/LogLines.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/StoppedProcess.h"
#include "tests/support/Timeout.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QTimeZone>
#include <QTimer>

using platform::UpdateOffer;
using Stage = UpdateOffer::Stage;

namespace {

const QString OwnFile = QStringLiteral("/usr/lib/plugins/ks7/ks7pane.so");
const QString OwnPackage = QStringLiteral("ks7-preferences;1.0-1;amd64;installed");
const QString NewerPackage = QStringLiteral("ks7-preferences;1.1-1;amd64;debian");
constexpr int Normal = 5;
constexpr int Blocked = 9;

QJsonArray update(int info, const QString &package)
{
    return {info, package};
}

} // namespace

/// Tests the updater with a package service. Each test sets the replies of this service.
class PackageKitUpdaterTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void offersTheNewerPackageOfItsOwnFile();
    void searchesInTheBackground();
    void offersNothingWhenItsFileBelongsToNoPackage();
    void offersNothingWhenUpToDate();
    void ignoresOtherPackages();
    void ignoresAnUpdateThatIsHeldBack();
    void ignoresAnUpdateOfAnotherArchitecture();
    void ignoresSignalsOfOtherProcesses();
    void startsTheServiceWhenItIsNotRunning();
    void searchesOnceADay();
    void searchesAgainTheNextDay();
    void searchesAgainWhenTheClockWentBack();
    void remembersItsSearchAcrossProcesses();
    void laterWithdrawsTheOffer();
    void skippedVersionIsNotOfferedAgain();
    void versionAfterTheSkippedOneIsOffered();
    void installsThePackageAndShowsProgress();
    void letsTheServiceAskForAPassword();
    void offersAgainWhenThePersonRefuses_data();
    void offersAgainWhenThePersonRefuses();
    void reportsWhyAnInstallationFailed();
    void reportsThatTheServiceVanished();
    void showsNothingWhenTheServiceVanishesDuringASearch();
    void showsNothingWhenTheBusIsLostDuringASearch();
    void reportsTheLossOfTheBusDuringAnInstallation();
    void showsNothingWhenTheSearchFails();
    void showsNothingWithoutAService();
    void keepsTheRunLoopTurningWhileTheServiceIsSilent();
    void thereIsOneSharedUpdater();
    void findsTheFileItWasLoadedFrom();

private:
    void startPackageKit();
    QString makeServiceStartable();
    void restartBus();
    void startUpdater();
    void showPane();
    void showPaneTheNextDay();
    void offerUpdate();
    QStringList calls();
    bool asked(const QString &method);
    UpdateOffer &offer() { return mFramework->offer(); }

    PrivateBus mSystemBus{"DBUS_SYSTEM_BUS_ADDRESS"};
    std::unique_ptr<QTemporaryDir> mFolder;
    std::unique_ptr<QProcess> mPackageKit;
    std::shared_ptr<platform::SoftwareUpdateFramework> mFramework;
    QJsonObject mBehaviour;
    QStringList mCalls;
    QDateTime mNow;
};

void PackageKitUpdaterTest::init()
{
    mFolder = std::make_unique<QTemporaryDir>();
    mNow = QDateTime(QDate(2026, 3, 1), QTime(12, 0), QTimeZone::utc());
    mCalls.clear();
    mBehaviour = {{QStringLiteral("owners"), QJsonObject{{OwnFile, OwnPackage}}},
                  {QStringLiteral("updates"), QJsonArray{update(Normal, NewerPackage)}}};
    startUpdater();
}

void PackageKitUpdaterTest::cleanup()
{
    mFramework.reset();
    if (mPackageKit) {
        mPackageKit->kill();
        QTRY_COMPARE_WITH_TIMEOUT(mPackageKit->state(), QProcess::NotRunning, Timeout);
    }
    mPackageKit.reset();
}

void PackageKitUpdaterTest::startUpdater()
{
    mFramework = platform::makePackageKitFramework(
        std::make_shared<platform::SystemBus>(),
        {OwnFile, mFolder->filePath(QStringLiteral("state/updates")), [this] { return mNow; }});
}

void PackageKitUpdaterTest::startPackageKit()
{
    mPackageKit = std::make_unique<QProcess>();
    mPackageKit->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    const QByteArray behaviour = QJsonDocument(mBehaviour).toJson(QJsonDocument::Compact);
    mPackageKit->start(QStringLiteral(PACKAGEKIT_STAND_IN), {QString::fromUtf8(behaviour)});
    QTRY_VERIFY_WITH_TIMEOUT(calls().contains(QStringLiteral("ready")), Timeout);
    mCalls.clear();
}

/// Installs a service file, so that the bus starts the package service on demand. Returns the file's path,
/// empty after a failure.
QString PackageKitUpdaterTest::makeServiceStartable()
{
    const QDir folder(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
                      + QStringLiteral("/dbus-1/services"));
    folder.mkpath(QStringLiteral("."));
    QFile file(folder.filePath(QStringLiteral("packagekit.service")));
    if (!file.open(QIODevice::WriteOnly))
        return {};
    const QByteArray behaviour = QJsonDocument(mBehaviour).toJson(QJsonDocument::Compact);
    file.write("[D-BUS Service]\nName=org.freedesktop.PackageKit\nExec=" PACKAGEKIT_STAND_IN " '" + behaviour
               + "'\n");
    file.close();
    mSystemBus.kill();
    mSystemBus.start();
    return file.fileName();
}

void PackageKitUpdaterTest::restartBus()
{
    mPackageKit->kill();
    mPackageKit->waitForFinished();
    mSystemBus.start();
}

QStringList PackageKitUpdaterTest::calls()
{
    while (mPackageKit->canReadLine())
        mCalls.append(QString::fromUtf8(mPackageKit->readLine()).trimmed());
    return mCalls;
}

bool PackageKitUpdaterTest::asked(const QString &method)
{
    const QStringList all = calls();
    return std::any_of(all.begin(), all.end(), [&](const QString &line) { return line.startsWith(method); });
}

void PackageKitUpdaterTest::showPane()
{
    KSUpdater::sharedUpdater(*mFramework, nullptr)->applicationDidFinishLaunching();
}

void PackageKitUpdaterTest::showPaneTheNextDay()
{
    mNow = mNow.addDays(1);
    showPane();
}

void PackageKitUpdaterTest::offerUpdate()
{
    startPackageKit();
    showPane();
    QTRY_COMPARE_WITH_TIMEOUT(offer().stage(), Stage::Offered, Timeout);
}

void PackageKitUpdaterTest::offersTheNewerPackageOfItsOwnFile()
{
    offerUpdate();
    QCOMPARE(offer().version(), QStringLiteral("1.1-1"));
    QVERIFY(calls().contains(QStringLiteral("SearchFiles 4 ") + OwnFile));
}

void PackageKitUpdaterTest::searchesInTheBackground()
{
    offerUpdate();
    const QString hints = QStringLiteral("SetHints background=true interactive=false");
    QCOMPARE(calls(),
             QStringList(
                 {hints, QStringLiteral("SearchFiles 4 ") + OwnFile, hints, QStringLiteral("GetUpdates 2")}));
}

void PackageKitUpdaterTest::offersNothingWhenItsFileBelongsToNoPackage()
{
    mBehaviour[QStringLiteral("owners")] = QJsonObject();
    startPackageKit();
    showPane();
    QTRY_VERIFY_WITH_TIMEOUT(asked(QStringLiteral("SearchFiles")), Timeout);
    // The updater sends a second SearchFiles only after the first search has ended. So a second call proves
    // that the first search found nothing.
    QTRY_VERIFY_WITH_TIMEOUT((showPaneTheNextDay(), calls().filter(QStringLiteral("SearchFiles")).size() > 1),
                             Timeout);
    QVERIFY(!asked(QStringLiteral("GetUpdates")));
    QCOMPARE(offer().stage(), Stage::None);
}

void PackageKitUpdaterTest::offersNothingWhenUpToDate()
{
    mBehaviour[QStringLiteral("updates")] = QJsonArray();
    startPackageKit();
    showPane();
    QTRY_VERIFY_WITH_TIMEOUT(asked(QStringLiteral("GetUpdates")), Timeout);
    QTRY_VERIFY_WITH_TIMEOUT((showPaneTheNextDay(), calls().filter(QStringLiteral("GetUpdates")).size() > 1),
                             Timeout);
    QCOMPARE(offer().stage(), Stage::None);
}

void PackageKitUpdaterTest::ignoresOtherPackages()
{
    const QString other = QStringLiteral("ks7-agent-simulator;9.0-1;amd64;debian");
    mBehaviour[QStringLiteral("updates")] = QJsonArray{update(Normal, other), update(Normal, NewerPackage)};
    offerUpdate();
    QCOMPARE(offer().version(), QStringLiteral("1.1-1"));
}

void PackageKitUpdaterTest::ignoresAnUpdateThatIsHeldBack()
{
    // PackageKit may store the update's urgency in the upper 16 bits of the number that contains the update's
    // kind.
    constexpr int UrgentAndBlocked = (Normal << 16) | Blocked;
    const QString held = QStringLiteral("ks7-preferences;2.0-1;amd64;debian");
    const QString heldToo = QStringLiteral("ks7-preferences;3.0-1;amd64;debian");
    mBehaviour[QStringLiteral("updates")] =
        QJsonArray{update(Blocked, held), update(UrgentAndBlocked, heldToo), update(Normal, NewerPackage)};
    offerUpdate();
    QCOMPARE(offer().version(), QStringLiteral("1.1-1"));
}

void PackageKitUpdaterTest::ignoresAnUpdateOfAnotherArchitecture()
{
    const QString foreign = QStringLiteral("ks7-preferences;2.0-1;arm64;debian");
    mBehaviour[QStringLiteral("updates")] = QJsonArray{update(Normal, foreign), update(Normal, NewerPackage)};
    offerUpdate();
    QCOMPARE(offer().version(), QStringLiteral("1.1-1"));
}

void PackageKitUpdaterTest::ignoresSignalsOfOtherProcesses()
{
    mBehaviour[QStringLiteral("stranger")] = true;
    offerUpdate();
    QCOMPARE(offer().version(), QStringLiteral("1.1-1"));
}

void PackageKitUpdaterTest::startsTheServiceWhenItIsNotRunning()
{
    const QString serviceFile = makeServiceStartable();
    QVERIFY(!serviceFile.isEmpty());
    showPane();
    QTRY_COMPARE_WITH_TIMEOUT(offer().stage(), Stage::Offered, Timeout);
    QCOMPARE(offer().version(), QStringLiteral("1.1-1"));
    // The bus has started the service, so the test does not know its process. Kill the bus, which also ends
    // the service.
    QFile::remove(serviceFile);
    mSystemBus.kill();
    mSystemBus.start();
}

void PackageKitUpdaterTest::searchesOnceADay()
{
    offerUpdate();
    Q_EMIT offer().laterChosen();
    mNow = mNow.addSecs(23 * 60 * 60);
    showPane();
    // Only 23 hours have passed, so the updater must not search now. A wrong search would come before that of
    // the next day, and would be counted with it below.
    mNow = mNow.addSecs(2 * 60 * 60);
    showPane();
    QTRY_COMPARE_WITH_TIMEOUT(offer().stage(), Stage::Offered, Timeout);
    QCOMPARE(calls().filter(QStringLiteral("SearchFiles")).size(), 2);
}

void PackageKitUpdaterTest::searchesAgainTheNextDay()
{
    offerUpdate();
    Q_EMIT offer().laterChosen();
    showPaneTheNextDay();
    QTRY_COMPARE_WITH_TIMEOUT(offer().stage(), Stage::Offered, Timeout);
}

void PackageKitUpdaterTest::searchesAgainWhenTheClockWentBack()
{
    offerUpdate();
    Q_EMIT offer().laterChosen();
    mNow = mNow.addYears(-1);
    showPane();
    QTRY_COMPARE_WITH_TIMEOUT(offer().stage(), Stage::Offered, Timeout);
}

void PackageKitUpdaterTest::remembersItsSearchAcrossProcesses()
{
    offerUpdate();
    startUpdater();
    const platform::UpdateState memory(mFolder->filePath(QStringLiteral("state/updates")));
    QVERIFY(memory.askedWithinADay(mNow.addSecs(60)));
    QVERIFY(!memory.askedWithinADay(mNow.addDays(1)));
    showPaneTheNextDay();
    QTRY_COMPARE_WITH_TIMEOUT(offer().stage(), Stage::Offered, Timeout);
    QCOMPARE(calls().filter(QStringLiteral("SearchFiles")).size(), 2);
}

void PackageKitUpdaterTest::laterWithdrawsTheOffer()
{
    offerUpdate();
    Q_EMIT offer().laterChosen();
    QCOMPARE(offer().stage(), Stage::None);
    QVERIFY(!asked(QStringLiteral("UpdatePackages")));
}

void PackageKitUpdaterTest::skippedVersionIsNotOfferedAgain()
{
    offerUpdate();
    Q_EMIT offer().skipChosen();
    QCOMPARE(offer().stage(), Stage::None);
    startUpdater();
    QTRY_VERIFY_WITH_TIMEOUT((showPaneTheNextDay(), calls().filter(QStringLiteral("GetUpdates")).size() > 2),
                             Timeout);
    QCOMPARE(offer().stage(), Stage::None);
}

void PackageKitUpdaterTest::versionAfterTheSkippedOneIsOffered()
{
    platform::UpdateState(mFolder->filePath(QStringLiteral("state/updates"))).skip(QStringLiteral("1.0.9-1"));
    startUpdater();
    offerUpdate();
    QCOMPARE(offer().version(), QStringLiteral("1.1-1"));
}

void PackageKitUpdaterTest::installsThePackageAndShowsProgress()
{
    offerUpdate();
    std::vector<int> percentages;
    connect(&offer(), &UpdateOffer::changed, this, [&] { percentages.push_back(offer().percentage()); });
    Q_EMIT offer().installChosen();
    QCOMPARE(offer().stage(), Stage::Installing);
    QTRY_COMPARE_WITH_TIMEOUT(offer().stage(), Stage::Installed, Timeout);
    const int unknown = UpdateOffer::UnknownPercentage;
    QCOMPARE(percentages, (std::vector<int>{unknown, 40, unknown}));
    QVERIFY(calls().contains(QStringLiteral("UpdatePackages 2 ") + NewerPackage));
    QCOMPARE(offer().version(), QStringLiteral("1.1-1"));
}

void PackageKitUpdaterTest::letsTheServiceAskForAPassword()
{
    offerUpdate();
    Q_EMIT offer().installChosen();
    QTRY_COMPARE_WITH_TIMEOUT(offer().stage(), Stage::Installed, Timeout);
    QVERIFY(calls().contains(QStringLiteral("SetHints background=false interactive=true")));
}

void PackageKitUpdaterTest::offersAgainWhenThePersonRefuses_data()
{
    QTest::addColumn<QString>("install");
    for (const char *way : {"refused", "not-authorized", "cancelled"})
        QTest::newRow(way) << QString::fromLatin1(way);
}

void PackageKitUpdaterTest::offersAgainWhenThePersonRefuses()
{
    QFETCH(QString, install);
    mBehaviour[QStringLiteral("install")] = install;
    offerUpdate();
    Q_EMIT offer().installChosen();
    QTRY_COMPARE_WITH_TIMEOUT(offer().stage(), Stage::Offered, Timeout);
    QCOMPARE(offer().version(), QStringLiteral("1.1-1"));
    QVERIFY(asked(QStringLiteral("UpdatePackages")));
}

void PackageKitUpdaterTest::reportsWhyAnInstallationFailed()
{
    mBehaviour[QStringLiteral("install")] = QStringLiteral("failed");
    offerUpdate();
    Q_EMIT offer().installChosen();
    QTRY_COMPARE_WITH_TIMEOUT(offer().stage(), Stage::Failed, Timeout);
    QCOMPARE(offer().reason(), QStringLiteral("There is no <b>network</b>."));
    Q_EMIT offer().laterChosen();
    QCOMPARE(offer().stage(), Stage::None);
}

void PackageKitUpdaterTest::reportsThatTheServiceVanished()
{
    mBehaviour[QStringLiteral("install")] = QStringLiteral("vanish");
    offerUpdate();
    Q_EMIT offer().installChosen();
    const LogLines log;
    QTRY_COMPARE_WITH_TIMEOUT(offer().stage(), Stage::Failed, Timeout);
    QCOMPARE(offer().reason(), QString());
    QCOMPARE(log.lines.size(), 1);
}

void PackageKitUpdaterTest::showsNothingWhenTheServiceVanishesDuringASearch()
{
    mBehaviour[QStringLiteral("query")] = QStringLiteral("vanish");
    startPackageKit();
    const LogLines log;
    showPane();
    QTRY_COMPARE_WITH_TIMEOUT(log.lines.size(), 1, Timeout);
    QCOMPARE(offer().stage(), Stage::None);
    mBehaviour.remove(QStringLiteral("query"));
    startPackageKit();
    showPaneTheNextDay();
    QTRY_COMPARE_WITH_TIMEOUT(offer().stage(), Stage::Offered, Timeout);
    QCOMPARE(log.lines.size(), 1);
}

void PackageKitUpdaterTest::showsNothingWhenTheBusIsLostDuringASearch()
{
    mBehaviour[QStringLiteral("query")] = QStringLiteral("silent");
    startPackageKit();
    const LogLines log;
    showPane();
    QTRY_VERIFY_WITH_TIMEOUT(asked(QStringLiteral("SearchFiles")), Timeout);
    mSystemBus.kill();
    QTRY_COMPARE_WITH_TIMEOUT(log.lines.size(), 1, Timeout);
    QCOMPARE(offer().stage(), Stage::None);
    // The query without a reply has failed with the old bus. So the next day's query must use the new bus.
    mBehaviour.remove(QStringLiteral("query"));
    restartBus();
    startPackageKit();
    showPaneTheNextDay();
    QTRY_COMPARE_WITH_TIMEOUT(offer().stage(), Stage::Offered, Timeout);
    QCOMPARE(log.lines.size(), 1);
}

void PackageKitUpdaterTest::reportsTheLossOfTheBusDuringAnInstallation()
{
    mBehaviour[QStringLiteral("install")] = QStringLiteral("silent");
    offerUpdate();
    const LogLines log;
    Q_EMIT offer().installChosen();
    QTRY_VERIFY_WITH_TIMEOUT(asked(QStringLiteral("UpdatePackages")), Timeout);
    QCOMPARE(offer().stage(), Stage::Installing);
    mSystemBus.kill();
    QTRY_COMPARE_WITH_TIMEOUT(offer().stage(), Stage::Failed, Timeout);
    QCOMPARE(offer().reason(), QString());
    QCOMPARE(log.lines.size(), 1);
    restartBus();
}

void PackageKitUpdaterTest::showsNothingWhenTheSearchFails()
{
    mBehaviour[QStringLiteral("query")] = QStringLiteral("failed");
    startPackageKit();
    const LogLines log;
    const QString line = QStringLiteral("The search for updates failed: no network");
    showPane();
    QTRY_COMPARE_WITH_TIMEOUT(log.lines, QStringList({line}), Timeout);
    // The next day's query fails too. Each failure logs one line.
    showPaneTheNextDay();
    QTRY_COMPARE_WITH_TIMEOUT(log.lines, QStringList({line, line}), Timeout);
    QCOMPARE(calls().filter(QStringLiteral("SearchFiles")).size(), 2);
    QCOMPARE(offer().stage(), Stage::None);
    QVERIFY(!asked(QStringLiteral("GetUpdates")));
}

void PackageKitUpdaterTest::showsNothingWithoutAService()
{
    const LogLines log;
    showPane();
    QTRY_COMPARE_WITH_TIMEOUT(log.lines.size(), 1, Timeout);
    QVERIFY(log.lines.first().startsWith(QStringLiteral("The search for updates failed: ")));
    // The service starts the next day and the updater finds it, so the failure has left no state behind.
    startPackageKit();
    showPaneTheNextDay();
    QTRY_COMPARE_WITH_TIMEOUT(offer().stage(), Stage::Offered, Timeout);
}

void PackageKitUpdaterTest::keepsTheRunLoopTurningWhileTheServiceIsSilent()
{
    startPackageKit();
    const auto process = static_cast<pid_t>(mPackageKit->processId());
    QVERIFY(stopProcess(process));
    showPane();
    bool turned = false;
    QTimer::singleShot(0, this, [&] { turned = true; });
    QTRY_VERIFY_WITH_TIMEOUT(turned, Timeout);
    QCOMPARE(offer().stage(), Stage::None);
    resumeProcess(process);
    // A blocking call would have timed out while the service was stopped, and its reply would be lost.
    QTRY_COMPARE_WITH_TIMEOUT(offer().stage(), Stage::Offered, Timeout);
}

void PackageKitUpdaterTest::thereIsOneSharedUpdater()
{
    QCOMPARE(mFramework->updaterForBundle(nullptr), mFramework->updaterForBundle(nullptr));
    QVERIFY(mFramework->initForBundle(nullptr) != mFramework->updaterForBundle(nullptr));
}

void PackageKitUpdaterTest::findsTheFileItWasLoadedFrom()
{
    QCOMPARE(platform::ownCodeFile(), QFileInfo(QCoreApplication::applicationFilePath()).canonicalFilePath());
}

QTEST_GUILESS_MAIN(PackageKitUpdaterTest)
#include "PackageKitUpdater_test.moc"
