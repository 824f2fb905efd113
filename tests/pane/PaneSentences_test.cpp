#include "pane/PaneSentences.h"

#include <QTest>

#include <functional>

namespace {

using Sentence = QString (*)(const PaneFacts &);
using Change = std::function<void(PaneFacts &)>;

void addCamera(PaneFacts &facts, const char *address, const char *name)
{
    facts.cameras.insert(QString::fromLatin1(address), QString::fromLatin1(name));
}

/// The usual state: the pane is connected and switched on, and shows two cameras. The selected camera,
/// Kitchen, does not stream.
PaneFacts usual()
{
    PaneFacts facts;
    facts.isConnected = true;
    facts.isSelectionRemovable = true;
    addCamera(facts, "a", "Kitchen");
    addCamera(facts, "b", "Desk");
    facts.hasSelection = true;
    facts.selectedAddress = QStringLiteral("a");
    facts.selectedName = QStringLiteral("Kitchen");
    facts.selectedStatus = QStringLiteral("Not Streaming");
    return facts;
}

void empty(PaneFacts &facts)
{
    facts.cameras.clear();
    facts.hasSelection = false;
    facts.selectedAddress = QString();
    facts.selectedName = QString();
    facts.selectedStatus = QString();
}

void removeKitchen(PaneFacts &facts)
{
    facts.cameras.remove(QStringLiteral("a"));
    facts.selectedAddress = QStringLiteral("b");
    facts.selectedName = QStringLiteral("Desk");
    facts.selectedStatus = QStringLiteral("Not Found");
}

const char *const NoAgent = "The camera agent is not running or does not answer. Leave this page or close "
                            "this window, and open it again.";
const char *const HowToChoose =
    "To choose a camera with the keyboard, open Camera Actions, then Choose Camera.";

struct Row {
    const char *state;
    Sentence sentence;
    Change change;
    const char *expected;
};

using S = PaneSentences;

const Row Rows[] = {
    {"no agent, empty list", &S::emptyList, [](auto &f) { empty(f), f.isConnected = false; }, NoAgent},
    {"no agent, though a search went on", &S::emptyList,
     [](auto &f) { empty(f), f.isConnected = false, f.isSearching = true; }, NoAgent},
    {"off", &S::emptyList, [](auto &f) { empty(f), f.isOn = false; }, "KS-7 is switched off."},
    {"no Bluetooth", &S::emptyList, [](auto &f) { empty(f), f.isBluetoothOff = true; }, "Bluetooth is off."},
    {"searching", &S::emptyList, [](auto &f) { empty(f), f.isSearching = true; }, "Searching for cameras…"},
    {"none found", &S::emptyList, empty, "No cameras found. Choose + to search."},
    {"connected, but not read", &S::emptyList, [](auto &f) { empty(f), f.isListRead = false; },
     "The list of cameras is out of date. Leave this page or close this window, and open it again."},

    {"chosen", &S::hint, [](auto &) {}, ""},
    {"none chosen", &S::hint, [](auto &f) { f.hasSelection = false; },
     "Choose a camera in the list to use it."},
    {"none chosen, but off", &S::hint, [](auto &f) { f.hasSelection = f.isOn = false; }, ""},
    {"none to choose", &S::hint, empty, ""},
    {"chosen, but without a name", &S::hint, [](auto &f) { f.selectedName = QString(); }, ""},
    {"start without a name", &S::startButton, [](auto &f) { f.selectedName = QString(); },
     "Show the live picture and its sound levels here"},
    {"− without a name", &S::removeButton, [](auto &f) { f.selectedName = QString(); },
     "Remove the selected camera"},
    {"picture of a camera without a name", &S::caption,
     [](auto &f) { f.isPreviewing = f.isSelectionStreaming = true, f.selectedName = QString(); },
     "Picture of (no name)"},

    {"list", &S::listDescription, [](auto &) {}, HowToChoose},
    {"empty list", &S::listDescription, empty, "No cameras found. Choose + to search."},
    {"list, off", &S::listDescription, [](auto &f) { f.isOn = false; }, "KS-7 is switched off."},

    {"no preview", &S::caption, [](auto &) {}, "Preview is off"},
    {"streaming", &S::caption, [](auto &f) { f.isPreviewing = f.isSelectionStreaming = true; },
     "Picture of Kitchen"},
    {"idle", &S::caption, [](auto &f) { f.isPreviewing = true; },
     "Waiting for the picture of Kitchen: Not Streaming"},
    {"preview of nothing", &S::caption, [](auto &f) { empty(f), f.isPreviewing = true; },
     "Waiting for a picture: no camera is chosen"},
    {"preview after a failed start", &S::caption,
     [](auto &f) { f.isPreviewing = true, f.hasPicture = false; },
     "No picture: the first start failed. Restart this application to try again."},
    {"a long name", &S::caption,
     [](auto &f) {
         f.isPreviewing = f.isSelectionStreaming = true;
         f.selectedName = QStringLiteral("a").repeated(30) + QStringLiteral("\U0001F4F7").repeated(30);
     },
     "Picture of aaaaaaaaaaaaaaaaaaaa…\U0001F4F7\U0001F4F7\U0001F4F7\U0001F4F7\U0001F4F7\U0001F4F7\U0001F4F7"
     "\U0001F4F7\U0001F4F7\U0001F4F7\U0001F4F7\U0001F4F7\U0001F4F7\U0001F4F7\U0001F4F7\U0001F4F7\U0001F4F7"
     "\U0001F4F7\U0001F4F7\U0001F4F7"},

    {"+", &S::addButton, [](auto &) {}, "Search for cameras to add"},
    {"+ in use", &S::addButton, [](auto &f) { f.isPreferredStreaming = true; },
     "Cameras can be added only while no camera is in use"},
    {"+ without agent", &S::addButton, [](auto &f) { f.isConnected = false; }, NoAgent},
    {"+ off", &S::addButton, [](auto &f) { f.isOn = false; }, "KS-7 is switched off."},
    {"+ without Bluetooth", &S::addButton, [](auto &f) { f.isBluetoothOff = true; }, "Bluetooth is off."},
    {"−", &S::removeButton, [](auto &) {}, "Remove the selected camera"},
    {"− in use", &S::removeButton, [](auto &f) { f.isSelectionRemovable = false; },
     "A camera can be removed only while it is not in use"},
    {"− without a choice", &S::removeButton, empty, "Remove the selected camera: none is selected"},
    {"− off", &S::removeButton, [](auto &f) { f.isOn = false; }, "KS-7 is switched off."},
    {"gear", &S::actionsButton, [](auto &) {}, "Camera actions"},
    {"gear without cameras", &S::actionsButton, empty, "Camera actions: no camera is listed"},
    {"gear without agent", &S::actionsButton, [](auto &f) { empty(f), f.isConnected = false; }, NoAgent},
    {"start", &S::startButton, [](auto &) {}, "Show the live picture and its sound levels here"},
    {"stop", &S::startButton, [](auto &f) { f.isPreviewing = true; },
     "End the live picture and its sound levels"},
    {"start without a choice", &S::startButton, [](auto &f) { f.hasSelection = false; },
     "Choose a camera in the list first"},
    {"start without Bluetooth", &S::startButton, [](auto &f) { f.isBluetoothOff = true; },
     "Bluetooth is off."},
    {"nothing to notice", &S::notice, [](auto &) {}, ""},
    {"Bluetooth lost", &S::notice, [](auto &f) { f.isBluetoothOff = true; },
     "Bluetooth is off. Turn it on to use your cameras."},
};

struct NewsRow {
    const char *what;
    Change before;
    Change now;
    const char *expected;
};

const NewsRow NewsRows[] = {
    {"nothing", [](auto &) {}, [](auto &) {}, ""},
    {"the first list", [](auto &f) { empty(f), f.isConnected = false; }, [](auto &) {}, ""},
    {"the agent is lost", [](auto &) {}, [](auto &f) { empty(f), f.isConnected = false; }, NoAgent},
    {"a hidden pane loses the agent", [](auto &) {},
     [](auto &f) { empty(f), f.isConnected = f.isShown = false; }, ""},
    {"a search begins", [](auto &) {}, [](auto &f) { f.isSearching = true; }, "Searching for cameras…"},
    {"a search finds a camera", [](auto &f) { f.isSearching = true; },
     [](auto &f) { f.isSearching = true, addCamera(f, "c", "Hall"); }, "New camera: Hall"},
    {"a search finds one of the same name", [](auto &) {}, [](auto &f) { addCamera(f, "c", "Desk"); },
     "New camera: Desk"},
    {"two are found at once", [](auto &) {},
     [](auto &f) { addCamera(f, "c", "Hall"), addCamera(f, "d", "Attic"); }, "New cameras: Attic, Hall"},
    {"a camera is renamed", [](auto &) {},
     [](auto &f) { addCamera(f, "a", "Hall"), f.selectedName = QStringLiteral("Hall"); }, ""},
    {"the chosen camera is removed", [](auto &) {}, removeKitchen,
     "Removed from the list: Kitchen. Now chosen: Desk, Not Found"},
    {"the chosen camera is removed in the focused list", [](auto &) {},
     [](auto &f) { removeKitchen(f), f.isListFocused = true; }, "Removed from the list: Kitchen"},
    {"the next choice has no status", [](auto &) {},
     [](auto &f) { removeKitchen(f), f.selectedStatus = QString(); },
     "Removed from the list: Kitchen. Now chosen: Desk"},
    {"the last camera is removed", [](auto &f) { f.cameras.remove(QStringLiteral("b")); }, empty,
     "Removed from the list: Kitchen"},
    {"another camera is removed", [](auto &) {}, [](auto &f) { f.cameras.remove(QStringLiteral("b")); },
     "Removed from the list: Desk"},
    {"two cameras are removed", [](auto &) {}, empty, "Removed from the list: Desk, Kitchen"},
    {"a list is emptied with Bluetooth", [](auto &) {}, [](auto &f) { empty(f), f.isBluetoothOff = true; },
     ""},
    {"a list is read again after a reconnection", [](auto &f) { empty(f), f.isListRead = false; },
     [](auto &) {}, ""},
    {"another choice of the same name", [](auto &f) { addCamera(f, "b", "Kitchen"); },
     [](auto &f) {
         addCamera(f, "b", "Kitchen");
         f.selectedAddress = QStringLiteral("b"), f.selectedStatus = QStringLiteral("Not Found");
     },
     ""},
    {"a search ends", [](auto &f) { f.isSearching = true; }, [](auto &) {}, "The search has ended."},
    {"a search ends in vain", [](auto &f) { empty(f), f.isSearching = true; }, empty,
     "No cameras found. Choose + to search."},
    {"the preview ends", [](auto &f) { f.isPreviewing = true; }, [](auto &) {}, "Preview is off"},
    {"the preview begins", [](auto &) {}, [](auto &f) { f.isPreviewing = f.isSelectionStreaming = true; },
     "Picture of Kitchen"},
    {"the chosen camera is lost", [](auto &) {},
     [](auto &f) { f.selectedStatus = QStringLiteral("Not Found"); }, "Kitchen, Not Found"},
    {"it starts, which does not last", [](auto &) {},
     [](auto &f) { f.isSelectionSettled = false, f.selectedStatus = QStringLiteral("Starting"); }, ""},
    {"it has started", [](auto &f) { f.selectedStatus = QStringLiteral("Starting"); },
     [](auto &f) { f.selectedStatus = QStringLiteral("Streaming"); }, "Kitchen, Streaming"},
    {"a new status in the focused list", [](auto &) {},
     [](auto &f) { f.isListFocused = true, f.selectedStatus = QStringLiteral("Not Found"); }, ""},
    {"a status lost with Bluetooth", [](auto &) {},
     [](auto &f) { f.isBluetoothOff = true, f.selectedStatus = QStringLiteral("Not Found"); }, ""},
    {"another choice", [](auto &) {},
     [](auto &f) {
         f.selectedAddress = QStringLiteral("b"), f.selectedName = QStringLiteral("Desk");
         f.selectedStatus = QStringLiteral("Not Found");
     },
     ""},
    {"two news at once", [](auto &f) { f.isSearching = true; },
     [](auto &f) { f.selectedStatus = QStringLiteral("Streaming"); },
     "The search has ended.\nKitchen, Streaming"},
};

} // namespace

/// Tests which sentence the pane shows in each state.
class PaneSentencesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void eachStateHasItsSentence_data()
    {
        QTest::addColumn<int>("row");
        for (int row = 0; row < int(std::size(Rows)); ++row)
            QTest::newRow(Rows[row].state) << row;
    }
    void eachStateHasItsSentence()
    {
        QFETCH(int, row);
        PaneFacts facts = usual();
        Rows[row].change(facts);
        QCOMPARE(Rows[row].sentence(facts), QString::fromUtf8(Rows[row].expected));
    }

    void aScreenReaderSaysWhatIsNew_data()
    {
        QTest::addColumn<int>("row");
        for (int row = 0; row < int(std::size(NewsRows)); ++row)
            QTest::newRow(NewsRows[row].what) << row;
    }
    void aScreenReaderSaysWhatIsNew()
    {
        QFETCH(int, row);
        PaneFacts before = usual();
        PaneFacts now = usual();
        NewsRows[row].before(before);
        NewsRows[row].now(now);
        QCOMPARE(PaneSentences::news(before, now), QString::fromUtf8(NewsRows[row].expected));
    }
};

QTEST_GUILESS_MAIN(PaneSentencesTest)
#include "PaneSentences_test.moc"
