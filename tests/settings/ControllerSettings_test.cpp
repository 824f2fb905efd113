#include "agent/NotificationNames.h"
#include "platform/desktop/KeyboardModifiers.h"
#include "platform/desktop/ProcessorClock.h"
#include "settings/KS7Domain.h"
#include "tests/support/PaneFixture.h"

#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QTest>

#include <map>

namespace {

constexpr std::uint64_t Megahertz = 1'000'000;

// A preferences file with one value of every property list type.
const QByteArray DomainOfEveryType = QByteArrayLiteral(R"(<?xml version="1.0" encoding="UTF-8"?>
<plist version="1.0"><dict>
<key>FriendlyNames</key><dict><key>00-11-22-33-44-55</key><string>Küche &amp; Bad</string></dict>
<key>IgnoredCams</key><dict><key>00-11-22-33-44-55</key><true/></dict>
<key>Array</key><array><integer>-1</integer><real>2.5</real><array/></array>
<key>Data</key><data>AAEC/w==</data>
<key>Date</key><date>2010-02-03T04:05:06Z</date>
<key>False</key><false/>
<key>Large</key><integer>18446744073709551615</integer>
<key>Real</key><real>0.1</real>
<key>VideoSize2</key><integer>1</integer>
</dict></plist>)");

} // namespace

/// Tests the pane's four setting controls and the posts that they send to the agent.
class ControllerSettingsTest : public QObject {
    Q_OBJECT
private:
    void agentWrites(const QString &key, const QVariant &value)
    {
        fixture->defaults->agentWrites(key, value);
    }
    void processorRunsAt(std::uint64_t hertz) { fixture->clock->hertz = hertz; }
    void choose(int index);
    void clickAndExpectPost(QCheckBox *box, const QString &name, int value);
    [[nodiscard]] int shownSize() const { return fixture->outlets().optimizeForPopUp->currentIndex(); }
    [[nodiscard]] bool popUpIsHidden() const;
    static QDir logFolder()
    {
        return QDir(QDir::homePath() + QStringLiteral("/Library/Logs/KS7_Logs/KS-7 System Preferences"));
    }
    static QStringList logFiles();

    void startPreview();

    std::unique_ptr<PaneFixture> fixture;

private Q_SLOTS:
    void init();
    void cleanup() { fixture.reset(); }

    void withNoDomainEverythingShowsItsDefault();
    void anyNumberButZeroIsOn_data();
    void anyNumberButZeroIsOn();
    void theStoredStatusMenuIsShown();
    void onlyTheSwitchSynchronizes();
    void theSwitchIsReadBetweenTheOtherSettings();
    void theStoredSizeIsSelected();
    void aFractionOfASizeIsDropped();
    void aSizeWithoutAnItemSelectsAndWritesNothing_data();
    void aSizeWithoutAnItemSelectsAndWritesNothing();
    void slowProcessorsHideThePopUp_data();
    void slowProcessorsHideThePopUp();
    void thePopUpIsNotShownAgain();
    void theSwitchesPostTheirState();
    void anAssistiveToolTurnsTheSwitches();
    void theSwitchKeepsItsStateUntilTheAgentReplies();
    void whatTheAgentHasSetIsNotPostedBack();
    void choosingASizeWritesThenSynchronizesThenPosts();
    void choosingASizeKeepsEveryOtherValue();
    void choosingASizeCreatesNoDomain();
    void aSizeThatCannotBeWrittenIsNotShown();
    void aSizeChosenElsewhereIsShown();
    void theDebugBoxNeedsOptionOrRunningLog_data();
    void theDebugBoxNeedsOptionOrRunningLog();
    void anOptionKeyThatIsKnownOnlyWithTheFocusShowsTheDebugBox();
    void theDebugBoxStaysUntilTheNextShowing();
    void theDebugBoxStartsAndEndsThePanesLogFile();
    void theAgentIsNotifiedOfDebugLoggingFirst();
    void switchingOffStopsThePreviewAndSwitchingOnDoesNot();
    void switchingOffBetweenTheReadsStopsThePreview();
    void switchingOnAndOffRebuildsTheList();
};

void ControllerSettingsTest::init()
{
    logFolder().removeRecursively();
    fixture = std::make_unique<PaneFixture>();
}

void ControllerSettingsTest::choose(int index)
{
    auto *popUp = fixture->outlets().optimizeForPopUp;
    popUp->setFocus();
    QTest::keyClick(popUp, index == 0 ? Qt::Key_Home : Qt::Key_End);
}

void ControllerSettingsTest::clickAndExpectPost(QCheckBox *box, const QString &name, int value)
{
    const int before = fixture->distributedCenter->postCount(name);
    box->click();
    QCOMPARE(fixture->distributedCenter->postCount(name), before + 1);
    const QVariantMap expected{{UserInfoKeys::Value, value}};
    QCOMPARE(fixture->distributedCenter->lastUserInfo(name), expected);
    QCOMPARE(fixture->distributedCenter->lastUserInfo(name).value(UserInfoKeys::Value).userType(),
             static_cast<int>(QMetaType::Int));
    QVERIFY(!fixture->distributedCenter->posts.back().object);
}

bool ControllerSettingsTest::popUpIsHidden() const
{
    const auto &outlets = fixture->outlets();
    // The pop-up and its caption must be hidden together.
    if (outlets.optimizeForPopUp->isHidden() != outlets.optimizeForPopUpLabel->isHidden())
        qFatal("the pop-up and its caption disagree");
    return outlets.optimizeForPopUp->isHidden();
}

QStringList ControllerSettingsTest::logFiles()
{
    return logFolder().entryList({QStringLiteral("KS-7 System Preferences *.log")}, QDir::Files);
}

void ControllerSettingsTest::withNoDomainEverythingShowsItsDefault()
{
    fixture->show();
    QVERIFY(fixture->outlets().enableKS7Checkbox->isChecked());
    QVERIFY(fixture->outlets().statusMenuCheckbox->isChecked());
    QCOMPARE(shownSize(), 1);
    QVERIFY(!fixture->outlets().debugLog->isChecked());
    QVERIFY(fixture->outlets().debugLog->isHidden());
    QVERIFY(!popUpIsHidden());
}

void ControllerSettingsTest::anyNumberButZeroIsOn_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<bool>("on");
    QTest::newRow("false") << QVariant(false) << false;
    QTest::newRow("true") << QVariant(true) << true;
    QTest::newRow("0") << QVariant(0LL) << false;
    QTest::newRow("1") << QVariant(1LL) << true;
    QTest::newRow("-3") << QVariant(-3LL) << true;
    QTest::newRow("0.25") << QVariant(0.25) << true;
}

void ControllerSettingsTest::anyNumberButZeroIsOn()
{
    QFETCH(QVariant, stored);
    QFETCH(bool, on);
    agentWrites(PreferenceKeys::KS7On, stored);
    fixture->load();
    QCOMPARE(fixture->outlets().enableKS7Checkbox->isChecked(), on);
    QCOMPARE(fixture->controller().isKS7On(), on);
}

void ControllerSettingsTest::theStoredStatusMenuIsShown()
{
    agentWrites(PreferenceKeys::ShowStatusMenu, false);
    fixture->load();
    QVERIFY(!fixture->outlets().statusMenuCheckbox->isChecked());
}

void ControllerSettingsTest::onlyTheSwitchSynchronizes()
{
    fixture->show();
    fixture->takeJournal();
    auto &pane = fixture->controller();
    pane.setupStatusMenuCheckbox();
    pane.setupOptimizePopup();
    pane.setupDebugButton();
    QCOMPARE(fixture->takeJournal(), QStringList());
    pane.isKS7On();
    QCOMPARE(fixture->takeJournal(), QStringList{QStringLiteral("synchronize")});
}

// Only reading the on/off switch calls synchronize(). The agent's writes during this call show which settings
// the pane has read before and after it.
void ControllerSettingsTest::theSwitchIsReadBetweenTheOtherSettings()
{
    fixture->defaults->duringSynchronize = [this] {
        agentWrites(PreferenceKeys::ShowStatusMenu, false);
        agentWrites(PreferenceKeys::KS7On, false);
        agentWrites(PreferenceKeys::VideoSize2, 0);
    };
    fixture->load();
    QVERIFY(fixture->outlets().statusMenuCheckbox->isChecked());
    QVERIFY(!fixture->outlets().enableKS7Checkbox->isChecked());
    QCOMPARE(shownSize(), 0);
}

void ControllerSettingsTest::theStoredSizeIsSelected()
{
    agentWrites(PreferenceKeys::VideoSize2, 0);
    fixture->load();
    QCOMPARE(shownSize(), 0);
}

void ControllerSettingsTest::aFractionOfASizeIsDropped()
{
    agentWrites(PreferenceKeys::VideoSize2, 0.9);
    QCOMPARE(KS7SettingsWindowController::sizeIndexFromKS7Prefs(*fixture->defaults), 0);
}

void ControllerSettingsTest::aSizeWithoutAnItemSelectsAndWritesNothing_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::newRow("one too many") << QVariant(2LL);
    QTest::newRow("negative") << QVariant(-1LL);
    QTest::newRow("far") << QVariant(2147483647LL);
    QTest::newRow("beyond any integer") << QVariant(1e300);
}

void ControllerSettingsTest::aSizeWithoutAnItemSelectsAndWritesNothing()
{
    QFETCH(QVariant, stored);
    agentWrites(PreferenceKeys::VideoSize2, stored);
    fixture->show();
    QCOMPARE(shownSize(), -1);
    QVERIFY(!popUpIsHidden());
    QCOMPARE(fixture->defaults->stored(PreferenceKeys::VideoSize2), stored);
    QCOMPARE(fixture->journal->count(QStringLiteral("write domain")), 0);
}

void ControllerSettingsTest::slowProcessorsHideThePopUp_data()
{
    QTest::addColumn<quint64>("hertz");
    QTest::addColumn<int>("megahertz");
    QTest::addColumn<bool>("hidden");
    QTest::newRow("unreadable") << quint64(0) << 0 << true;
    QTest::newRow("1001 MHz") << quint64(1001 * Megahertz) << 1001 << true;
    QTest::newRow("just below 1002 MHz") << quint64(1002 * Megahertz - 1) << 1001 << true;
    QTest::newRow("1002 MHz") << quint64(1002 * Megahertz) << 1002 << false;
    QTest::newRow("5 GHz") << quint64(5000 * Megahertz) << 5000 << false;
}

void ControllerSettingsTest::slowProcessorsHideThePopUp()
{
    QFETCH(quint64, hertz);
    QFETCH(int, megahertz);
    QFETCH(bool, hidden);
    processorRunsAt(hertz);
    agentWrites(PreferenceKeys::VideoSize2, 1);
    fixture->show();
    QCOMPARE(KS7SettingsWindowController::getCPUMhz(*fixture->clock), megahertz);
    QCOMPARE(KS7SettingsWindowController::forceQVGA(*fixture->clock), hidden);
    QCOMPARE(popUpIsHidden(), hidden);
    // While the pop-up is hidden, the pane does not set it to the stored size. It keeps item 0, which the
    // interface file selects.
    QCOMPARE(shownSize(), hidden ? 0 : 1);
}

void ControllerSettingsTest::thePopUpIsNotShownAgain()
{
    processorRunsAt(0);
    fixture->show();
    processorRunsAt(3000 * Megahertz);
    fixture->agentPosts(NotificationNames::ChangedOptimizedPreference);
    QVERIFY(popUpIsHidden());
}

void ControllerSettingsTest::theSwitchesPostTheirState()
{
    fixture->keyboard->held = platform::KeyboardModifiers::OptionKey;
    fixture->show();
    const auto &outlets = fixture->outlets();
    clickAndExpectPost(outlets.enableKS7Checkbox, NotificationNames::ToggleEnabled, 0);
    clickAndExpectPost(outlets.enableKS7Checkbox, NotificationNames::ToggleEnabled, 1);
    clickAndExpectPost(outlets.statusMenuCheckbox, NotificationNames::ToggleStatusMenu, 0);
    clickAndExpectPost(outlets.debugLog, NotificationNames::ToggleDebugLog, 1);
    clickAndExpectPost(outlets.debugLog, NotificationNames::ToggleDebugLog, 0);
    QCOMPARE(fixture->journal->count(QStringLiteral("write domain")), 0);
}

void ControllerSettingsTest::anAssistiveToolTurnsTheSwitches()
{
    fixture->keyboard->held = platform::KeyboardModifiers::OptionKey;
    fixture->show();
    const auto &outlets = fixture->outlets();
    const std::map<QCheckBox *, QString> switches{
        {outlets.enableKS7Checkbox, NotificationNames::ToggleEnabled},
        {outlets.statusMenuCheckbox, NotificationNames::ToggleStatusMenu},
        {outlets.debugLog, NotificationNames::ToggleDebugLog}};
    for (const auto &[box, notification] : switches) {
        const int before = fixture->distributedCenter->postCount(notification);
        const bool wasChecked = box->isChecked();
        QAccessible::queryAccessibleInterface(box)->actionInterface()->doAction(
            QAccessibleActionInterface::toggleAction());
        QCOMPARE(box->isChecked(), !wasChecked);
        QCOMPARE(fixture->distributedCenter->postCount(notification), before + 1);
    }
    QCOMPARE(logFiles().size(), 1);
}

void ControllerSettingsTest::theSwitchKeepsItsStateUntilTheAgentReplies()
{
    fixture->show();
    fixture->outlets().enableKS7Checkbox->click();
    QVERIFY(!fixture->outlets().enableKS7Checkbox->isChecked());
    QVERIFY(fixture->controller().isKS7On());
    // The agent has refused the change, so the preference KS7On is still true.
    fixture->agentPosts(NotificationNames::OnOffChanged);
    QVERIFY(fixture->outlets().enableKS7Checkbox->isChecked());
}

void ControllerSettingsTest::whatTheAgentHasSetIsNotPostedBack()
{
    agentWrites(PreferenceKeys::ShowStatusMenu, true);
    fixture->show();
    agentWrites(PreferenceKeys::KS7On, false);
    fixture->agentPosts(NotificationNames::OnOffChanged);
    agentWrites(PreferenceKeys::LogToFile, true);
    fixture->hide();
    fixture->show();
    QVERIFY(fixture->outlets().statusMenuCheckbox->isChecked());
    QVERIFY(!fixture->outlets().enableKS7Checkbox->isChecked());
    QVERIFY(fixture->outlets().debugLog->isChecked());
    for (const auto &name : {NotificationNames::ToggleEnabled, NotificationNames::ToggleStatusMenu,
                             NotificationNames::ToggleDebugLog})
        QCOMPARE(fixture->distributedCenter->postCount(name), 0);
}

void ControllerSettingsTest::choosingASizeWritesThenSynchronizesThenPosts()
{
    agentWrites(PreferenceKeys::VideoSize2, 1);
    fixture->show();
    QVariant seenByTheAgent;
    fixture->distributedCenter->addObserver(
        this, NotificationNames::ChangedOptimizedPreference, [&](const platform::Notification &notification) {
            seenByTheAgent = fixture->defaults->stored(PreferenceKeys::VideoSize2);
            QVERIFY(notification.userInfo.isEmpty());
        });
    fixture->takeJournal();
    choose(0);
    const QStringList expected{QStringLiteral("write domain"), QStringLiteral("synchronize"),
                               QStringLiteral("post KS7ChangedOptimizedPreference")};
    QCOMPARE(fixture->takeJournal(), expected);
    QCOMPARE(seenByTheAgent, QVariant(0LL));
    QCOMPARE(shownSize(), 0);
}

void ControllerSettingsTest::choosingASizeKeepsEveryOtherValue()
{
    auto expected = platform::PropertyListDictionary::fromXml(DomainOfEveryType);
    QVERIFY(expected);
    fixture->defaults->onDisk = expected;
    fixture->show();
    choose(0);
    expected->setValue(PreferenceKeys::VideoSize2, 0);
    QCOMPARE(fixture->defaults->onDisk->toXml(), expected->toXml());
}

void ControllerSettingsTest::choosingASizeCreatesNoDomain()
{
    fixture->show();
    choose(0);
    QVERIFY(!fixture->defaults->onDisk);
    // The pane observes its own post and then shows the stored value. No value is stored, so it shows the
    // default.
    QCOMPARE(shownSize(), 1);
    QCOMPARE(fixture->distributedCenter->postCount(NotificationNames::ChangedOptimizedPreference), 1);
}

void ControllerSettingsTest::aSizeThatCannotBeWrittenIsNotShown()
{
    agentWrites(PreferenceKeys::VideoSize2, 1);
    fixture->show();
    // The pane observes its own notification KS7ChangedOptimizedPreference and then shows the stored size.
    // Remove this observer, so that only the failed write can make the pane show the stored size again.
    fixture->distributedCenter->removeObserver(&fixture->controller(),
                                               NotificationNames::ChangedOptimizedPreference);
    fixture->defaults->diskIsFull = true;
    choose(0);
    QCOMPARE(shownSize(), 1);
    QCOMPARE(fixture->distributedCenter->postCount(NotificationNames::ChangedOptimizedPreference), 1);
    QCOMPARE(fixture->defaults->stored(PreferenceKeys::VideoSize2), QVariant(1LL));
}

void ControllerSettingsTest::aSizeChosenElsewhereIsShown()
{
    agentWrites(PreferenceKeys::VideoSize2, 1);
    fixture->show();
    agentWrites(PreferenceKeys::VideoSize2, 0);
    fixture->agentPosts(NotificationNames::ChangedOptimizedPreference);
    QCOMPARE(shownSize(), 0);
    QCOMPARE(fixture->journal->count(QStringLiteral("write domain")), 0);
}

void ControllerSettingsTest::theDebugBoxNeedsOptionOrRunningLog_data()
{
    QTest::addColumn<quint32>("keys");
    QTest::addColumn<bool>("logging");
    QTest::addColumn<bool>("shown");
    QTest::newRow("nothing held, off") << quint32(0) << false << false;
    QTest::newRow("other keys held, off") << quint32(0xFFFFF7FF) << false << false;
    QTest::newRow("Option held, off") << quint32(0x0800) << false << true;
    QTest::newRow("nothing held, on") << quint32(0) << true << true;
    QTest::newRow("Option and Shift held, on") << quint32(0x0A00) << true << true;
}

void ControllerSettingsTest::theDebugBoxNeedsOptionOrRunningLog()
{
    QFETCH(quint32, keys);
    QFETCH(bool, logging);
    QFETCH(bool, shown);
    fixture->keyboard->held = keys;
    agentWrites(PreferenceKeys::LogToFile, logging);
    fixture->show();
    QCOMPARE(!fixture->outlets().debugLog->isHidden(), shown);
    QCOMPARE(fixture->outlets().debugLog->isChecked(), logging);
}

void ControllerSettingsTest::anOptionKeyThatIsKnownOnlyWithTheFocusShowsTheDebugBox()
{
    fixture->show();
    const auto &box = *fixture->outlets().debugLog;
    QVERIFY(box.isHidden());
    fixture->keyboard->onFocus();
    QVERIFY2(box.isHidden(), "Option was released before the focus came");
    fixture->keyboard->held = platform::KeyboardModifiers::OptionKey;
    fixture->keyboard->onFocus();
    QVERIFY(!box.isHidden());
    fixture->keyboard->held = 0;
    fixture->keyboard->onFocus();
    QVERIFY2(!box.isHidden(), "it stays until the next showing");
}

void ControllerSettingsTest::theDebugBoxStaysUntilTheNextShowing()
{
    agentWrites(PreferenceKeys::LogToFile, true);
    fixture->show();
    fixture->outlets().debugLog->click();
    agentWrites(PreferenceKeys::LogToFile, false);
    QVERIFY(!fixture->outlets().debugLog->isChecked());
    QVERIFY(!fixture->outlets().debugLog->isHidden());
    fixture->hide();
    fixture->show();
    QVERIFY(fixture->outlets().debugLog->isHidden());
}

void ControllerSettingsTest::theDebugBoxStartsAndEndsThePanesLogFile()
{
    fixture->keyboard->held = platform::KeyboardModifiers::OptionKey;
    fixture->show();
    QCOMPARE(logFiles(), QStringList());
    fixture->outlets().debugLog->click();
    fixture->agentPosts(NotificationNames::USBDeviceConnected);
    QCOMPARE(logFiles().size(), 1);
    QFile log(logFolder().filePath(logFiles().constLast()));
    QVERIFY(log.open(QIODevice::ReadOnly));
    QVERIFY(log.readAll().contains("USB device connected"));
    fixture->outlets().debugLog->click();
    fixture->agentPosts(NotificationNames::USBDeviceDisconnected);
    log.seek(0);
    QVERIFY(!log.readAll().contains("USB device disconnected"));
}

void ControllerSettingsTest::theAgentIsNotifiedOfDebugLoggingFirst()
{
    fixture->keyboard->held = platform::KeyboardModifiers::OptionKey;
    fixture->show();
    QList<qsizetype> filesAtPost;
    fixture->distributedCenter->addObserver(
        this, NotificationNames::ToggleDebugLog,
        [&](const platform::Notification &) { filesAtPost.append(logFiles().size()); });
    fixture->outlets().debugLog->click();
    QCOMPARE(filesAtPost, QList<qsizetype>{0});
    QCOMPARE(logFiles().size(), 1);
}

void ControllerSettingsTest::startPreview()
{
    fixture->agent.addCamera(QStringLiteral("A"), QStringLiteral("Kitchen"), 4);
    fixture->agent.prefer(QStringLiteral("A"));
    fixture->capture->addDevice(
        QStringLiteral("com.apple.QTKit.legacydevice-KS-7 Wireless Webcam-vdig-usbv-Orvx"));
    fixture->show();
    fixture->controller().startVideo(nullptr);
    QVERIFY(fixture->controller().isStreaming());
}

// When KS7OnOffChanged is posted, the pane reads its on/off switch twice: first for the check box, then for
// the preview. Here the agent stores "off" between the two.
void ControllerSettingsTest::switchingOffBetweenTheReadsStopsThePreview()
{
    startPreview();
    int reads = 0;
    fixture->defaults->duringSynchronize = [&] {
        if (++reads == 2)
            agentWrites(PreferenceKeys::KS7On, 0);
    };
    fixture->agentPosts(NotificationNames::OnOffChanged);
    QVERIFY(fixture->outlets().enableKS7Checkbox->isChecked());
    QVERIFY(!fixture->controller().isStreaming());
}

void ControllerSettingsTest::switchingOffStopsThePreviewAndSwitchingOnDoesNot()
{
    startPreview();
    fixture->agentPosts(NotificationNames::OnOffChanged);
    QVERIFY(fixture->controller().isStreaming());
    agentWrites(PreferenceKeys::KS7On, 0);
    fixture->agentPosts(NotificationNames::OnOffChanged);
    QVERIFY(!fixture->controller().isStreaming());
    QVERIFY(!fixture->outlets().enableKS7Checkbox->isChecked());
}

void ControllerSettingsTest::switchingOnAndOffRebuildsTheList()
{
    fixture->show();
    fixture->runLoop->turn();
    fixture->takeJournal();
    fixture->agentPosts(NotificationNames::OnOffChanged);
    QVERIFY(fixture->takeRemoteCalls().contains(QStringLiteral("cameraDict")));
}

QTEST_MAIN(ControllerSettingsTest)
#include "ControllerSettings_test.moc"
