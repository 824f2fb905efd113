#include "platform/bus/BusConnection.h"

#include "agent/RemoteNames.h"
#include "platform/bus/BusHandshake.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/RecordingAgent.h"
#include "tests/support/Timeout.h"

#include <QSignalSpy>
#include <QTest>

using platform::BusConnection;
using platform::BusHandshake;

/// Tests the pane's own connection to a bus that is killed, stopped, restarted, overloaded or at an unusual
/// address.
class BusConnectionTest : public QObject {
    Q_OBJECT

private:
    PrivateBus mDaemon;
    std::unique_ptr<BusConnection> mBus;
    /// Number of calls in the tests where at most one call may block. A full timeout in each call would
    /// exceed the test's time limit.
    static constexpr int Many = 300;

    BusConnection &bus() { return *mBus; }
    QString agentsOwner() { return bus().ownerOf(RemoteNames::busName(RemoteNames::AgentServer)); }
    void loseTheBus()
    {
        const QSignalSpy lost(mBus.get(), &BusConnection::lost);
        mDaemon.kill();
        QTRY_COMPARE_WITH_TIMEOUT(lost.count(), 1, Timeout);
        QVERIFY(!bus().isOpen());
    }
    void stopTheBusUnopened()
    {
        mDaemon.kill();
        mDaemon.start();
        mDaemon.stop();
    }

private Q_SLOTS:
    void init() { mBus = std::make_unique<BusConnection>(QDBusConnection::SessionBus); }
    void cleanup()
    {
        mDaemon.resume();
        mBus.reset();
    }

    void theFirstUseOpens()
    {
        const QSignalSpy opened(mBus.get(), &BusConnection::opened);
        const QSignalSpy foundAgain(mBus.get(), &BusConnection::foundAgain);
        QVERIFY(bus().connection().isConnected());
        QCOMPARE(opened.count(), 1);
        QCOMPARE(foundAgain.count(), 0);
    }

    void openingInTheBackgroundIsReportedThroughTheEventLoop()
    {
        const QSignalSpy opened(mBus.get(), &BusConnection::opened);
        mDaemon.stop();
        bus().openInBackground();
        QCOMPARE(opened.count(), 0);
        mDaemon.resume();
        QTRY_COMPARE_WITH_TIMEOUT(opened.count(), 1, Timeout);
        QVERIFY(bus().isOpen());
    }

    void twoObjectsHaveConnectionsOfTheirOwn()
    {
        BusConnection other(QDBusConnection::SessionBus);
        QVERIFY(other.connection().baseService() != bus().connection().baseService());
        QVERIFY(QDBusConnection::sessionBus().baseService() != bus().connection().baseService());
    }

    void theNextObjectTakesOverAnOpenConnection()
    {
        const QString name = bus().connection().baseService();
        QVERIFY(!name.isEmpty());
        mBus.reset();
        mBus = std::make_unique<BusConnection>(QDBusConnection::SessionBus);
        QCOMPARE(bus().connection().baseService(), name);
    }

    void aSystemBusIsAnotherBus()
    {
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent");
        platform::SystemBus system;
        QVERIFY(!system.connection().isConnected());
        QVERIFY(bus().connection().isConnected());
    }

    void aSilentBusIsWaitedForOnce()
    {
        stopTheBusUnopened();
        for (int i = 0; i < Many; ++i) {
            bus().reopenIfLost();
            QVERIFY(!bus().connection().isConnected());
        }
    }

    void allObjectsWaitForASilentBusTogether()
    {
        stopTheBusUnopened();
        bus().reopenIfLost();
        for (int i = 0; i < Many; ++i) {
            BusConnection other(QDBusConnection::SessionBus);
            QVERIFY(!other.connection().isConnected());
        }
    }

    void objectsInTurnWaitForASilentBusTogether()
    {
        stopTheBusUnopened();
        for (int i = 0; i < Many; ++i) {
            BusConnection other(QDBusConnection::SessionBus);
            QVERIFY(!other.connection().isConnected());
        }
    }

    void theNextObjectUsesABusThatRepliesAgain()
    {
        stopTheBusUnopened();
        {
            BusConnection other(QDBusConnection::SessionBus);
            QVERIFY(!other.connection().isConnected());
        }
        mDaemon.resume();
        QTRY_VERIFY_WITH_TIMEOUT(BusConnection(QDBusConnection::SessionBus).connection().isConnected(),
                                 Timeout);
    }

    void aSilentBusIsUsedWhenItReplies()
    {
        stopTheBusUnopened();
        const QSignalSpy foundAgain(mBus.get(), &BusConnection::foundAgain);
        bus().reopenIfLost();
        mDaemon.resume();
        QTRY_COMPARE_WITH_TIMEOUT(foundAgain.count(), 1, Timeout);
        QVERIFY(bus().connection().isConnected());
    }

    void aSilentBusThatIsRestartedIsUsed()
    {
        stopTheBusUnopened();
        bus().reopenIfLost();
        mDaemon.kill();
        mDaemon.start();
        QTRY_VERIFY_WITH_TIMEOUT(bus().isOpen(), Timeout);
    }

    void aBusWithAFullQueueDoesNotBlock()
    {
        stopTheBusUnopened();
        // The kernel limits the queue of connections that a daemon has not accepted. The loop fills this
        // queue.
        std::vector<std::unique_ptr<BusHandshake>> queue;
        constexpr int MoreThanAnyQueue = 5000;
        while (queue.size() < MoreThanAnyQueue
               && (queue.empty() || queue.back()->look() == BusHandshake::Outcome::Silent))
            queue.push_back(std::make_unique<BusHandshake>(QDBusConnection::SessionBus));
        QVERIFY(queue.size() < MoreThanAnyQueue);
        for (int i = 0; i < Many; ++i)
            bus().reopenIfLost();
        queue.clear();
        mDaemon.resume();
        QTRY_VERIFY_WITH_TIMEOUT(bus().isOpen(), Timeout);
    }

    void aRestartedBusIsFoundAutomatically()
    {
        QVERIFY(bus().connection().isConnected());
        for (int restart = 1; restart <= 3; ++restart) {
            loseTheBus();
            const QSignalSpy foundAgain(mBus.get(), &BusConnection::foundAgain);
            mDaemon.start();
            QTRY_COMPARE_WITH_TIMEOUT(foundAgain.count(), 1, Timeout);
            QVERIFY(bus().connection().isConnected());
        }
    }

    void aBusThatStartsLaterIsFoundAutomatically()
    {
        mDaemon.kill();
        QVERIFY(!bus().connection().isConnected());
        mDaemon.start();
        QTRY_VERIFY_WITH_TIMEOUT(bus().isOpen(), Timeout);
    }

    void anObserverOfTheLossMayReopen()
    {
        QVERIFY(bus().connection().isConnected());
        connect(mBus.get(), &BusConnection::lost, mBus.get(), [this] {
            mDaemon.start();
            bus().reopenIfLost();
        });
        const QSignalSpy opened(mBus.get(), &BusConnection::opened);
        mDaemon.kill();
        QTRY_COMPARE_WITH_TIMEOUT(opened.count(), 1, Timeout);
        QVERIFY(bus().isOpen());
    }

    void aBusThatHangsIsQueriedOnceUntilItReplies()
    {
        QVERIFY(bus().connection().isConnected());
        mDaemon.stop();
        for (int i = 0; i < Many; ++i)
            QVERIFY(agentsOwner().isEmpty());
        mDaemon.resume();
        RecordingAgent agent;
        agent.publishBoth();
        QTRY_COMPARE_WITH_TIMEOUT(agentsOwner(), agent.uniqueName(), Timeout);
    }

    void anAddressMayBeAListAndEscaped()
    {
        const QByteArray address = qgetenv("DBUS_SESSION_BUS_ADDRESS");
        const QByteArray escaped = QByteArray(address).replace("test-bus", "%74est-bus,guid=00");
        qputenv("DBUS_SESSION_BUS_ADDRESS", QByteArray("unix:path=/nonexistent;" + escaped));
        BusHandshake handshake(QDBusConnection::SessionBus);
        qputenv("DBUS_SESSION_BUS_ADDRESS", address);
        QCOMPARE(handshake.wait(), BusHandshake::Outcome::Answered);
    }

    void unsupportedAddressesAreLeftToLibdbus()
    {
        const QByteArray address = qgetenv("DBUS_SESSION_BUS_ADDRESS");
        qputenv("DBUS_SESSION_BUS_ADDRESS", "tcp:host=localhost,port=1");
        BusHandshake handshake(QDBusConnection::SessionBus);
        qputenv("DBUS_SESSION_BUS_ADDRESS", address);
        QCOMPARE(handshake.look(), BusHandshake::Outcome::Answered);
    }
};

QTEST_GUILESS_MAIN(BusConnectionTest)

#include "BusConnection_test.moc"
