#include "agent/NotificationNames.h"
#include "cameras/KS7AnimatingStatusTableView.h"
#include "platform/sheets/Sheets.h"
#include "settings/KS7Domain.h"
#include "tests/support/PaneFixture.h"

#include <QAction>
#include <QCheckBox>
#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QToolButton>

namespace {

const auto Kitchen = QStringLiteral("00-11-22-33-44-55");
const auto Desk = QStringLiteral("00-11-22-33-44-66");

} // namespace

/// Tests the properties sheet, which shows and changes a camera's name.
class ControllerPropertiesTest : public QObject {
    Q_OBJECT
private:
    void showPaneWithTwoCameras();
    void openSheet() { fixture->controller().showCameraProperties(nullptr); }
    void typeName(const QString &name);
    void pressButton(const char *name) { sheet()->findChild<QPushButton *>(QLatin1String(name))->click(); }
    [[nodiscard]] platform::Sheet *sheet() const { return fixture->outlets().propertiesSheet; }
    [[nodiscard]] bool sheetIsUp() const { return fixture->sheets->isUp(sheet()); }
    [[nodiscard]] QString shownName() const { return fixture->outlets().cameraNameText->text(); }
    [[nodiscard]] QString shownID() const { return fixture->outlets().cameraIDText->text(); }

    std::unique_ptr<PaneFixture> fixture;

private Q_SLOTS:
    void init() { fixture = std::make_unique<PaneFixture>(); }
    void cleanup() { fixture.reset(); }

    void theSheetShowsTheSelectedCamera();
    void theMenuOpensTheSheet();
    void aDoubleClickOpensTheSheet();
    void withoutASelectionTheSheetKeepsItsTexts();
    void okWithoutASelectionKeepsTheSheetOpen();
    void okValidatesTheNameThenRenames();
    void aRejectedNameIsDiscarded();
    void anyNameIsSentUnchanged_data();
    void anyNameIsSentUnchanged();
    void cancelStoresNothing();
    void aClickOnTheIgnoreBoxIsDiscardedWithTheSheet();
    void theIgnoreBoxStoresNothing();
    void aDeadAgentLetsTheSheetClose();
    void returnIsOkAndEscapeIsCancel();
    void returnOnCancelCancels();
    void okRenamesTheCameraThatIsSelectedAtThatMoment();
    void theNameHasTheFocusAndIsSelected();
    void theIDCanBeCopiedAndNotChanged();
    void theIDIsShownWithoutAFrame();
    void anEndedSheetTakesTheFocusAndHides();
};

void ControllerPropertiesTest::showPaneWithTwoCameras()
{
    fixture->agent.addCamera(Kitchen, QStringLiteral("Kitchen"), 1, QStringLiteral("4455"));
    fixture->agent.addCamera(Desk, QStringLiteral("Desk"), 0, QStringLiteral("4466"));
    fixture->agent.prefer(Kitchen);
    fixture->show();
    fixture->takeJournal();
}

void ControllerPropertiesTest::typeName(const QString &name)
{
    auto *field = fixture->outlets().cameraNameText;
    field->selectAll();
    field->insert(name);
}

void ControllerPropertiesTest::theSheetShowsTheSelectedCamera()
{
    showPaneWithTwoCameras();
    openSheet();
    QVERIFY(sheetIsUp());
    QCOMPARE(shownName(), QStringLiteral("Kitchen"));
    QCOMPARE(shownID(), QStringLiteral("4455"));
    QVERIFY(!fixture->outlets().ignoreCheckbox->isChecked());
    QCOMPARE(fixture->sheets->windowOf(sheet()), &fixture->window);
}

void ControllerPropertiesTest::theMenuOpensTheSheet()
{
    showPaneWithTwoCameras();
    const auto actions = fixture->outlets().pulldownMenu->menu()->actions();
    const auto item = std::find_if(actions.begin(), actions.end(), [](const QAction *action) {
        return action->text() == QStringLiteral("Properties…");
    });
    QVERIFY(item != actions.end());
    (*item)->trigger();
    QVERIFY(sheetIsUp());
}

void ControllerPropertiesTest::aDoubleClickOpensTheSheet()
{
    showPaneWithTwoCameras();
    fixture->controller().doubleClickCamera(fixture->outlets().cameraListTable);
    QVERIFY(sheetIsUp());
}

void ControllerPropertiesTest::withoutASelectionTheSheetKeepsItsTexts()
{
    showPaneWithTwoCameras();
    openSheet();
    fixture->outlets().ignoreCheckbox->click();
    pressButton("propertiesCancelButton");
    fixture->agent.cameraDict.clear();
    fixture->agent.sorted.clear();
    fixture->agent.indexOfPreferred = NoPreferredCamera;
    fixture->controller().cameraStatusChanged();
    openSheet();
    QVERIFY(sheetIsUp());
    QCOMPARE(shownName(), QStringLiteral("Kitchen"));
    QCOMPARE(shownID(), QStringLiteral("4455"));
    QVERIFY(fixture->outlets().ignoreCheckbox->isChecked());
}

void ControllerPropertiesTest::okWithoutASelectionKeepsTheSheetOpen()
{
    fixture->show();
    openSheet();
    QCOMPARE(shownName(), QString());
    fixture->takeJournal();
    pressButton("propertiesOkayButton");
    QVERIFY(sheetIsUp());
    QCOMPARE(fixture->takeRemoteCalls(), QStringList());
    pressButton("propertiesCancelButton");
    QVERIFY(!sheetIsUp());
}

void ControllerPropertiesTest::okValidatesTheNameThenRenames()
{
    showPaneWithTwoCameras();
    openSheet();
    typeName(QStringLiteral("Hall"));
    fixture->takeJournal();
    pressButton("propertiesOkayButton");
    const QStringList expected{QStringLiteral("remote validateName Hall"),
                               QStringLiteral("remote setName Hall ") + Kitchen,
                               QStringLiteral("end ") + sheet()->objectName()};
    QCOMPARE(fixture->takeJournal(), expected);
    QVERIFY(!sheetIsUp());
}

void ControllerPropertiesTest::aRejectedNameIsDiscarded()
{
    showPaneWithTwoCameras();
    fixture->agent.acceptsNames = false;
    openSheet();
    typeName(QString());
    fixture->takeJournal();
    pressButton("propertiesOkayButton");
    QVERIFY(!sheetIsUp());
    QCOMPARE(fixture->takeRemoteCalls().filter(QStringLiteral("setName")), QStringList());
    QVERIFY(fixture->sheets->alertTitles.isEmpty());
}

void ControllerPropertiesTest::anyNameIsSentUnchanged_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("format") << QStringLiteral("%@ %n %1 %d");
    QTest::newRow("markup") << QStringLiteral("<b>Küche</b> & Bad");
    QTest::newRow("other planes") << QStringLiteral("📷 ١٢٣");
    QTest::newRow("long") << QString(5000, QLatin1Char('x'));
}

void ControllerPropertiesTest::anyNameIsSentUnchanged()
{
    QFETCH(QString, name);
    showPaneWithTwoCameras();
    openSheet();
    typeName(name);
    fixture->takeJournal();
    pressButton("propertiesOkayButton");
    QVERIFY(fixture->takeRemoteCalls().contains(QStringLiteral("setName %1 %2").arg(name, Kitchen)));
}

void ControllerPropertiesTest::cancelStoresNothing()
{
    showPaneWithTwoCameras();
    openSheet();
    typeName(QStringLiteral("Hall"));
    fixture->takeJournal();
    pressButton("propertiesCancelButton");
    QVERIFY(!sheetIsUp());
    QCOMPARE(fixture->takeRemoteCalls(), QStringList());
}

void ControllerPropertiesTest::aClickOnTheIgnoreBoxIsDiscardedWithTheSheet()
{
    // A camera in the list never counts as ignored, even if the preference "IgnoredCams" contains its
    // address.
    fixture->defaults->agentWrites(PreferenceKeys::IgnoredCams, QVariantMap{{Kitchen, true}});
    showPaneWithTwoCameras();
    auto *box = fixture->outlets().ignoreCheckbox;
    for (const char *button : {"propertiesCancelButton", "propertiesOkayButton"}) {
        openSheet();
        QVERIFY(!box->isChecked());
        box->click();
        QVERIFY(box->isChecked());
        pressButton(button);
    }
    openSheet();
    QVERIFY(!box->isChecked());
}

void ControllerPropertiesTest::theIgnoreBoxStoresNothing()
{
    fixture->defaults->agentWrites(PreferenceKeys::IgnoredCams, QVariantMap{{Desk, true}});
    const QVariant before = fixture->defaults->stored(PreferenceKeys::IgnoredCams);
    showPaneWithTwoCameras();
    openSheet();
    fixture->outlets().ignoreCheckbox->click();
    pressButton("propertiesOkayButton");
    QCOMPARE(fixture->defaults->stored(PreferenceKeys::IgnoredCams), before);
    const auto journal = fixture->takeJournal();
    QVERIFY(!journal.contains(QStringLiteral("write domain")));
    QCOMPARE(journal.filter(QStringLiteral("setIgnore")), QStringList());
}

void ControllerPropertiesTest::aDeadAgentLetsTheSheetClose()
{
    showPaneWithTwoCameras();
    openSheet();
    fixture->connections->killAgent();
    fixture->runLoop->turn();
    // The agent's death has emptied the list, so no camera is selected. OK then leaves the sheet open.
    pressButton("propertiesOkayButton");
    QVERIFY(sheetIsUp());
    pressButton("propertiesCancelButton");
    QVERIFY(!sheetIsUp());
}

void ControllerPropertiesTest::returnIsOkAndEscapeIsCancel()
{
    showPaneWithTwoCameras();
    openSheet();
    typeName(QStringLiteral("Hall"));
    QTest::keyClick(fixture->outlets().cameraNameText, Qt::Key_Return);
    QVERIFY(!sheetIsUp());
    QVERIFY(fixture->takeRemoteCalls().contains(QStringLiteral("setName Hall ") + Kitchen));
    openSheet();
    QTest::keyClick(fixture->outlets().cameraNameText, Qt::Key_Escape);
    QVERIFY(!sheetIsUp());
    QCOMPARE(fixture->takeRemoteCalls().filter(QStringLiteral("setName")), QStringList());
}

void ControllerPropertiesTest::returnOnCancelCancels()
{
    showPaneWithTwoCameras();
    openSheet();
    typeName(QStringLiteral("Hall"));
    fixture->takeJournal();
    auto *cancel = sheet()->findChild<QPushButton *>(QStringLiteral("propertiesCancelButton"));
    cancel->setFocus(Qt::TabFocusReason);
    QTest::keyClick(cancel, Qt::Key_Return);
    QVERIFY(!sheetIsUp());
    QCOMPARE(fixture->takeRemoteCalls(), QStringList());
}

void ControllerPropertiesTest::okRenamesTheCameraThatIsSelectedAtThatMoment()
{
    // OK renames the camera that is selected at that moment. A changed selection does not update the open
    // sheet's texts.
    showPaneWithTwoCameras();
    openSheet();
    fixture->agent.prefer(Desk);
    fixture->agentPosts(NotificationNames::PreferredCameraChanged);
    QVERIFY(sheetIsUp());
    QCOMPARE(shownName(), QStringLiteral("Kitchen"));
    QCOMPARE(shownID(), QStringLiteral("4455"));
    QCOMPARE(fixture->controller().selectedCamAddress(), Desk);
    fixture->takeJournal();
    pressButton("propertiesOkayButton");
    QVERIFY(!sheetIsUp());
    QCOMPARE(
        fixture->takeRemoteCalls(),
        (QStringList{QStringLiteral("validateName Kitchen"), QStringLiteral("setName Kitchen ") + Desk}));
}

void ControllerPropertiesTest::theNameHasTheFocusAndIsSelected()
{
    showPaneWithTwoCameras();
    for (int time = 0; time < 2; ++time) {
        openSheet();
        QCOMPARE(sheet()->focusWidget(), static_cast<QWidget *>(fixture->outlets().cameraNameText));
        QCOMPARE(fixture->outlets().cameraNameText->selectedText(), QStringLiteral("Kitchen"));
        pressButton("propertiesCancelButton");
    }
}

void ControllerPropertiesTest::theIDCanBeCopiedAndNotChanged()
{
    showPaneWithTwoCameras();
    openSheet();
    auto *field = fixture->outlets().cameraIDText;
    field->setFocus();
    QTest::keyClicks(field, QStringLiteral("9"));
    QCOMPARE(shownID(), QStringLiteral("4455"));
    QTest::keySequence(field, QKeySequence::SelectAll);
    QTest::keySequence(field, QKeySequence::Copy);
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("4455"));
}

void ControllerPropertiesTest::theIDIsShownWithoutAFrame()
{
    showPaneWithTwoCameras();
    const auto *field = fixture->outlets().cameraIDText;
    QVERIFY(!field->hasFrame());
    QCOMPARE(field->palette().color(QPalette::Base).alpha(), 0);
    QCOMPARE(field->palette().color(QPalette::Text), sheet()->palette().color(QPalette::Text));
}

void ControllerPropertiesTest::anEndedSheetTakesTheFocusAndHides()
{
    showPaneWithTwoCameras();
    openSheet();
    fixture->controller().sheetDidEnd(sheet(), 42, this);
    QVERIFY(sheet()->isHidden());
    QCOMPARE(sheet()->focusWidget(), static_cast<QWidget *>(sheet()));
}

QTEST_MAIN(ControllerPropertiesTest)
#include "ControllerProperties_test.moc"
