#include "platform/bus/BusConnection.h"
#include "platform/bus/BusNames.h"
#include "platform/desktop/Workspace.h"
#include "platform/power/LogindPower.h"
#include "platform/power/LogindSession.h"
#include "tests/fakes/FakeLogindInhibitors.h"
#include "tests/fakes/FakeLogindSession.h"
#include "tests/support/Timeout.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDir>
#include <QProcess>
#include <QTest>

#include <vector>

namespace bus = platform::bus;

namespace {

const QString Mock = QStringLiteral("org.freedesktop.DBus.Mock");
const QString &BecameActive = platform::NSWorkspaceSessionDidBecomeActiveNotification;
const QString &Resigned = platform::NSWorkspaceSessionDidResignActiveNotification;

/// One call of the power callback: its message and its argument.
struct Received {
    std::uint32_t message;
    void *argument;
};
std::vector<Received> received;

/// The arguments of all received messages of one type, in order.
std::vector<void *> argumentsOf(std::uint32_t message)
{
    std::vector<void *> arguments;
    for (const Received &one : received) {
        if (one.message == message)
            arguments.push_back(one.argument);
    }
    return arguments;
}

int wakes()
{
    return static_cast<int>(argumentsOf(platform::kIOMessageSystemHasPoweredOn).size());
}

std::vector<void *> announcements()
{
    return argumentsOf(platform::kIOMessageSystemWillSleep);
}

void receive(void *refcon, std::uint32_t, std::uint32_t message, void *argument)
{
    received.push_back({message, argument});
    auto *allows = static_cast<platform::LogindPower **>(refcon);
    if (allows && *allows && message == platform::kIOMessageSystemWillSleep)
        (*allows)->allowPowerChange(1, argument);
}

/// Opens a connection to the system bus. The tests need a bus that is open from the beginning.
std::shared_ptr<platform::BusConnection> openBus()
{
    auto bus = std::make_shared<platform::SystemBus>();
    bus->connection();
    return bus;
}

} // namespace

/// Tests sleep, wake-up and user switches with python-dbusmock's logind.
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
                                 Timeout);
    }

    void killLogind()
    {
        mLogind.kill();
        mLogind.waitForFinished();
        QTRY_VERIFY_WITH_TIMEOUT(!QDBusConnection::systemBus().interface()->isServiceRegistered(bus::Logind),
                                 Timeout);
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
            if (what == QLatin1String("sleep") && who == Delay.who && mode == QLatin1String("delay"))
                ++count;
        }
        return count;
    }

    static void setActive(bool active)
    {
        tell(SessionPath, Mock, QStringLiteral("UpdateProperties"),
             {bus::LogindSession, QVariantMap{{Active, active}}});
    }

    void listen(platform::LogindSession &session, QStringList &heard)
    {
        for (const auto &name : {BecameActive, Resigned})
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

    void withoutLogindThereAreNoMessagesAndNoInhibitor()
    {
        platform::LogindPower power(openBus(), Delay);
        power.registerForSystemPower(nullptr, receive);
        power.allowPowerChange(1, nullptr);
        QVERIFY(!power.holdsInhibitor());
        QVERIFY(received.empty());
    }

    void aDelayInhibitorIsTakenAtTheStartAndReleasedAtTheEnd()
    {
        startLogind();
        {
            platform::LogindPower power(openBus(), Delay);
            QVERIFY(power.registerForSystemPower(nullptr, receive) != 0);
            QTRY_VERIFY_WITH_TIMEOUT(power.holdsInhibitor(), Timeout);
            QCOMPARE(inhibitors(), 1);
        }
        QTRY_COMPARE_WITH_TIMEOUT(inhibitors(), 0, Timeout);
    }

    void sleepWaitsForTheReplyToItsOwnMessage()
    {
        startLogind();
        platform::LogindPower power(openBus(), Delay);
        power.registerForSystemPower(nullptr, receive);
        QTRY_VERIFY_WITH_TIMEOUT(power.holdsInhibitor(), Timeout);
        logindPrepares(true);
        QTRY_COMPARE_WITH_TIMEOUT(announcements().size(), std::size_t(1), Timeout);
        QVERIFY(announcements()[0]);
        power.allowPowerChange(1, nullptr);
        QVERIFY(power.holdsInhibitor());
        power.allowPowerChange(1, announcements()[0]);
        QVERIFY(!power.holdsInhibitor());
        QTRY_COMPARE_WITH_TIMEOUT(inhibitors(), 0, Timeout);
    }

    void theQueryComesBeforeTheAnnouncementAndReleasesNothing()
    {
        startLogind();
        platform::LogindPower power(openBus(), Delay);
        power.registerForSystemPower(nullptr, receive);
        QTRY_VERIFY_WITH_TIMEOUT(power.holdsInhibitor(), Timeout);
        logindPrepares(true);
        QTRY_COMPARE_WITH_TIMEOUT(received.size(), std::size_t(2), Timeout);
        QCOMPARE(received[0].message, std::uint32_t(platform::kIOMessageCanSystemSleep));
        QCOMPARE(received[1].message, std::uint32_t(platform::kIOMessageSystemWillSleep));
        QVERIFY(received[0].argument);
        power.allowPowerChange(1, received[0].argument);
        QVERIFY(power.holdsInhibitor());
        QCOMPARE(inhibitors(), 1);
        // Only an answer to the will-sleep message may release the inhibitor. So an answer to the can-sleep
        // query of a second sleep must not release it.
        logindPrepares(false);
        logindPrepares(true);
        QTRY_COMPARE_WITH_TIMEOUT(announcements().size(), std::size_t(2), Timeout);
        power.allowPowerChange(1, argumentsOf(platform::kIOMessageCanSystemSleep)[1]);
        QVERIFY(power.holdsInhibitor());
    }

    void wakingTakesTheInhibitorAgain()
    {
        startLogind();
        platform::LogindPower power(openBus(), Delay);
        platform::LogindPower *allows = &power;
        power.registerForSystemPower(&allows, receive);
        QTRY_VERIFY_WITH_TIMEOUT(power.holdsInhibitor(), Timeout);
        logindPrepares(true);
        QTRY_VERIFY_WITH_TIMEOUT(!power.holdsInhibitor(), Timeout);
        logindPrepares(false);
        QTRY_VERIFY_WITH_TIMEOUT(power.holdsInhibitor(), Timeout);
        QCOMPARE(received.back().message, std::uint32_t(platform::kIOMessageSystemHasPoweredOn));
        QCOMPARE(inhibitors(), 1);
    }

    void anUnexpectedOrderOfMessagesLeaksNoInhibitor()
    {
        startLogind();
        platform::LogindPower power(openBus(), Delay);
        power.registerForSystemPower(nullptr, receive);
        QTRY_VERIFY_WITH_TIMEOUT(power.holdsInhibitor(), Timeout);
        logindPrepares(true);
        logindPrepares(true);
        QTRY_COMPARE_WITH_TIMEOUT(announcements().size(), std::size_t(2), Timeout);
        const auto announced = announcements();
        QVERIFY(announced[0] != announced[1]);
        power.allowPowerChange(1, announced[0]);
        QVERIFY(power.holdsInhibitor());
        power.allowPowerChange(1, announced[1]);
        power.allowPowerChange(1, announced[1]);
        QVERIFY(!power.holdsInhibitor());
        logindPrepares(false);
        logindPrepares(false);
        QTRY_COMPARE_WITH_TIMEOUT(wakes(), 2, Timeout);
        QTRY_VERIFY_WITH_TIMEOUT(power.holdsInhibitor(), Timeout);
        QCOMPARE(inhibitors(), 1);
    }

    void manySleepsLeakNoDescriptor()
    {
        startLogind();
        platform::LogindPower power(openBus(), Delay);
        platform::LogindPower *allows = &power;
        power.registerForSystemPower(&allows, receive);
        QTRY_VERIFY_WITH_TIMEOUT(power.holdsInhibitor(), Timeout);
        const int before = openDescriptors();
        for (int night = 0; night < 20; ++night) {
            logindPrepares(true);
            QTRY_VERIFY_WITH_TIMEOUT(!power.holdsInhibitor(), Timeout);
            logindPrepares(false);
            QTRY_VERIFY_WITH_TIMEOUT(power.holdsInhibitor(), Timeout);
        }
        QCOMPARE(openDescriptors(), before);
        QCOMPARE(inhibitors(), 1);
    }

    void aRestartedLogindIsQueriedAgain()
    {
        startLogind();
        platform::LogindPower power(openBus(), Delay);
        power.registerForSystemPower(nullptr, receive);
        QTRY_VERIFY_WITH_TIMEOUT(power.holdsInhibitor(), Timeout);
        killLogind();
        QTRY_VERIFY_WITH_TIMEOUT(!power.holdsInhibitor(), Timeout);
        startLogind();
        QTRY_VERIFY_WITH_TIMEOUT(power.holdsInhibitor(), Timeout);
        QCOMPARE(inhibitors(), 1);
    }

    void oneInhibitorIsRequestedAtATime()
    {
        FakeLogindInhibitors logind;
        logind.keepAnswersBack();
        platform::LogindPower power(openBus(), Delay);
        platform::LogindPower *allows = &power;
        power.registerForSystemPower(&allows, receive);
        QTRY_VERIFY_WITH_TIMEOUT(logind.hasUnanswered(), Timeout);
        logind.prepares(false);
        logind.prepares(false);
        QTRY_COMPARE_WITH_TIMEOUT(wakes(), 2, Timeout);
        logind.answerNow();
        QTRY_VERIFY_WITH_TIMEOUT(power.holdsInhibitor(), Timeout);
        // Another sleep causes one more Inhibit call, which arrives after all earlier calls. So questions()
        // then also counts any unexpected call before it.
        logind.prepares(true);
        logind.prepares(false);
        QTRY_COMPARE_WITH_TIMEOUT(wakes(), 3, Timeout);
        QTRY_VERIFY_WITH_TIMEOUT(power.holdsInhibitor(), Timeout);
        QCOMPARE(logind.questions(), 2);
        QCOMPARE(logind.held(), 1);
    }

    void anInhibitorGrantedAfterTheSleepWasAllowedIsReleased()
    {
        FakeLogindInhibitors logind;
        logind.keepAnswersBack();
        platform::LogindPower power(openBus(), Delay);
        platform::LogindPower *allows = &power;
        power.registerForSystemPower(&allows, receive);
        QTRY_VERIFY_WITH_TIMEOUT(logind.hasUnanswered(), Timeout);
        logind.prepares(true);
        QTRY_COMPARE_WITH_TIMEOUT(announcements().size(), std::size_t(1), Timeout);
        logind.answerNow();
        QCOMPARE(logind.held(), 1);
        QTRY_COMPARE_WITH_TIMEOUT(logind.held(), 0, Timeout);
        QVERIFY(!power.holdsInhibitor());
        logind.prepares(false);
        QTRY_VERIFY_WITH_TIMEOUT(power.holdsInhibitor(), Timeout);
        QCOMPARE(logind.held(), 1);
    }

    void anInhibitorGrantedBeforeTheSleepIsAllowedIsKeptUntilThen()
    {
        FakeLogindInhibitors logind;
        logind.keepAnswersBack();
        platform::LogindPower power(openBus(), Delay);
        power.registerForSystemPower(nullptr, receive);
        QTRY_VERIFY_WITH_TIMEOUT(logind.hasUnanswered(), Timeout);
        logind.prepares(true);
        QTRY_COMPARE_WITH_TIMEOUT(announcements().size(), std::size_t(1), Timeout);
        logind.answerNow();
        QTRY_VERIFY_WITH_TIMEOUT(power.holdsInhibitor(), Timeout);
        power.allowPowerChange(1, announcements()[0]);
        QTRY_COMPARE_WITH_TIMEOUT(logind.held(), 0, Timeout);
    }

    void anInhibitorGrantedAfterWakingIsKept()
    {
        FakeLogindInhibitors logind;
        logind.keepAnswersBack();
        platform::LogindPower power(openBus(), Delay);
        platform::LogindPower *allows = &power;
        power.registerForSystemPower(&allows, receive);
        QTRY_VERIFY_WITH_TIMEOUT(logind.hasUnanswered(), Timeout);
        logind.prepares(true);
        logind.prepares(false);
        QTRY_COMPARE_WITH_TIMEOUT(wakes(), 1, Timeout);
        logind.answerNow();
        QTRY_VERIFY_WITH_TIMEOUT(power.holdsInhibitor(), Timeout);
        QCOMPARE(logind.held(), 1);
    }

    void aSessionSwitchIsReportedOnceEachWay()
    {
        startLogind();
        tell(bus::LogindPath, Mock, QStringLiteral("AddSession"),
             {QStringLiteral("c1"), QStringLiteral("seat0"), 1000U, QStringLiteral("me"), true});
        qputenv("XDG_SESSION_ID", "c1");
        platform::LogindSession session(openBus());
        QStringList heard;
        listen(session, heard);
        QTRY_VERIFY_WITH_TIMEOUT(session.isActive().has_value(), Timeout);
        QVERIFY(heard.isEmpty());
        setActive(true);
        setActive(false);
        setActive(false);
        setActive(true);
        const QStringList expected{Resigned, BecameActive};
        QTRY_COMPARE_WITH_TIMEOUT(heard, expected, Timeout);
        session.removeObserver(this, Resigned);
        setActive(false);
        QTRY_COMPARE_WITH_TIMEOUT(session.isActive(), std::optional<bool>(false), Timeout);
        QCOMPARE(heard, expected);
    }

    void aRestartedLogindReportsASwitchMadeMeanwhile()
    {
        qputenv("XDG_SESSION_ID", "c1");
        FakeLogindSession logind;
        platform::LogindSession session(openBus());
        QStringList heard;
        listen(session, heard);
        logind.come(true);
        QTRY_COMPARE_WITH_TIMEOUT(session.isActive(), std::optional<bool>(true), Timeout);
        logind.go();
        logind.come(false);
        QTRY_COMPARE_WITH_TIMEOUT(session.isActive(), std::optional<bool>(false), Timeout);
        QCOMPARE(heard, QStringList{Resigned});
        logind.go();
        logind.come(false);
        logind.go();
        logind.come(true);
        QTRY_COMPARE_WITH_TIMEOUT(session.isActive(), std::optional<bool>(true), Timeout);
        QCOMPARE(heard.size(), 2);
    }

    void theSessionIsFound_data()
    {
        using Finds = FakeLogindSession::Finds;
        const auto name = QStringLiteral("GetSession");
        const auto process = QStringLiteral("GetSessionByPID");
        const auto display = QStringLiteral("Get");
        QTest::addColumn<QString>("sessionId");
        QTest::addColumn<int>("finds");
        QTest::addColumn<QStringList>("searches");
        QTest::newRow("by its name") << "c1" << int(Finds::ByName) << QStringList{name};
        QTest::newRow("by the process") << "" << int(Finds::ByProcess) << QStringList{process};
        QTest::newRow("by the process of an unknown name")
            << "c7" << int(Finds::ByProcess) << QStringList{name, process};
        QTest::newRow("as the user's display")
            << "" << int(Finds::ByDisplay) << QStringList{process, display};
    }

    void theSessionIsFound()
    {
        QFETCH(QString, sessionId);
        QFETCH(int, finds);
        if (!sessionId.isEmpty())
            qputenv("XDG_SESSION_ID", sessionId.toLatin1());
        FakeLogindSession logind{FakeLogindSession::Finds(finds)};
        logind.come(true);
        platform::LogindSession session(openBus());
        QStringList heard;
        listen(session, heard);
        QTRY_COMPARE_WITH_TIMEOUT(session.isActive(), std::optional<bool>(true), Timeout);
        QTEST(logind.searches(), "searches");
        logind.switches(false);
        QTRY_COMPARE_WITH_TIMEOUT(heard, QStringList{Resigned}, Timeout);
    }

    void theFirstReplyIsNoSessionChange()
    {
        qputenv("XDG_SESSION_ID", "c1");
        FakeLogindSession logind;
        logind.come(false);
        platform::LogindSession session(openBus());
        QStringList heard;
        listen(session, heard);
        QTRY_COMPARE_WITH_TIMEOUT(session.isActive(), std::optional<bool>(false), Timeout);
        QCOMPARE(heard, QStringList());
        logind.switches(true);
        QTRY_COMPARE_WITH_TIMEOUT(heard, QStringList{BecameActive}, Timeout);
    }

    void aLossBeforeTheFirstReplyIsReported_data()
    {
        QTest::addColumn<bool>("says");
        QTest::newRow("with the new value") << true;
        QTest::newRow("without the new value") << false;
    }

    void aLossBeforeTheFirstReplyIsReported()
    {
        QFETCH(bool, says);
        qputenv("XDG_SESSION_ID", "c1");
        FakeLogindSession logind;
        logind.keepAnswersBack();
        logind.come(true);
        platform::LogindSession session(openBus());
        QStringList heard;
        listen(session, heard);
        QTRY_VERIFY_WITH_TIMEOUT(logind.hasUnanswered(), Timeout);
        if (says)
            logind.switches(false);
        else
            logind.switchesWithoutSaying(false);
        logind.answerNow();
        QTRY_COMPARE_WITH_TIMEOUT(heard, QStringList{Resigned}, Timeout);
        // The late replies must cause no notification. This signal arrives after them, so a wrong
        // notification would come before BecameActive.
        logind.switches(true);
        QTRY_COMPARE_WITH_TIMEOUT(heard.size(), 2, Timeout);
        QCOMPARE(heard, (QStringList{Resigned, BecameActive}));
    }

    void aGainBeforeTheFirstReplyIsNotReported()
    {
        qputenv("XDG_SESSION_ID", "c1");
        FakeLogindSession logind;
        logind.keepAnswersBack();
        logind.come(false);
        platform::LogindSession session(openBus());
        QStringList heard;
        listen(session, heard);
        QTRY_VERIFY_WITH_TIMEOUT(logind.hasUnanswered(), Timeout);
        logind.switches(true);
        QTRY_COMPARE_WITH_TIMEOUT(session.isActive(), std::optional<bool>(true), Timeout);
        logind.answerNow();
        logind.switches(false);
        QTRY_VERIFY_WITH_TIMEOUT(!heard.isEmpty(), Timeout);
        QCOMPARE(heard, QStringList{Resigned});
    }

    void anInvalidatedPropertyIsReadAgain()
    {
        qputenv("XDG_SESSION_ID", "c1");
        FakeLogindSession logind;
        logind.come(true);
        platform::LogindSession session(openBus());
        QStringList heard;
        listen(session, heard);
        QTRY_COMPARE_WITH_TIMEOUT(session.isActive(), std::optional<bool>(true), Timeout);
        logind.keepAnswersBack();
        logind.switchesWithoutSaying(true);
        QTRY_VERIFY_WITH_TIMEOUT(logind.hasUnanswered(), Timeout);
        logind.answerNow();
        logind.switchesWithoutSaying(false);
        QTRY_COMPARE_WITH_TIMEOUT(heard, QStringList{Resigned}, Timeout);
        logind.switchesWithoutSaying(true);
        QTRY_COMPARE_WITH_TIMEOUT(heard, (QStringList{Resigned, BecameActive}), Timeout);
    }

    void anUnknownSessionHasNoState()
    {
        startLogind();
        platform::LogindSession session(openBus());
        session.addObserver(this, Resigned,
                            [](const platform::Notification &) { QFAIL("nobody has switched"); });
        // The session has sent its calls before the call in inhibitors(), so their replies have already
        // arrived.
        inhibitors();
        QCoreApplication::processEvents();
        QVERIFY(!session.isActive().has_value());
    }

private:
    QProcess mLogind;
};

QTEST_GUILESS_MAIN(LogindTest)
#include "Logind_test.moc"
