#include "agent/NotificationNames.h"
#include "platform/base/RunLoop.h"
#include "platform/sheets/Sheets.h"
#include "tests/support/PaneFixture.h"
#include "widgets/Indicators.h"

#include <QAbstractEventDispatcher>
#include <QDeadlineTimer>
#include <QEvent>
#include <QLabel>
#include <QProcess>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

namespace {

/// Refuses to let a window close.
class Refusal : public QObject {
public:
    explicit Refusal(QWidget *window) { window->installEventFilter(this); }
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() != QEvent::Close)
            return false;
        event->ignore();
        return true;
    }
};

/// Replaces the fakes of the run loop and the sheets by the real services. Call it before show().
std::shared_ptr<platform::RunLoop> useRealEventLoop(PaneFixture &fixture)
{
    const auto runLoop = platform::makeQtRunLoop();
    fixture.refit = [runLoop](platform::Services &services) {
        services.runLoop = runLoop;
        services.sheets = platform::makeQtSheetPresenter();
    };
    return runLoop;
}

} // namespace

/// Tests the wait for a firmware update on a real event loop. The wait handles notifications and ends when
/// the host quits.
class FirmwareWaitTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void theWaitReceivesProgressAndEnd();
    void aCancelledQuitLeavesTheUpdateOnScreen();
    void aWaitWithoutASheetCausesNoWakeUps();
    void theWaitDoesNotKeepAHostFromEnding_data();
    void theWaitDoesNotKeepAHostFromEnding();
};

void FirmwareWaitTest::theWaitReceivesProgressAndEnd()
{
    PaneFixture fixture;
    useRealEventLoop(fixture);
    fixture.show();
    fixture.controller().installFirmware(nullptr);
    fixture.outlets().firmwareContinueButton->click();
    QList<double> seen;
    int value = 0;
    QTimer agent;
    QObject::connect(&agent, &QTimer::timeout, &agent, [&] {
        fixture.agentPosts(NotificationNames::FirmwareUpdateProgress,
                           {{UserInfoKeys::Value, ++value}, {UserInfoKeys::Total, 4}});
        seen.append(fixture.outlets().firmwareCheckingIndicator->doubleValue());
        if (value == 4) {
            agent.stop();
            fixture.agentPosts(NotificationNames::FirmwareUpdateEnded, {{UserInfoKeys::Result, 0}});
        }
    });
    agent.start(15);
    fixture.outlets().firmwareContinueButton->click();
    QCOMPARE(seen, QList<double>({0.25, 0.5, 0.75, 1.0}));
    QCOMPARE(fixture.outlets().firmwareMainText->text(), QStringLiteral("Firmware update complete."));
    fixture.outlets().firmwareContinueButton->click();
    QVERIFY(!fixture.outlets().firmwareSheet->isVisible());
}

void FirmwareWaitTest::aCancelledQuitLeavesTheUpdateOnScreen()
{
    PaneFixture fixture;
    useRealEventLoop(fixture);
    fixture.show();
    const Refusal refusal(&fixture.window);
    fixture.controller().installFirmware(nullptr);
    fixture.outlets().firmwareContinueButton->click();
    auto *sheet = fixture.outlets().firmwareSheet;
    bool wasHidden = false;
    bool refuses = false;
    const QDeadlineTimer limit(Timeout);
    QTimer happening;
    QObject::connect(&happening, &QTimer::timeout, &happening, [&] {
        if (!wasHidden) {
            QEvent quit(QEvent::Quit);
            QCoreApplication::sendEvent(qApp, &quit);
            wasHidden = !sheet->isVisible();
        } else if (sheet->isVisible() || limit.hasExpired()) {
            happening.stop();
            refuses = sheet->isVisible() && !sheet->close();
            fixture.agentPosts(NotificationNames::FirmwareUpdateEnded, {{UserInfoKeys::Result, 0}});
        }
    });
    happening.start(1);
    fixture.outlets().firmwareContinueButton->click();
    QVERIFY(wasHidden);
    QVERIFY(refuses);
    QVERIFY(sheet->isVisible());
    QCOMPARE(fixture.outlets().firmwareMainText->text(), QStringLiteral("Firmware update complete."));
}

void FirmwareWaitTest::aWaitWithoutASheetCausesNoWakeUps()
{
    PaneFixture fixture;
    const auto runLoop = useRealEventLoop(fixture);
    fixture.show();
    fixture.controller().installFirmware(nullptr);
    fixture.outlets().firmwareContinueButton->click();
    bool endedByItself = true;
    QTimer::singleShot(Timeout, &fixture.window, [&] {
        endedByItself = false;
        runLoop->wake();
    });
    const QSignalSpy sleeps(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock);
    qsizetype before = 0;
    qsizetype after = 0;
    QTimer::singleShot(50, &fixture.window, [&] { fixture.connections->killAgent(); });
    QTimer::singleShot(200, &fixture.window, [&] { before = sleeps.size(); });
    QTimer::singleShot(700, &fixture.window, [&] {
        after = sleeps.size();
        fixture.agentPosts(NotificationNames::FirmwareUpdateEnded, {{UserInfoKeys::Result, 0}});
    });
    fixture.outlets().firmwareContinueButton->click();
    QVERIFY2(endedByItself, "the agent's end did not wake the wait");
    QCOMPARE(fixture.controller().firmwareStep(), 2);
    QVERIFY(!fixture.outlets().firmwareSheet->isVisible());
    // While the sheet is hidden, the pane must sleep. The wake-ups were counted for 500 ms, in which a wait
    // in slices of 10 ms would wake up about 50 times.
    QVERIFY2(after - before < 10, qPrintable(QString::number(after - before)));
}

void FirmwareWaitTest::theWaitDoesNotKeepAHostFromEnding_data()
{
    QTest::addColumn<QString>("word");
    QTest::addColumn<int>("code");
    for (const auto *word : {"quit", "close", "quit-event", "switch-away-and-quit", "agent-dies-and-quit"})
        QTest::addRow("%s", word) << QString::fromLatin1(word) << 0;
    // An elapsed slice ends its nested event loop with code 0, which must not replace the host's exit code.
    QTest::newRow("exit") << QStringLiteral("exit") << 3;
}

void FirmwareWaitTest::theWaitDoesNotKeepAHostFromEnding()
{
    QFETCH(QString, word);
    QFETCH(int, code);
    QProcess host;
    host.start(QStringLiteral(FIRMWARE_HOST), {word});
    const bool ended = host.waitForFinished(Timeout);
    if (!ended) {
        host.kill();
        host.waitForFinished();
    }
    QVERIFY(ended);
    QCOMPARE(host.readAllStandardOutput().trimmed(), QByteArray("waited"));
    QCOMPARE(host.exitStatus(), QProcess::NormalExit);
    QCOMPARE(host.exitCode(), code);
}

QTEST_MAIN(FirmwareWaitTest)
#include "FirmwareWait_test.moc"
