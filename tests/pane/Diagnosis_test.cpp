#include "pane/Diagnosis.h"

#include "agent/RemoteNames.h"
#include "platform/desktop/Bundle.h"
#include "tests/fakes/FakeAgent.h"
#include "tests/fakes/FakeAgentProxyFactory.h"
#include "tests/fakes/FakeConnectionRegistry.h"
#include "tests/fakes/RecordingNotificationCenter.h"

#include <QTest>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>
#include <functional>
#include <memory>
#include <vector>

namespace {

const QString NoAnswer = QStringLiteral("unknown, no answer from the bus");

/// A bus that accepts connections and never replies. The kernel accepts them, because nobody calls accept()
/// before the test counts them.
class SilentBus {
public:
    SilentBus(const char *addressVariable, const QByteArray &name)
    {
        const QByteArray path = qgetenv("XDG_RUNTIME_DIR") + '/' + name;
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::strncpy(address.sun_path, path.constData(), sizeof address.sun_path - 1);
        ::unlink(path.constData());
        mSocket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
        mListens = ::bind(mSocket, reinterpret_cast<sockaddr *>(&address), sizeof address) == 0
            && ::listen(mSocket, SOMAXCONN) == 0;
        const QByteArray busAddress = "unix:path=" + path;
        qputenv(addressVariable, busAddress);
    }
    ~SilentBus()
    {
        for (const int client : mClients)
            ::close(client);
        ::close(mSocket);
    }
    SilentBus(const SilentBus &) = delete;
    SilentBus &operator=(const SilentBus &) = delete;

    [[nodiscard]] bool listens() const { return mListens; }
    /// Returns the number of connections since the bus was created.
    int connections()
    {
        for (int client = ::accept(mSocket, nullptr, nullptr); client >= 0;
             client = ::accept(mSocket, nullptr, nullptr))
            mClients.push_back(client);
        return static_cast<int>(mClients.size());
    }

private:
    int mSocket = -1;
    bool mListens = false;
    std::vector<int> mClients;
};

/// A bundle that tells when the report asks for the pane's version, which is its first line.
class WatchedBundle final : public platform::Bundle {
public:
    std::function<void()> asked = [] {};
    [[nodiscard]] QString pathForResource(const QString &, const QString &) const override { return {}; }
    [[nodiscard]] QVariantMap infoDictionary() const override
    {
        asked();
        return {};
    }
};

} // namespace

/// Tests the diagnosis while neither the session bus nor the system bus replies.
class DiagnosisTest : public QObject {
    Q_OBJECT

private:
    Journal mJournal = std::make_shared<QStringList>();
    FakeAgent mAgent{mJournal};
    std::shared_ptr<WatchedBundle> mBundle = std::make_shared<WatchedBundle>();
    std::unique_ptr<SilentBus> mSessionBus;
    std::unique_ptr<SilentBus> mSystemBus;

    QStringList diagnose()
    {
        platform::Services services;
        services.bundle = mBundle;
        services.connections = std::make_shared<FakeConnectionRegistry>(
            mJournal, mAgent, std::make_shared<RecordingNotificationCenter>(mJournal));
        return Diagnosis(services, std::make_shared<FakeAgentProxyFactory>(mAgent))
            .report()
            .split(QLatin1Char('\n'));
    }

private Q_SLOTS:
    void init()
    {
        mJournal->clear();
        mSessionBus = std::make_unique<SilentBus>("DBUS_SESSION_BUS_ADDRESS", "silent-session-bus");
        mSystemBus = std::make_unique<SilentBus>("DBUS_SYSTEM_BUS_ADDRESS", "silent-system-bus");
        QVERIFY(mSessionBus->listens());
        QVERIFY(mSystemBus->listens());
    }
    void cleanup()
    {
        mSessionBus.reset();
        mSystemBus.reset();
    }

    void silentBusesCountAsNoReply()
    {
        const QStringList report = diagnose();
        for (const QString &subject :
             {RemoteNames::busName(RemoteNames::AgentServer),
              RemoteNames::busName(RemoteNames::AgentServerUSB), QStringLiteral("Cameras"),
              QStringLiteral("BlueZ"), QStringLiteral("logind"), QStringLiteral("PackageKit")})
            QVERIFY2(report.contains(subject + QStringLiteral(": ") + NoAnswer), qPrintable(subject));
    }

    void aSilentBusIsWaitedForOnce()
    {
        diagnose();
        QCOMPARE(mSessionBus->connections(), 1);
        QCOMPARE(mSystemBus->connections(), 1);
        // The registry would ask the bus for the agent on a connection of its own, and wait there again.
        QVERIFY(!mJournal->contains(QStringLiteral("connect ") + RemoteNames::AgentServer));
    }

    void theNextReportDoesNotWaitForItAgain()
    {
        diagnose();
        diagnose();
        QCOMPARE(mSessionBus->connections(), 1);
        QCOMPARE(mSystemBus->connections(), 1);
    }

    void twoSilentBusesAreWaitedForTogether()
    {
        QVector<int> greeted;
        mBundle->asked = [&] { greeted = {mSessionBus->connections(), mSystemBus->connections()}; };
        diagnose();
        mBundle->asked = [] {};
        // The time limit of a bus starts with its connection. Both start before the report waits for one.
        QCOMPARE(greeted, QVector<int>({1, 1}));
    }
};

QTEST_GUILESS_MAIN(DiagnosisTest)
#include "Diagnosis_test.moc"
