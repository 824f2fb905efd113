#include "platform/bus/RemoteConnection.h"

#include "agent/AgentProxyFactory.h"
#include "agent/RemoteNames.h"
#include "platform/base/RunLoop.h"
#include "platform/bus/BusConnection.h"
#include "platform/bus/NotificationCenter.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/RecordingAgent.h"
#include "tests/support/StoppedProcess.h"
#include "tests/support/Timeout.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTest>

#include <sys/types.h>

using platform::Connection;

/// Tests how connections open, break and end over a real bus, with agents that die, hang or replace each
/// other.
class RemoteConnectionTest : public QObject {
    Q_OBJECT

private:
    PrivateBus mBusDaemon;
    std::unique_ptr<RecordingAgent> mAgent;
    QProcess mAgentProcess;
    std::shared_ptr<platform::LocalNotificationCenter> mLocalCenter;
    std::shared_ptr<platform::ConnectionRegistry> mRegistry;
    std::shared_ptr<Connection> mDevice;
    std::shared_ptr<Connection> mUSB;
    QList<const void *> mDeaths;
    std::shared_ptr<AgentProxyFactory> mProtocols = makeDBusProtocols();

    RecordingAgent &startAgent()
    {
        mAgent = std::make_unique<RecordingAgent>();
        mAgent->publishBoth();
        return *mAgent;
    }
    void startAgentProcess()
    {
        mAgentProcess.start(QCoreApplication::applicationDirPath() + QStringLiteral("/ks7-test-agent"),
                            QStringList());
        QVERIFY(mAgentProcess.waitForReadyRead());
    }
    [[nodiscard]] pid_t agentPid() const { return static_cast<pid_t>(mAgentProcess.processId()); }
    void stopAgent() { QVERIFY(stopProcess(agentPid())); }
    void makeRegistry()
    {
        mLocalCenter = std::make_shared<platform::LocalNotificationCenter>();
        mLocalCenter->addObserver(
            this, platform::NSConnectionDidDieNotification,
            [this](const platform::Notification &notification) { mDeaths.append(notification.object); });
        mRegistry = std::make_shared<platform::DBusConnectionRegistry>(
            std::make_shared<platform::SessionBus>(), platform::makeQtRunLoop(), mLocalCenter,
            RemoteNames::Prefix);
    }
    std::shared_ptr<Connection> open(const QString &name)
    {
        return mRegistry->connectionWithRegisteredName(name);
    }
    void connectToBoth()
    {
        mDevice = open(RemoteNames::AgentServer);
        mUSB = open(RemoteNames::AgentServerUSB);
        QVERIFY(mDevice && mUSB);
    }
    Proxy<KS7DeviceControllerProxy> device() { return mProtocols->deviceController(mDevice->rootProxy()); }
    Proxy<TernUSBCommandControllerProxy> usb() { return mProtocols->usbController(mUSB->rootProxy()); }
    /// Waits until all messages sent so far have arrived.
    void settle()
    {
        auto stranger =
            QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("test-settle"));
        stranger.call(QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId")));
        QDBusConnection::disconnectFromBus(QStringLiteral("test-settle"));
        QCoreApplication::processEvents();
    }
    static void askTheBusToStartTheAgent()
    {
        auto call = QDBusMessage::createMethodCall(RemoteNames::busName(RemoteNames::AgentServer),
                                                   RemoteNames::objectPath(RemoteNames::AgentServer),
                                                   QString(), QStringLiteral("flush"));
        auto stranger =
            QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("test-starter"));
        stranger.call(call, QDBus::Block, 1000);
        QDBusConnection::disconnectFromBus(QStringLiteral("test-starter"));
    }
    /// The number of match rules in the bus daemon that name one of the agent's bus names.
    static int ownerWatches()
    {
        auto question = QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
            QStringLiteral("org.freedesktop.DBus.Debug.Stats"), QStringLiteral("GetAllMatchRules"));
        auto observer =
            QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("test-observer"));
        const auto answer = observer.call(question);
        QDBusConnection::disconnectFromBus(QStringLiteral("test-observer"));
        const auto rules = qdbus_cast<QMap<QString, QStringList>>(answer.arguments().value(0));
        int watches = 0;
        for (const auto &ofOne : rules)
            watches += static_cast<int>(ofOne.filter(QStringLiteral("com.orvex.KS7AgentServer")).size());
        return answer.type() == QDBusMessage::ReplyMessage ? watches : -1;
    }

private Q_SLOTS:
    void initTestCase() { qDBusRegisterMetaType<QMap<QString, QStringList>>(); }
    void init()
    {
        mDeaths.clear();
        makeRegistry();
    }
    void cleanup()
    {
        mDevice.reset();
        mUSB.reset();
        mRegistry.reset();
        mAgent.reset();
        if (mAgentProcess.state() != QProcess::NotRunning) {
            mAgentProcess.kill();
            mAgentProcess.waitForFinished();
        }
    }

    void aNameWithoutAnOwnerGivesNoConnection()
    {
        QVERIFY(!open(RemoteNames::AgentServer));
        QCOMPARE(mDeaths.size(), 0);
        QTRY_COMPARE_WITH_TIMEOUT(ownerWatches(), 0, Timeout);
    }

    void aRegisteredNameGivesAConnectionWithARoot()
    {
        startAgent();
        mDevice = open(RemoteNames::AgentServer);
        QVERIFY(mDevice);
        QVERIFY(mDevice->isValid());
        QVERIFY(mDevice->rootProxy());
        QCOMPARE(ownerWatches(), 1);
    }

    void lookingANameUpStartsNoService()
    {
        const QDir data(qEnvironmentVariable("XDG_DATA_HOME"));
        QVERIFY(data.mkpath(QStringLiteral("dbus-1/services")));
        const QString started = data.filePath(QStringLiteral("started"));
        QFile service(data.filePath(QStringLiteral("dbus-1/services/agent.service")));
        QVERIFY(service.open(QIODevice::WriteOnly));
        service.write("[D-BUS Service]\nName=com.orvex.KS7AgentServer\nExec=/usr/bin/touch "
                      + started.toUtf8() + "\n");
        service.close();
        mBusDaemon.kill();
        mBusDaemon.start();
        QVERIFY(!open(RemoteNames::AgentServer));
        settle();
        QVERIFY(!QFile::exists(started));
        askTheBusToStartTheAgent();
        QTRY_VERIFY2(QFile::exists(started), "the service is one that can be started");
        service.remove();
    }

    void endingAConnectionReportsItsDeathAtOnceAndOnce()
    {
        startAgent();
        connectToBoth();
        mDevice->invalidate();
        QCOMPARE(mDeaths, QList<const void *>{mDevice.get()});
        QVERIFY(!mDevice->isValid());
        QVERIFY(!mDevice->rootProxy());
        QVERIFY(mUSB->isValid());
        mDevice->invalidate();
        mAgent->leaveBus();
        QTRY_VERIFY_WITH_TIMEOUT(!mUSB->isValid(), Timeout);
        QCOMPARE(mDeaths, (QList<const void *>{mDevice.get(), mUSB.get()}));
    }

    void droppingAConnectionReportsNothingAndLeaksNothing()
    {
        startAgent();
        connectToBoth();
        mDevice.reset();
        mUSB.reset();
        QTRY_COMPARE_WITH_TIMEOUT(ownerWatches(), 0, Timeout);
        QCOMPARE(mDeaths.size(), 0);
    }

    void endedConnectionsWatchNoLonger()
    {
        startAgent();
        connectToBoth();
        mDevice->invalidate();
        mUSB->invalidate();
        QTRY_COMPARE_WITH_TIMEOUT(ownerWatches(), 0, Timeout);
    }

    void twoHundredReconnectionsLeakNothing()
    {
        startAgent();
        for (int i = 0; i < 200; ++i) {
            connectToBoth();
            mDevice->invalidate();
        }
        mUSB.reset();
        QTRY_COMPARE_WITH_TIMEOUT(ownerWatches(), 0, Timeout);
        QCOMPARE(mDeaths.size(), 200);
    }

    void aReleasedNameEndsTheConnection()
    {
        startAgent();
        connectToBoth();
        mAgent->release(RemoteNames::AgentServerUSB);
        QTRY_COMPARE_WITH_TIMEOUT(mDeaths, QList<const void *>{mUSB.get()}, Timeout);
        QVERIFY(mDevice->isValid());
    }

    void aNewOwnerEndsTheConnectionAndIsFound()
    {
        startAgent();
        connectToBoth();
        RecordingAgent successor;
        mAgent->release(RemoteNames::AgentServer);
        QVERIFY(successor.publish(RemoteNames::AgentServer));
        // The signal about the change of the owner is still queued. The new connection must not treat it as
        // its own death.
        const auto reopened = open(RemoteNames::AgentServer);
        QTRY_COMPARE_WITH_TIMEOUT(mDeaths, QList<const void *>{mDevice.get()}, Timeout);
        settle();
        QVERIFY(reopened->isValid());
        mProtocols->deviceController(reopened->rootProxy())->flush();
        QCOMPARE(successor.journal(), QStringList{QStringLiteral("flush")});
    }

    void aDirectChangeOfOwnerEndsTheConnection()
    {
        startAgent();
        connectToBoth();
        RecordingAgent successor;
        QVERIFY(successor.takeOver(RemoteNames::AgentServer));
        QTRY_COMPARE_WITH_TIMEOUT(mDeaths, QList<const void *>{mDevice.get()}, Timeout);
        QVERIFY(!mDevice->isValid());
        QVERIFY(mUSB->isValid());
        mDevice = open(RemoteNames::AgentServer);
        device()->flush();
        QCOMPARE(successor.journal(), QStringList{QStringLiteral("flush")});
    }

    void theOwnerIsWatchedBeforeItIsQueried()
    {
        startAgent();
        QProcess monitor;
        monitor.start(QStringLiteral("dbus-monitor"), {QStringLiteral("--session")});
        QVERIFY(monitor.waitForReadyRead());
        QByteArray seen;
        const auto sees = [&](const QByteArray &member) {
            monitor.waitForReadyRead(10);
            seen += monitor.readAllStandardOutput();
            return seen.contains(member);
        };
        // dbus-monitor takes a while to start and does not show earlier calls. So try to connect to "Nobody"
        // until the monitor shows the look-up of that name.
        QTRY_VERIFY_WITH_TIMEOUT(open(QStringLiteral("Nobody")) || sees("string \"com.orvex.Nobody\""),
                                 Timeout);
        const auto connection = open(RemoteNames::AgentServerUSB);
        QTRY_VERIFY_WITH_TIMEOUT(sees("string \"com.orvex.KS7AgentServerUSB\""), Timeout);
        const auto watched = seen.indexOf("arg0='com.orvex.KS7AgentServerUSB'");
        QVERIFY(watched >= 0);
        QVERIFY(watched < seen.indexOf("string \"com.orvex.KS7AgentServerUSB\""));
        monitor.kill();
        monitor.waitForFinished();
    }

    void anObserverOfADeathMayDropTheConnection()
    {
        startAgent();
        connectToBoth();
        mLocalCenter->addObserver(this, platform::NSConnectionDidDieNotification,
                                  [this](const platform::Notification &) {
                                      mDevice.reset();
                                      mUSB.reset();
                                  });
        mDevice->invalidate();
        QVERIFY(!mDevice);
        settle();
        QCOMPARE(mDeaths.size(), 1);
    }

    void aKilledAgentIsDeadForBoth()
    {
        startAgentProcess();
        connectToBoth();
        mAgentProcess.kill();
        QTRY_COMPARE_WITH_TIMEOUT(mDeaths.size(), 2, Timeout);
        QVERIFY(!mDevice->isValid());
        QVERIFY(!mUSB->isValid());
    }

    void anAgentThatDiesInACallIsDeadOnce()
    {
        startAgent().dieIn(QStringLiteral("validateName"));
        connectToBoth();
        QVERIFY(!device()->validateName(QStringLiteral("x")));
        QCOMPARE(mDeaths.size(), 0);
        QTRY_COMPARE_WITH_TIMEOUT(mDeaths.size(), 2, Timeout);
        settle();
        QCOMPARE(mDeaths.size(), 2);
    }

    void aStoppedAgentCostsOneTimeoutForBothConnections()
    {
        startAgentProcess();
        connectToBoth();
        const auto deviceProxy = device();
        const auto usbProxy = usb();
        stopAgent();
        deviceProxy->flush();
        QVERIFY(!mDevice->isValid());
        QVERIFY(!mUSB->isValid());
        for (int i = 0; i < 10; ++i) {
            QVERIFY(deviceProxy->cameraDict().isEmpty());
            QCOMPARE(usbProxy->setPassKey(QStringLiteral("1234")), 0);
            QVERIFY(!usbProxy->connectedCamHasBTAddress(QStringLiteral("a")));
        }
        QVERIFY2(mDeaths.isEmpty(), "the death comes through the run loop");
        QTRY_COMPARE_WITH_TIMEOUT(mDeaths, (QList<const void *>{mDevice.get(), mUSB.get()}), Timeout);
        resumeProcess(agentPid());
        settle();
        QCOMPARE(mDeaths.size(), 2);
        QVERIFY2(open(RemoteNames::AgentServer), "the agent that goes on is found again");
    }

    void aHungAgentReceivesOneCallOnly()
    {
        startAgent().hang();
        connectToBoth();
        const auto deviceProxy = device();
        QVERIFY(!deviceProxy->getPreferredKS7Cam());
        QCOMPARE(deviceProxy->indexOfPreferredKS7Cam(), std::uint64_t(0));
        deviceProxy->flush();
        QCOMPARE(mAgent->journal(), QStringList{QStringLiteral("getPreferredKS7Cam")});
    }

    void aConnectionDroppedBeforeItsPendingDeathReportsNothing()
    {
        startAgent().hang();
        connectToBoth();
        device()->flush();
        mDevice.reset();
        mUSB.reset();
        settle();
        QCOMPARE(mDeaths.size(), 0);
    }

    void endingATimedOutConnectionLeavesItsDeathToTheRunLoop()
    {
        startAgent().hang();
        connectToBoth();
        device()->flush();
        mDevice->invalidate();
        QCOMPARE(mDeaths.size(), 0);
        QTRY_COMPARE_WITH_TIMEOUT(mDeaths, (QList<const void *>{mDevice.get(), mUSB.get()}), Timeout);
    }

    void theLossOfTheBusEndsOnlyBothConnections()
    {
        startAgent();
        connectToBoth();
        mBusDaemon.kill();
        QTRY_COMPARE_WITH_TIMEOUT(mDeaths, (QList<const void *>{mDevice.get(), mUSB.get()}), Timeout);
        QVERIFY(!open(RemoteNames::AgentServer));
        mBusDaemon.start();
    }

    void aRestartedBusIsUsedAgain()
    {
        startAgent();
        connectToBoth();
        mBusDaemon.kill();
        mBusDaemon.start();
        startAgent();
        const auto reopened = open(RemoteNames::AgentServer);
        QVERIFY(reopened);
        QVERIFY(!mDevice->isValid() && !mUSB->isValid());
        QVERIFY2(mDeaths.isEmpty(), "a look-up reports through the run loop");
        QTRY_COMPARE_WITH_TIMEOUT(mDeaths, (QList<const void *>{mDevice.get(), mUSB.get()}), Timeout);
        settle();
        QVERIFY2(reopened->isValid(), "the end of the old bus is not the end of the new one");
        QCOMPARE(mDeaths.size(), 2);
    }

    void aStoppedBusIsWaitedForOnce()
    {
        QVERIFY(!open(RemoteNames::AgentServer));
        mBusDaemon.stop();
        // Only one attempt may wait for the bus: 300 full timeouts would exceed the test's time limit.
        for (int attempt = 0; attempt < 300; ++attempt)
            QVERIFY(!open(RemoteNames::AgentServer));
        mBusDaemon.resume();
        startAgent();
        QTRY_VERIFY_WITH_TIMEOUT(open(RemoteNames::AgentServer), Timeout);
    }

    void theHostsSharedConnectionIsUntouched()
    {
        startAgent();
        auto shared = QDBusConnection::sessionBus();
        QVERIFY(shared.isConnected());
        connectToBoth();
        const auto uniqueName = shared.baseService();
        mDevice->invalidate();
        mUSB->invalidate();
        mRegistry.reset();
        QVERIFY(shared.isConnected());
        QCOMPARE(QDBusConnection::sessionBus().baseService(), uniqueName);
    }
};

QTEST_GUILESS_MAIN(RemoteConnectionTest)

#include "RemoteConnection_test.moc"
