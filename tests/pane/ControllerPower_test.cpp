#include "agent/NotificationNames.h"
#include "tests/support/PaneFixture.h"

#include <QPushButton>
#include <QTest>

#include <functional>
#include <utility>

namespace {

/// A power service for tests: it sends power messages and calls a hook when the pane acknowledges one.
class ObservedPower final : public platform::PowerManagement {
public:
    explicit ObservedPower(std::function<void()> allowed)
        : mAllowed(std::move(allowed))
    {
    }
    std::uint32_t registerForSystemPower(void *refcon, Callback callback) override
    {
        mSend = [refcon, callback](std::uint32_t message) { callback(refcon, 0, message, nullptr); };
        return 1;
    }
    void allowPowerChange(std::uint32_t, void *) override { mAllowed(); }
    void send(std::uint32_t message) { mSend(message); }

private:
    std::function<void()> mAllowed;
    std::function<void(std::uint32_t)> mSend;
};

} // namespace

/// Tests the pane while the machine goes to sleep and wakes up.
class ControllerPowerTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<PaneFixture> mPane;

    void showPaneWithPreview()
    {
        mPane->capture->addDevice(QStringLiteral("KS-7 Wireless Webcam"));
        mPane->agent.addCamera(QStringLiteral("00-11-22-33-44-55"), QStringLiteral("Kitchen"), 4);
        mPane->agent.prefer(QStringLiteral("00-11-22-33-44-55"));
        mPane->defaults->agentWrites(QStringLiteral("KS7On"), true);
        mPane->show();
        mPane->outlets().startButton->click();
        QVERIFY(mPane->controller().isStreaming());
        mPane->takeJournal();
    }
    static void *token(std::uintptr_t number) { return reinterpret_cast<void *>(number); }

private Q_SLOTS:
    void init()
    {
        mPane = std::make_unique<PaneFixture>();
        root_port = 0;
        gMessageArgument = nullptr;
    }
    void cleanup() { mPane.reset(); }

    void theHookIsInstalledOnceAndNeverRemoved()
    {
        mPane->show();
        mPane->hide();
        mPane->show();
        QCOMPARE(mPane->power->registrations, 1);
        QCOMPARE(root_port, std::uint32_t(7));
    }

    void aQueryIsAllowedAtOnceAndStopsNothing()
    {
        showPaneWithPreview();
        mPane->power->send(platform::kIOMessageCanSystemSleep, token(11));
        QCOMPARE(mPane->power->allowed, std::vector<void *>{token(11)});
        QCOMPARE(mPane->takeJournal(), QStringList{QStringLiteral("allow power change 7")});
        QVERIFY(mPane->controller().isStreaming());
        QCOMPARE(gMessageArgument, nullptr);
    }

    void sleepIsAcknowledgedAfterThePreviewHasStoppedAndTheListIsRead()
    {
        showPaneWithPreview();
        mPane->power->send(platform::kIOMessageSystemWillSleep, token(22));
        QVERIFY(!mPane->controller().isStreaming());
        QVERIFY(!mPane->controller().hasLevelsTimer());
        QCOMPARE(mPane->localCenter->postCount(NotificationNames::GoingToSleep), 1);
        QCOMPARE(mPane->power->allowed, std::vector<void *>{token(22)});
        const auto journal = mPane->takeJournal();
        const auto stopped = journal.indexOf(QStringLiteral("stop session"));
        const auto read = journal.indexOf(QStringLiteral("remote cameraDict"));
        QVERIFY(stopped >= 0);
        QVERIFY(stopped < read);
        QCOMPARE(journal.count(QStringLiteral("remote cameraDict")), 1);
        QCOMPARE(journal.last(), QStringLiteral("allow power change 7"));
    }

    void theSleepIsPostedWithoutObjectAndUserInfo()
    {
        mPane->load();
        mPane->localCenter->posts.clear();
        mPane->power->send(platform::kIOMessageSystemWillSleep, token(22));
        QCOMPARE(mPane->localCenter->posts.size(), std::size_t(1));
        const auto &post = mPane->localCenter->posts.front();
        QCOMPARE(post.name, QStringLiteral("GoingToSleep"));
        QCOMPARE(post.object, nullptr);
        QCOMPARE(post.userInfo, QVariantMap());
    }

    void theMessagesHaveTheSystemsNumbers()
    {
        showPaneWithPreview();
        mPane->power->send(0xE0000270, token(1));
        QCOMPARE(mPane->power->allowed, std::vector<void *>{token(1)});
        QVERIFY(mPane->controller().isStreaming());
        mPane->power->send(0xE0000300, token(2));
        QVERIFY(mPane->controller().isStreaming());
        mPane->power->send(0xE0000280, token(3));
        QCOMPARE(mPane->power->allowed, (std::vector<void *>{token(1), token(3)}));
        QVERIFY(!mPane->controller().isStreaming());
    }

    void theLogRecordsTheSleep()
    {
        mPane->keepLog();
        mPane->show();
        mPane->takeLog();
        mPane->power->send(platform::kIOMessageSystemWillSleep, token(1));
        QCOMPARE(mPane->takeLog(),
                 QStringList({QStringLiteral("Sleeping: Got sleep notification. Need to stop streaming"),
                              QStringLiteral("cameraStatusChanged"),
                              QStringLiteral("Sleeping: Calling IOAllowPowerChange")}));
        mPane->power->send(platform::kIOMessageSystemHasPoweredOn, nullptr);
        QCOMPARE(mPane->takeLog(), QStringList());
    }

    void everyLineIsLoggedBeforeTheSleepIsAllowed()
    {
        QStringList loggedBefore;
        const auto power =
            std::make_shared<ObservedPower>([this, &loggedBefore] { loggedBefore = mPane->takeLog(); });
        mPane->refit = [power](platform::Services &services) { services.power = power; };
        mPane->keepLog();
        mPane->show();
        mPane->takeLog();
        power->send(platform::kIOMessageSystemWillSleep);
        QCOMPARE(loggedBefore.value(0),
                 QStringLiteral("Sleeping: Got sleep notification. Need to stop streaming"));
        QCOMPARE(loggedBefore.last(), QStringLiteral("Sleeping: Calling IOAllowPowerChange"));
        QCOMPARE(mPane->takeLog(), QStringList());
    }

    void theLinkStaysOpenAcrossSleep()
    {
        showPaneWithPreview();
        mPane->power->send(platform::kIOMessageSystemWillSleep, token(22));
        QVERIFY(mPane->controller().isConnected());
        mPane->takeJournal();
        mPane->power->send(platform::kIOMessageSystemHasPoweredOn, token(23));
        QVERIFY(mPane->takeJournal().isEmpty());
        QVERIFY(mPane->controller().isConnected());
        QVERIFY(!mPane->controller().isStreaming());
        QCOMPARE(mPane->power->allowed.size(), std::size_t(1));
    }

    void sleepWithoutAPreviewIsAcknowledgedToo()
    {
        mPane->load();
        mPane->power->send(platform::kIOMessageSystemWillSleep, token(5));
        QCOMPARE(mPane->power->allowed, std::vector<void *>{token(5)});
    }

    void everyMessageIsAcknowledgedWithItsOwnArgument()
    {
        mPane->show();
        mPane->power->send(platform::kIOMessageSystemWillSleep, token(1));
        mPane->power->send(platform::kIOMessageCanSystemSleep, token(2));
        mPane->power->send(platform::kIOMessageSystemWillSleep, token(3));
        QCOMPARE(mPane->power->allowed, (std::vector<void *>{token(1), token(2), token(3)}));
        QCOMPARE(gMessageArgument, token(3));
    }

    void otherMessagesAreIgnored_data()
    {
        QTest::addColumn<std::uint32_t>("message");
        QTest::newRow("zero") << std::uint32_t(0);
        QTest::newRow("will not sleep") << std::uint32_t(0xE0000290);
        QTest::newRow("will power on") << std::uint32_t(0xE0000320);
        QTest::newRow("largest") << std::uint32_t(0xFFFFFFFF);
    }
    void otherMessagesAreIgnored()
    {
        QFETCH(std::uint32_t, message);
        showPaneWithPreview();
        mPane->power->send(message, token(9));
        QVERIFY(mPane->takeJournal().isEmpty());
        QVERIFY(mPane->controller().isStreaming());
        QCOMPARE(gMessageArgument, nullptr);
    }

    void anyCodeInTheProcessMayPostTheSleep()
    {
        showPaneWithPreview();
        mPane->localCenter->deliver(NotificationNames::GoingToSleep);
        QVERIFY(!mPane->controller().isStreaming());
        QVERIFY(mPane->takeJournal().contains(QStringLiteral("remote cameraDict")));
        QVERIFY(mPane->power->allowed.empty());
    }
};

QTEST_MAIN(ControllerPowerTest)
#include "ControllerPower_test.moc"
