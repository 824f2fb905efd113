#include "platform/bus/DistributedNotificationCenter.h"

#include "agent/RemoteNames.h"
#include "platform/base/ToInt32.h"
#include "platform/bus/BusConnection.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/RecordingAgent.h"
#include "tests/support/Timeout.h"

#include <QDBusArgument>
#include <QSignalSpy>
#include <QTest>

using platform::Notification;

namespace {

const QString Name = QStringLiteral("KS7ChangedOptimizedPreference");
const QString OtherName = QStringLiteral("KS7CameraListChanged");
const QString Last = QStringLiteral("KS7AgentStarted");

/// Collects all log messages of the process while it exists. Only one object may exist at a time.
class Complaints {
public:
    Complaints()
    {
        lines.clear();
        mPrevious = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext &, const QString &line) { lines.append(line); });
    }
    ~Complaints() { qInstallMessageHandler(mPrevious); }
    Complaints(const Complaints &) = delete;
    Complaints &operator=(const Complaints &) = delete;

    static inline QStringList lines;

private:
    QtMessageHandler mPrevious;
};

} // namespace

/// Tests posts and observers over a real bus. The other end is an agent with its own connection.
class DistributedNotificationCenterTest : public QObject {
    Q_OBJECT

private:
    PrivateBus mBusDaemon;
    std::unique_ptr<RecordingAgent> mStranger;
    std::shared_ptr<platform::SessionBus> mBus;
    std::unique_ptr<platform::DistributedNotificationCenter> mCenter;
    QStringList mHeard;
    QVariantMap mUserInfo;

    void aPostTakesUpTheNewBus()
    {
        mBusDaemon.start();
        mStranger = std::make_unique<RecordingAgent>();
        mCenter->postNotificationName(Name);
        QTRY_COMPARE_WITH_TIMEOUT(mStranger->journal(), QStringList{QStringLiteral("post ") + Name}, Timeout);
    }
    void theStrangerIsHeard()
    {
        mStranger->post(OtherName);
        QTRY_COMPARE_WITH_TIMEOUT(mHeard, QStringList{OtherName}, Timeout);
    }
    void observe(const QString &name, const QString &as = {})
    {
        mCenter->addObserver(this, name, [this, as](const Notification &notification) {
            mHeard.append(as.isEmpty() ? notification.name : as);
            mUserInfo = notification.userInfo;
        });
    }
    void loseTheBus()
    {
        const QSignalSpy lost(mBus.get(), &platform::SessionBus::lost);
        mBusDaemon.kill();
        QTRY_COMPARE_WITH_TIMEOUT(lost.count(), 1, Timeout);
        QVERIFY(!mBus->connection().isConnected());
    }
    /// Posts a last notification. When it arrives, all earlier ones have arrived too.
    void waitForLast()
    {
        mStranger->post(Last);
        QTRY_VERIFY_WITH_TIMEOUT(mHeard.contains(Last), Timeout);
        mHeard.removeAll(Last);
    }

private Q_SLOTS:
    void init()
    {
        mHeard.clear();
        mUserInfo.clear();
        mStranger = std::make_unique<RecordingAgent>();
        mBus = std::make_shared<platform::SessionBus>();
        mCenter = std::make_unique<platform::DistributedNotificationCenter>(mBus, RemoteNames::Prefix);
        observe(Last);
    }
    void cleanup()
    {
        mCenter.reset();
        mBus.reset();
        mStranger.reset();
    }

    void aPostOfAnotherProcessReachesItsObserver()
    {
        observe(OtherName);
        mStranger->post(OtherName, {{QStringLiteral("Value"), 7}, {QStringLiteral("PassKey"), Name}});
        QTRY_COMPARE_WITH_TIMEOUT(mHeard, QStringList{OtherName}, Timeout);
        QCOMPARE(platform::toInt32(mUserInfo, QStringLiteral("Value")), 7);
        QCOMPARE(mUserInfo.value(QStringLiteral("PassKey")).toString(), Name);
    }

    void aPostReachesOthers()
    {
        mCenter->postNotificationName(Name, nullptr, {{QStringLiteral("Value"), 1}});
        QTRY_COMPARE_WITH_TIMEOUT(mStranger->journal(),
                                  QStringList{QStringLiteral("post %1 Value=1").arg(Name)}, Timeout);
        const auto message = mStranger->lastCall(Name);
        QCOMPARE(message.type(), QDBusMessage::SignalMessage);
        QCOMPARE(message.path(), QStringLiteral("/com/orvex/DistributedNotificationCenter"));
        QCOMPARE(message.interface(), QStringLiteral("com.orvex.DistributedNotificationCenter"));
        QCOMPARE(message.signature(), QStringLiteral("a{sv}"));
        const auto userInfo = qdbus_cast<QVariantMap>(message.arguments().constFirst());
        QCOMPARE(int(userInfo.value(QStringLiteral("Value")).userType()), int(QMetaType::Int));
    }

    void aPostWithoutUserInfoCarriesAnEmptyOne()
    {
        mCenter->postNotificationName(Name);
        QTRY_COMPARE_WITH_TIMEOUT(mStranger->journal(), QStringList{QStringLiteral("post ") + Name}, Timeout);
        QCOMPARE(mStranger->lastCall(Name).signature(), QStringLiteral("a{sv}"));
    }

    void aSenderReceivesItsOwnThroughTheRunLoop()
    {
        observe(Name);
        mCenter->postNotificationName(Name, this);
        QVERIFY2(mHeard.isEmpty(), "a post never waits for its observers");
        QTRY_COMPARE_WITH_TIMEOUT(mHeard, QStringList{Name}, Timeout);
    }

    void handlersRunInTheOrderOfTheirRegistration()
    {
        observe(OtherName, QStringLiteral("first"));
        observe(OtherName, QStringLiteral("second"));
        observe(OtherName, QStringLiteral("third"));
        mStranger->post(OtherName);
        QTRY_COMPARE_WITH_TIMEOUT(
            mHeard, (QStringList{QStringLiteral("first"), QStringLiteral("second"), QStringLiteral("third")}),
            Timeout);
    }

    void postsArriveInOrder()
    {
        observe(Name);
        observe(OtherName);
        QStringList posted;
        for (int i = 0; i < 100; ++i) {
            posted.append(i % 3 == 0 ? Name : OtherName);
            mStranger->post(posted.constLast());
        }
        QTRY_COMPARE_WITH_TIMEOUT(mHeard, posted, Timeout);
    }

    void unobservedNamesAreNotDelivered()
    {
        observe(Name);
        for (int i = 0; i < 1000; ++i)
            mStranger->post(QStringLiteral("KS7Unknown%1").arg(i));
        waitForLast();
        QCOMPARE(mHeard, QStringList());
    }

    void otherPayloadsCountAsNoUserInfo_data()
    {
        QTest::addColumn<QVariantList>("arguments");
        QTest::newRow("nothing") << QVariantList();
        QTest::newRow("a number") << QVariantList{7};
        QTest::newRow("a string") << QVariantList{Name};
        QTest::newRow("a list") << QVariantList{QStringList{Name}};
        QTest::newRow("more than one") << QVariantList{QVariantMap{{QStringLiteral("Value"), 7}}, 7};
    }
    void otherPayloadsCountAsNoUserInfo()
    {
        QFETCH(QVariantList, arguments);
        observe(OtherName);
        mUserInfo = {{QStringLiteral("Value"), 1}};
        mStranger->postRaw(OtherName, arguments);
        QTRY_COMPARE_WITH_TIMEOUT(mHeard, QStringList{OtherName}, Timeout);
        QCOMPARE(mUserInfo, QVariantMap());
    }

    void valuesOfOtherTypesReadAsZero()
    {
        observe(OtherName);
        mStranger->post(OtherName, {{QStringLiteral("Value"), QStringList{Name}}});
        QTRY_COMPARE_WITH_TIMEOUT(mHeard, QStringList{OtherName}, Timeout);
        QCOMPARE(platform::toInt32(mUserInfo, QStringLiteral("Value")), 0);
    }

    void removedObserversReceiveNothing()
    {
        observe(OtherName);
        mCenter->removeObserver(this, OtherName);
        mStranger->post(OtherName);
        waitForLast();
        QCOMPARE(mHeard, QStringList());
    }

    void theOtherObserversOfANameStay()
    {
        observe(OtherName, QStringLiteral("mine"));
        mCenter->addObserver(mBus.get(), OtherName,
                             [this](const Notification &) { mHeard.append(QStringLiteral("theirs")); });
        mCenter->removeObserver(this, OtherName);
        mStranger->post(OtherName);
        QTRY_COMPARE_WITH_TIMEOUT(mHeard, QStringList{QStringLiteral("theirs")}, Timeout);
        observe(OtherName, QStringLiteral("mine"));
        mHeard.clear();
        mStranger->post(OtherName);
        QTRY_COMPARE_WITH_TIMEOUT(mHeard, (QStringList{QStringLiteral("theirs"), QStringLiteral("mine")}),
                                  Timeout);
    }

    void aHandlerMayRegisterAndRemove()
    {
        mCenter->addObserver(this, OtherName, [this](const Notification &) {
            mCenter->removeObserver(this, OtherName);
            observe(Name);
            mCenter->postNotificationName(Name);
        });
        mStranger->post(OtherName);
        QTRY_COMPARE_WITH_TIMEOUT(mHeard, QStringList{Name}, Timeout);
    }

    void theObserversOutliveTheBus()
    {
        observe(OtherName);
        loseTheBus();
        mCenter->postNotificationName(Name);
        mBusDaemon.start();
        mStranger = std::make_unique<RecordingAgent>();
        mBus->reopenIfLost();
        theStrangerIsHeard();
    }

    void aPostOpensARestartedBus()
    {
        observe(OtherName);
        loseTheBus();
        aPostTakesUpTheNewBus();
        theStrangerIsHeard();
    }

    void aPostDoesNotReopenAnOpenBus()
    {
        const auto name = mBus->connection().baseService();
        QVERIFY(!name.isEmpty());
        const QSignalSpy opened(mBus.get(), &platform::SessionBus::opened);
        mCenter->postNotificationName(Name);
        mCenter->postNotificationName(Name);
        QCOMPARE(mBus->connection().baseService(), name);
        QCOMPARE(opened.count(), 0);
    }

    void postsWithoutABusAreLostAndTheNextBusIsUsed()
    {
        loseTheBus();
        const QSignalSpy lost(mBus.get(), &platform::SessionBus::lost);
        const Complaints complaints;
        for (int i = 0; i < 100; ++i)
            mCenter->postNotificationName(Name);
        QCOMPARE(Complaints::lines, QStringList());
        QCOMPARE(lost.count(), 0);
        aPostTakesUpTheNewBus();
    }

    void aPostOpensABusThatStartsLater()
    {
        mCenter.reset();
        mBusDaemon.kill();
        mBus = std::make_shared<platform::SessionBus>();
        mCenter = std::make_unique<platform::DistributedNotificationCenter>(mBus, RemoteNames::Prefix);
        observe(OtherName);
        QVERIFY(!mBus->connection().isConnected());
        aPostTakesUpTheNewBus();
        theStrangerIsHeard();
    }
};

QTEST_GUILESS_MAIN(DistributedNotificationCenterTest)

#include "DistributedNotificationCenter_test.moc"
