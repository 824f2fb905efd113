#include "platform/bus/BusConnection.h"
#include "platform/desktop/Workspace.h"
#include "platform/power/LogindPower.h"
#include "platform/power/LogindSession.h"
#include "tests/fakes/FakeLogindInhibitors.h"
#include "tests/fakes/FakeLogindSession.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/Timeout.h"

#include <QTest>

#include <memory>
#include <optional>

namespace {

void ignore(void *, std::uint32_t, std::uint32_t, void *)
{
}

} // namespace

/// Tests sleep and user switching while the system bus is absent, silent or restarted.
class LogindWithoutBusTest : public QObject {
    Q_OBJECT

    /// Makes the calls that the pane makes when it is loaded and first shown.
    void showPane()
    {
        mPower = std::make_unique<platform::LogindPower>(mBus, Delay);
        mSession = std::make_unique<platform::LogindSession>(mBus);
        mPower->registerForSystemPower(nullptr, ignore);
        showPaneAgain();
    }

    void showPaneAgain()
    {
        mSession->addObserver(this, platform::NSWorkspaceSessionDidResignActiveNotification,
                              [this](const platform::Notification &) { ++mResigned; });
    }

    void startLogind()
    {
        mInhibiting = std::make_unique<FakeLogindInhibitors>();
        QTRY_VERIFY_WITH_TIMEOUT(mPower->holdsInhibitor(), Timeout);
        mInhibiting.reset();
        mSmall = std::make_unique<FakeLogindSession>();
        mSmall->come(true);
    }

    void endLogind()
    {
        mSmall.reset();
        mInhibiting.reset();
        QDBusConnection::disconnectFromBus(FakeLogindSession::ConnectionName);
        QDBusConnection::disconnectFromBus(FakeLogindInhibitors::ConnectionName);
    }

    void expectLogindIsHeard()
    {
        startLogind();
        QTRY_COMPARE_WITH_TIMEOUT(mSession->isActive(), std::optional<bool>(true), Timeout);
        const int before = mResigned;
        mSmall->switches(false);
        QTRY_COMPARE_WITH_TIMEOUT(mResigned, before + 1, Timeout);
    }

    PrivateBus mDaemon{"DBUS_SYSTEM_BUS_ADDRESS"};
    std::shared_ptr<platform::BusConnection> mBus;
    std::unique_ptr<platform::LogindPower> mPower;
    std::unique_ptr<platform::LogindSession> mSession;
    std::unique_ptr<FakeLogindInhibitors> mInhibiting;
    std::unique_ptr<FakeLogindSession> mSmall;
    int mResigned = 0;

private Q_SLOTS:
    void init()
    {
        qputenv("XDG_SESSION_ID", "c1");
        mBus = std::make_shared<platform::SystemBus>();
        mResigned = 0;
    }

    void cleanup()
    {
        endLogind();
        mSession.reset();
        mPower.reset();
        mBus.reset();
        mDaemon.kill();
        mDaemon.start();
    }

    void aLogindThatStartsLaterIsUsed()
    {
        showPane();
        expectLogindIsHeard();
    }

    void aBusThatStartsLaterIsUsed()
    {
        mDaemon.kill();
        showPane();
        QVERIFY(!mBus->isOpen());
        mDaemon.start();
        expectLogindIsHeard();
    }

    void aSilentBusDoesNotBlockAndIsUsedWhenItReplies()
    {
        mDaemon.stop();
        showPane();
        showPaneAgain();
        mSession->removeObserver(this, platform::NSWorkspaceSessionDidResignActiveNotification);
        showPaneAgain();
        // Only this thread can resume the bus, so a blocking call would have timed out before this line.
        mDaemon.resume();
        expectLogindIsHeard();
    }

    void aRestartedBusIsUsed()
    {
        showPane();
        expectLogindIsHeard();
        endLogind();
        mDaemon.kill();
        QTRY_VERIFY_WITH_TIMEOUT(!mPower->holdsInhibitor(), Timeout);
        mDaemon.start();
        expectLogindIsHeard();
    }
};

QTEST_GUILESS_MAIN(LogindWithoutBusTest)
#include "LogindWithoutBus_test.moc"
