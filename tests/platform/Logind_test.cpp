#include "platform/BusNames.h"
#include "platform/LogindPower.h"
#include "platform/LogindSession.h"
#include "platform/Workspace.h"
#include "tests/support/Patience.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusReply>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QDir>
#include <QProcess>
#include <QTest>

#include <vector>

namespace bus = platform::bus;

namespace {

const QString Mock = QStringLiteral("org.freedesktop.DBus.Mock");
const QString SessionPath = bus::LogindPath + QStringLiteral("/session/c1");

/// The messages that the callback was handed, with their arguments.
struct Received {
    std::uint32_t message;
    void *argument;
};
std::vector<Received> received;

void receive(void *refcon, std::uint32_t, std::uint32_t message, void *argument)
{
    received.push_back({message, argument});
    auto *allows = static_cast<platform::LogindPower **>(refcon);
    if (allows && *allows && message == platform::kIOMessageSystemWillSleep)
        (*allows)->allowPowerChange(1, argument);
}

/// Knows one session, which has the screen or not; comes and goes as it is told.
class SmallLogind final : public QDBusVirtualObject {
public:
    SmallLogind()
        : mBus(QDBusConnection::connectToBus(QDBusConnection::SystemBus, QStringLiteral("small logind")))
    {
        mBus.registerVirtualObject(bus::LogindPath, this, QDBusConnection::SubPath);
    }
    void come(bool active)
    {
        mActive = active;
        mBus.registerService(bus::Logind);
    }
    void go() { mBus.unregisterService(bus::Logind); }

    [[nodiscard]] QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &question, const QDBusConnection &connection) override
    {
        const QVariant answer = question.member() == QLatin1String("GetSession")
            ? QVariant::fromValue(QDBusObjectPath(SessionPath))
            : QVariant::fromValue(QDBusVariant(mActive));
        return connection.send(question.createReply(answer));
    }

private:
    QDBusConnection mBus;
    bool mActive = false;
};

} // namespace

/// Sleep, wake and user switching, as a logind played by python-dbusmock announces them.
class LogindTest : public QObject {
    Q_OBJECT

    void startLogind()
    {
        mLogind.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        mLogind.setStandardOutputFile(QProcess::nullDevice());
        mLogind.start(QStringLiteral("/usr/bin/python3"),
                      {QStringLiteral("-m"), QStringLiteral("dbusmock"), QStringLiteral("--system"),
                       QStringLiteral("--template"), QStringLiteral("logind")});
        QVERIFY(mLogind.waitForStarted());
        QTRY_VERIFY_WITH_TIMEOUT(QDBusConnection::systemBus().interface()->isServiceRegistered(bus::Logind),
                                 Patience);
    }

    void killLogind()
    {
        mLogind.kill();
        mLogind.waitForFinished();
        QTRY_VERIFY_WITH_TIMEOUT(!QDBusConnection::systemBus().interface()->isServiceRegistered(bus::Logind),
                                 Patience);
    }

    static QDBusMessage tell(const QString &path, const QString &interface, const QString &method,
                             const QVariantList &arguments)
    {
        auto call = QDBusMessage::createMethodCall(bus::Logind, path, interface, method);
        call.setArguments(arguments);
        return QDBusConnection::systemBus().call(call);
    }

    static void logindPrepares(bool start)
    {
        const QVariantList arguments{start};
        tell(bus::LogindPath, Mock, QStringLiteral("EmitSignal"),
             {bus::LogindManager, bus::PrepareForSleep, QStringLiteral("b"), arguments});
    }

    static int inhibitors()
    {
        const auto answer = tell(bus::LogindPath, bus::LogindManager, QStringLiteral("ListInhibitors"), {});
        const auto list = answer.arguments().value(0).value<QDBusArgument>();
        int count = 0;
        list.beginArray();
        while (!list.atEnd()) {
            QString what;
            QString who;
            QString why;
            QString mode;
            uint user = 0;
            uint process = 0;
            list.beginStructure();
            list >> what >> who >> why >> mode >> user >> process;
            list.endStructure();
            if (what == QLatin1String("sleep") && who == QLatin1String("KS-7")
                && mode == QLatin1String("delay"))
                ++count;
        }
        return count;
    }

    static void setActive(bool active)
    {
        tell(SessionPath, Mock, QStringLiteral("UpdateProperties"),
             {bus::LogindSession, QVariantMap{{QStringLiteral("Active"), active}}});
    }

    void listen(platform::LogindSession &session, QStringList &heard)
    {
        for (const auto &name : {platform::NSWorkspaceSessionDidBecomeActiveNotification,
                                 platform::NSWorkspaceSessionDidResignActiveNotification})
            session.addObserver(this, name,
                                [&heard](const platform::Notification &told) { heard.append(told.name); });
    }

    static int openDescriptors()
    {
        return QDir(QStringLiteral("/proc/self/fd"))
            .entryList(QDir::NoDotAndDotDot | QDir::AllEntries)
            .size();
    }

private Q_SLOTS:
    void init()
    {
        received.clear();
        qunsetenv("XDG_SESSION_ID");
    }

    void cleanup()
    {
        if (mLogind.state() != QProcess::NotRunning)
            killLogind();
    }

    void withoutLogindNoMessageComesAndNothingIsHeld()
    {
        platform::LogindPower power;
        power.registerForSystemPower(nullptr, receive);
        power.allowPowerChange(1, nullptr);
        QVERIFY(!power.holdsInhibitor());
        QVERIFY(received.empty());
    }

    void aDelayInhibitorIsTakenAtTheStartAndGivenBackAtTheEnd()
    {
        startLogind();
        {
            platform::LogindPower power;
            QVERIFY(power.registerForSystemPower(nullptr, receive) != 0);
            QTRY_VERIFY_WITH_TIMEOUT(power.holdsInhibitor(), Patience);
            QCOMPARE(inhibitors(), 1);
        }
        QTRY_COMPARE_WITH_TIMEOUT(inhibitors(), 0, Patience);
    }

    void sleepWaitsForTheAnswerToItsOwnMessage()
    {
        startLogind();
        platform::LogindPower power;
        power.registerForSystemPower(nullptr, receive);
        QTRY_VERIFY_WITH_TIMEOUT(power.holdsInhibitor(), Patience);
        logindPrepares(true);
        QTRY_COMPARE_WITH_TIMEOUT(received.size(), std::size_t(1), Patience);
        QCOMPARE(received[0].message, std::uint32_t(platform::kIOMessageSystemWillSleep));
        QVERIFY(received[0].argument);
        power.allowPowerChange(1, nullptr);
        QVERIFY(power.holdsInhibitor());
        power.allowPowerChange(1, received[0].argument);
        QVERIFY(!power.holdsInhibitor());
        QTRY_COMPARE_WITH_TIMEOUT(inhibitors(), 0, Patience);
    }

    void wakingTakesTheInhibitorAgain()
    {
        startLogind();
        platform::LogindPower power;
        platform::LogindPower *allows = &power;
        power.registerForSystemPower(&allows, receive);
        QTRY_VERIFY_WITH_TIMEOUT(power.holdsInhibitor(), Patience);
        logindPrepares(true);
        QTRY_VERIFY_WITH_TIMEOUT(!power.holdsInhibitor(), Patience);
        logindPrepares(false);
        QTRY_VERIFY_WITH_TIMEOUT(power.holdsInhibitor(), Patience);
        QCOMPARE(received.back().message, std::uint32_t(platform::kIOMessageSystemHasPoweredOn));
        QCOMPARE(inhibitors(), 1);
    }

    void anOddOrderOfMessagesLeaksNoInhibitor()
    {
        startLogind();
        platform::LogindPower power;
        power.registerForSystemPower(nullptr, receive);
        QTRY_VERIFY_WITH_TIMEOUT(power.holdsInhibitor(), Patience);
        logindPrepares(true);
        logindPrepares(true);
        QTRY_COMPARE_WITH_TIMEOUT(received.size(), std::size_t(2), Patience);
        QVERIFY(received[0].argument != received[1].argument);
        power.allowPowerChange(1, received[0].argument);
        QVERIFY(power.holdsInhibitor());
        power.allowPowerChange(1, received[1].argument);
        power.allowPowerChange(1, received[1].argument);
        QVERIFY(!power.holdsInhibitor());
        logindPrepares(false);
        logindPrepares(false);
        QTRY_COMPARE_WITH_TIMEOUT(received.size(), std::size_t(4), Patience);
        QTRY_VERIFY_WITH_TIMEOUT(power.holdsInhibitor(), Patience);
        QCOMPARE(inhibitors(), 1);
    }

    void manyNightsKeepTheDescriptorsWhereTheyWere()
    {
        startLogind();
        platform::LogindPower power;
        platform::LogindPower *allows = &power;
        power.registerForSystemPower(&allows, receive);
        QTRY_VERIFY_WITH_TIMEOUT(power.holdsInhibitor(), Patience);
        const int before = openDescriptors();
        for (int night = 0; night < 20; ++night) {
            logindPrepares(true);
            QTRY_VERIFY_WITH_TIMEOUT(!power.holdsInhibitor(), Patience);
            logindPrepares(false);
            QTRY_VERIFY_WITH_TIMEOUT(power.holdsInhibitor(), Patience);
        }
        QCOMPARE(openDescriptors(), before);
        QCOMPARE(inhibitors(), 1);
    }

    void aLogindThatComesBackIsAskedAgain()
    {
        startLogind();
        platform::LogindPower power;
        power.registerForSystemPower(nullptr, receive);
        QTRY_VERIFY_WITH_TIMEOUT(power.holdsInhibitor(), Patience);
        killLogind();
        QTRY_VERIFY_WITH_TIMEOUT(!power.holdsInhibitor(), Patience);
        startLogind();
        QTRY_VERIFY_WITH_TIMEOUT(power.holdsInhibitor(), Patience);
        QCOMPARE(inhibitors(), 1);
    }

    void aSwitchOfTheUserIsToldOnceEachWay()
    {
        startLogind();
        tell(bus::LogindPath, Mock, QStringLiteral("AddSession"),
             {QStringLiteral("c1"), QStringLiteral("seat0"), 1000U, QStringLiteral("me"), true});
        qputenv("XDG_SESSION_ID", "c1");
        platform::LogindSession session;
        QStringList heard;
        listen(session, heard);
        QTRY_VERIFY_WITH_TIMEOUT(session.isActive().has_value(), Patience);
        QVERIFY(heard.isEmpty());
        setActive(true);
        setActive(false);
        setActive(false);
        setActive(true);
        const QStringList expected{platform::NSWorkspaceSessionDidResignActiveNotification,
                                   platform::NSWorkspaceSessionDidBecomeActiveNotification};
        QTRY_COMPARE_WITH_TIMEOUT(heard, expected, Patience);
        session.removeObserver(this, platform::NSWorkspaceSessionDidResignActiveNotification);
        setActive(false);
        QTRY_COMPARE_WITH_TIMEOUT(session.isActive(), std::optional<bool>(false), Patience);
        QCOMPARE(heard, expected);
    }

    void aLogindThatComesBackTellsOfASwitchInBetween()
    {
        qputenv("XDG_SESSION_ID", "c1");
        SmallLogind logind;
        platform::LogindSession session;
        QStringList heard;
        listen(session, heard);
        logind.come(true);
        QTRY_COMPARE_WITH_TIMEOUT(session.isActive(), std::optional<bool>(true), Patience);
        logind.go();
        logind.come(false);
        QTRY_COMPARE_WITH_TIMEOUT(session.isActive(), std::optional<bool>(false), Patience);
        QCOMPARE(heard, QStringList{platform::NSWorkspaceSessionDidResignActiveNotification});
        logind.go();
        logind.come(false);
        logind.go();
        logind.come(true);
        QTRY_COMPARE_WITH_TIMEOUT(session.isActive(), std::optional<bool>(true), Patience);
        QCOMPARE(heard.size(), 2);
        logind.go();
    }

    void aSessionNobodyKnowsIsNeitherActiveNorNot()
    {
        startLogind();
        platform::LogindSession session;
        session.addObserver(this, platform::NSWorkspaceSessionDidResignActiveNotification,
                            [](const platform::Notification &) { QFAIL("nobody has switched"); });
        // Its questions have been answered when a later one has.
        inhibitors();
        QCoreApplication::processEvents();
        QVERIFY(!session.isActive().has_value());
    }

private:
    QProcess mLogind;
};

QTEST_GUILESS_MAIN(LogindTest)
#include "Logind_test.moc"
