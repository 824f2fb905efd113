#include "agent/NotificationNames.h"
#include "cameras/KS7AnimatingStatusTableView.h"
#include "tests/support/ActiveWindow.h"
#include "tests/support/AssistivePrograms.h"
#include "tests/support/PaneFixture.h"

#include <QAccessible>
#include <QTest>

namespace Names = NotificationNames;

namespace {

/// The events sent to assistive programs, in order, such as "name 1" for a new name of child 1.
QStringList told;

void hear(QAccessibleEvent *event)
{
    if (const QString news = AssistivePrograms::announcementIn(event); !news.isNull())
        told.append(QStringLiteral("news ") + news);
    auto *source = event->accessibleInterface();
    auto *cell = source ? source->tableCellInterface() : nullptr;
    if (!cell)
        return;
    const int row = cell->rowIndex();
    if (event->type() == QAccessible::NameChanged)
        told.append(QStringLiteral("name %1").arg(row));
    if (event->type() == QAccessible::Selection)
        told.append(QStringLiteral("selection %1").arg(row));
    if (event->type() == QAccessible::SelectionRemove)
        told.append(QStringLiteral("deselection %1").arg(row));
    if (event->type() == QAccessible::Focus)
        told.append(QStringLiteral("focus %1").arg(row));
    if (event->type() == QAccessible::ObjectCreated)
        told.append(QStringLiteral("creation %1").arg(row));
    // Qt 6.11 sends another event when it deletes the interface of a removed row.
    if (event->type() == QAccessible::ObjectDestroyed && source->isValid())
        told.append(QStringLiteral("destruction %1").arg(row));
}

} // namespace

/// Tests the camera table through its accessible interface.
class CameraTableAccessibleTest : public QObject {
    Q_OBJECT

    std::unique_ptr<PaneFixture> mFixture;
    AssistivePrograms mAssistivePrograms;

    FakeAgent &agent() { return mFixture->agent; }
    KS7AnimatingStatusTableView &table() { return *mFixture->outlets().cameraListTable; }
    QAccessibleInterface *accessible() { return QAccessible::queryAccessibleInterface(&table()); }

    void showThreeCameras()
    {
        agent().addCamera(QStringLiteral("a"), QStringLiteral("Kitchen"), 4);
        agent().addCamera(QStringLiteral("b"), QStringLiteral("Desk"), 1);
        agent().addCamera(QStringLiteral("c"), QStringLiteral("Attic"), 0);
        agent().prefer(QStringLiteral("a"));
        mFixture->show();
        mFixture->runLoop->turn();
        mFixture->takeJournal();
        settle();
        told.clear();
    }

    /// Delivers the announcements that are queued in the event loop.
    static void settle() { QCoreApplication::processEvents(); }

    void agentPosts(const QString &name)
    {
        mFixture->agentPosts(name);
        settle();
    }

    void statusBecomes(const QString &address, const QString &name, int status)
    {
        agent().addCamera(address, name, status);
        agentPosts(Names::CameraListChanged);
    }

public:
    /// QTEST_MAIN calls initMain() before it constructs the application. The function must be public for
    /// that.
    static void initMain() { AssistivePrograms::prepare(); }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(mAssistivePrograms.come());
        QAccessible::installUpdateHandler(hear);
    }
    void cleanupTestCase() { mAssistivePrograms.leave(); }
    void init() { mFixture = std::make_unique<PaneFixture>(); }
    void cleanup() { mFixture.reset(); }

    void newsIsAnnouncedOnce()
    {
        showThreeCameras();
        agentPosts(Names::StartedDiscovering);
        agent().addCamera(QStringLiteral("d"), QStringLiteral("Hall"), 1);
        agentPosts(Names::CameraListChanged);
        agentPosts(Names::StoppedDiscovering);
        agentPosts(Names::CameraListChanged);
        mFixture->connections->killAgent();
        QCOMPARE(told.filter(QStringLiteral("news ")),
                 QStringList({QStringLiteral("news Searching for cameras…"),
                              QStringLiteral("news New camera: Hall"),
                              QStringLiteral("news The search has ended."),
                              QStringLiteral("news The camera agent is not running or does not answer. Leave "
                                             "this page or close this window, and open it again.")}));
    }

    void theTableIsNamedAndItsChildrenAreTheRows()
    {
        showThreeCameras();
        QCOMPARE(accessible()->role(), QAccessible::Table);
        QCOMPARE(accessible()->text(QAccessible::Name), QStringLiteral("Cameras"));
        QCOMPARE(accessible()->childCount(), 3);
        const QStringList expected{QStringLiteral("Kitchen, Streaming"),
                                   QStringLiteral("Desk, Not Streaming"), QStringLiteral("Attic, Not Found")};
        for (int row = 0; row < 3; ++row) {
            auto *child = accessible()->child(row);
            QCOMPARE(child->text(QAccessible::Name), expected.at(row));
            QCOMPARE(child->role(), QAccessible::Cell);
            QCOMPARE(accessible()->indexOfChild(child), row);
            QCOMPARE(child->parent(), accessible());
            QCOMPARE(accessible()->childAt(child->rect().center().x(), child->rect().center().y()), child);
        }
        QCOMPARE(accessible()->child(3), nullptr);
        QCOMPARE(accessible()->child(-1), nullptr);
    }

    void aRowSaysHowToChooseACamera()
    {
        showThreeCameras();
        const auto how =
            QStringLiteral("To choose a camera with the keyboard, open Camera Actions, then Choose Camera.");
        for (int row = 0; row < 3; ++row)
            QCOMPARE(accessible()->child(row)->text(QAccessible::Description), how);
        agentPosts(Names::NoBluetooth);
        QCOMPARE(accessible()->child(0)->text(QAccessible::Description), QStringLiteral("Bluetooth is off."));
    }

    void rowsOfTheSameNameDifferByTheirIDs()
    {
        agent().addCamera(QStringLiteral("d"), QStringLiteral("Kitchen"), 1, QStringLiteral("2A9C"));
        agent().addCamera(QStringLiteral("e"), QStringLiteral("Kitchen"), 1, QStringLiteral("77\n1"));
        agent().addCamera(QStringLiteral("f"), QStringLiteral("Porch"), 1, QStringLiteral("5E5E"));
        mFixture->show();
        const auto beginning = [this](int row) {
            return accessible()->child(row)->text(QAccessible::Description).section(QLatin1Char(' '), 0, 2);
        };
        QCOMPARE(beginning(0), QStringLiteral("Camera ID: 2A9C."));
        QCOMPARE(beginning(1), QStringLiteral("Camera ID: 77⟨U+000A⟩1."));
        QCOMPARE(beginning(2), QStringLiteral("Choose a camera"));
        QVERIFY(accessible()->child(0)->text(QAccessible::Description).contains(QStringLiteral("keyboard")));
    }

    void theSelectionIsExposed()
    {
        showThreeCameras();
        auto *asTable = accessible()->tableInterface();
        QCOMPARE(asTable->rowCount(), 3);
        QCOMPARE(asTable->columnCount(), 1);
        QCOMPARE(asTable->selectedRows(), QList<int>{0});
        QVERIFY(accessible()->child(0)->state().selected);
        QVERIFY(!accessible()->child(1)->state().selected);
        QVERIFY(!asTable->unselectRow(0));
        QCOMPARE(table().selectedRow(), 0);
    }

    void pressingARowActsLikeAClick()
    {
        showThreeCameras();
        agent().indexOfPreferred = 1;
        auto *actions = accessible()->child(1)->actionInterface();
        QCOMPARE(actions->actionNames(), QStringList{QAccessibleActionInterface::pressAction()});
        actions->doAction(QAccessibleActionInterface::pressAction());
        QVERIFY(mFixture->takeRemoteCalls().contains(QStringLiteral("setPreferredDeviceAddress b")));
        QCOMPARE(table().selectedRow(), 1);
    }

    void selectingARowActsLikeAClick()
    {
        showThreeCameras();
        agent().indexOfPreferred = 2;
        QVERIFY(accessible()->tableInterface()->selectRow(2));
        QVERIFY(mFixture->takeRemoteCalls().contains(QStringLiteral("setPreferredDeviceAddress c")));
        QVERIFY(!accessible()->tableInterface()->selectRow(7));
    }

    void aDisabledTableIgnoresPresses()
    {
        showThreeCameras();
        table().setEnabled(false);
        auto *row = accessible()->child(1);
        QVERIFY(row->state().disabled);
        row->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QVERIFY(mFixture->takeRemoteCalls().isEmpty());
    }

    void aNewStatusOfTheSelectedCameraIsAnnouncedOnce()
    {
        const auto names = [] { return told.filter(QStringLiteral("name ")); };
        showThreeCameras();
        statusBecomes(QStringLiteral("a"), QStringLiteral("Kitchen"), 5);
        QCOMPARE(names(), QStringList{QStringLiteral("name 0")});
        agentPosts(Names::CameraListChanged);
        QCOMPARE(names().size(), 1);
        statusBecomes(QStringLiteral("b"), QStringLiteral("Desk"), 3);
        QCOMPARE(names().size(), 1);
    }

    void anotherSelectionIsAnnounced()
    {
        showThreeCameras();
        agent().prefer(QStringLiteral("b"));
        agentPosts(Names::PreferredCameraChanged);
        QCOMPARE(told, QStringList({QStringLiteral("deselection 0"), QStringLiteral("selection 1")}));
    }

    void theChosenCameraIsAnnouncedWhenTheListGetsTheFocus()
    {
        showThreeCameras();
        makeActive(&mFixture->window);
        table().clearFocus();
        settle();
        told.clear();
        table().setFocus();
        settle();
        QCOMPARE(told, QStringList{QStringLiteral("focus 0")});
    }

    void onlyOneOfTableAndRowIsFocused()
    {
        showThreeCameras();
        makeActive(&mFixture->window);
        table().setFocus();
        QVERIFY(accessible()->child(0)->state().focused);
        QVERIFY(!accessible()->state().focused);
        table().setAllowsEmptySelection(true);
        table().deselectAll();
        QVERIFY(accessible()->state().focused);
    }

    void addedAndRemovedRowsAreReported()
    {
        showThreeCameras();
        agent().addCamera(QStringLiteral("d"), QStringLiteral("Hall"), 1);
        agentPosts(Names::CameraListChanged);
        QCOMPARE(told.filter(QStringLiteral("tion ")), QStringList{QStringLiteral("creation 3")});
        told.clear();
        agent().cameraDict.remove(QStringLiteral("d"));
        agent().sorted.removeLast();
        agentPosts(Names::CameraListChanged);
        QCOMPARE(told.filter(QStringLiteral("tion ")), QStringList{QStringLiteral("destruction 3")});
    }

    void refreshesWithoutBluetoothRepeatNothing()
    {
        showThreeCameras();
        agentPosts(Names::NoBluetooth);
        QCOMPARE(told, QStringList());
        for (int time = 0; time < 3; ++time)
            agentPosts(Names::CameraListChanged);
        QCOMPARE(table().selectedRow(), 0);
        QCOMPARE(told, QStringList());
        statusBecomes(QStringLiteral("a"), QStringLiteral("Kitchen"), 5);
        QCOMPARE(told, QStringList{QStringLiteral("name 0")});
    }

    void aRemovedRowHasNoAccessibleObject()
    {
        showThreeCameras();
        QVERIFY(accessible()->child(2)->isValid());
        agent().cameraDict.remove(QStringLiteral("c"));
        agent().sorted.removeLast();
        mFixture->agentPosts(Names::CameraListChanged);
        QCOMPARE(accessible()->childCount(), 2);
        QCOMPARE(accessible()->child(2), nullptr);
    }
};

QTEST_MAIN(CameraTableAccessibleTest)
#include "CameraTableAccessible_test.moc"
