#include "about/KS7AboutBoxWindow.h"
#include "about/KSHandTextField.h"
#include "about/Version.h"
#include "tests/support/ActiveWindow.h"
#include "tests/support/PaneFixture.h"
#include "tests/support/Timeout.h"

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QMenu>
#include <QPushButton>
#include <QStyle>
#include <QTest>
#include <QTextBlock>
#include <QTextDocument>
#include <QToolButton>
#include <QWindow>

namespace {

/// A sequence of a label's characters that have the same format.
struct Run {
    QString text;
    bool underlined;
    QColor color;

    bool operator==(const Run &other) const = default;
};

char *toString(const Run &run)
{
    return QTest::toString(
        QStringLiteral("\"%1\" underlined %2, %3").arg(run.text).arg(run.underlined).arg(run.color.name()));
}

QList<Run> runsOf(const QLabel *label)
{
    QTextDocument document;
    document.setHtml(label->text());
    QList<Run> runs;
    for (auto block = document.begin(); block != document.end(); block = block.next()) {
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            const auto format = part.fragment().charFormat();
            const auto color =
                format.hasProperty(QTextFormat::ForegroundBrush) ? format.foreground().color() : QColor();
            runs.append({part.fragment().text(), format.fontUnderline(), color});
        }
    }
    return runs;
}

Run plain(const QString &text)
{
    return {text, false, {}};
}

Run link(const QString &text)
{
    return {text, true, QColor(Qt::blue)};
}

const auto Site = QStringLiteral("url http://" KS7_WEBSITE_HOST);

} // namespace

/// Tests the version line, the about box and its link.
class AboutTest : public QObject {
    Q_OBJECT
private:
    void showAboutBox();
    void press(const QPoint &at) { QTest::mousePress(field(), Qt::LeftButton, {}, at); }
    void release(const QPoint &at) { QTest::mouseRelease(field(), Qt::LeftButton, {}, at); }
    static void activate(QWidget *window);
    void lookDark(bool dark);
    [[nodiscard]] KS7AboutBoxWindow *box() const { return fixture->window.findChild<KS7AboutBoxWindow *>(); }
    [[nodiscard]] KSHandTextField *field() const { return box()->website; }
    [[nodiscard]] QStringList opened() const { return fixture->workspace->opened; }
    [[nodiscard]] QPoint inside() const { return field()->rect().center(); }
    [[nodiscard]] QPoint outside() const { return field()->rect().bottomRight() + QPoint(1, 0); }

    std::unique_ptr<PaneFixture> fixture;

private Q_SLOTS:
    void init() { fixture = std::make_unique<PaneFixture>(); }
    void cleanup();

    void theVersionLineEndsInALink_data();
    void theVersionLineEndsInALink();
    void aMissingVersionIsAQuestionMark();
    void theVersionLineOpensNothing();
    void theLinkIsReadableOnADarkBackground();
    void theAboutBoxShowsVersionAndSite();
    void theTitleIsReadOutAtEveryShowing();
    void theMenuShowsOneAboutBox();
    void okAndEscapeCloseTheBox();
    void okHasTheFocusAtEveryShowing();
    void theDiagnosisIsCopied();
    void aHostMayDestroyTheWindowUnderTheBox();
    void pressAndReleaseInsideOpenOnce();
    void releaseOutsideOpensNothing();
    void draggingOutAndInAgainOpens();
    void pressOutsideOpensNothing();
    void otherButtonsOpenNothing();
    void anotherButtonDuringAPressChangesNothing();
    void anInactiveWindowIsOnlyActivated();
    void aPressFromBeforeTheActivationOpensNothing();
    void theHandCursorCoversTheField();
    void aDoubleClickOpensTwice();
    void aClickSelectsNothing();
    void returnAndSpaceOpen();
    void assistiveProgramsFindALink();
};

void AboutTest::cleanup()
{
    lookDark(false);
    fixture.reset();
}

void AboutTest::showAboutBox()
{
    if (!fixture->pane)
        fixture->show();
    const auto actions = fixture->outlets().pulldownMenu->menu()->actions();
    const auto about = std::find_if(actions.begin(), actions.end(), [](const QAction *action) {
        return action->text() == QStringLiteral("About KS-7…");
    });
    QVERIFY(about != actions.end());
    (*about)->trigger();
    QVERIFY(box());
    activate(box());
}

void AboutTest::activate(QWidget *window)
{
    makeActive(window);
    // Compare activeWindow(), because QWindow::isActive() is also true for a dialog whose parent window is
    // active.
    QTRY_COMPARE_WITH_TIMEOUT(QApplication::activeWindow(), window, Timeout);
}

void AboutTest::lookDark(bool dark)
{
    QPalette palette = QApplication::style()->standardPalette();
    if (dark)
        palette.setColor(QPalette::Window, QColor(0x23, 0x26, 0x29));
    QApplication::setPalette(palette);
}

void AboutTest::theVersionLineEndsInALink_data()
{
    QTest::addColumn<QVariant>("version");
    QTest::addColumn<QString>("front");
    QTest::newRow("1.0") << QVariant(QStringLiteral("1.0")) << QStringLiteral("v1.0 by ");
    QTest::newRow("2.1.3") << QVariant(QStringLiteral("2.1.3")) << QStringLiteral("v2.1.3 by ");
    QTest::newRow("markup") << QVariant(QStringLiteral("<b>1</b>&amp;"))
                            << QStringLiteral("v<b>1</b>&amp; by ");
    QTest::newRow("blanks") << QVariant(QStringLiteral("1  0")) << QStringLiteral("v1  0 by ");
    QTest::newRow("format") << QVariant(QStringLiteral("%2 %1 %@")) << QStringLiteral("v%2 %1 %@ by ");
    QTest::newRow("number") << QVariant(7LL) << QStringLiteral("v7 by ");
}

void AboutTest::theVersionLineEndsInALink()
{
    QFETCH(QVariant, version);
    QFETCH(QString, front);
    const auto company = QStringLiteral("Orvex Network");
    fixture->bundle->info = {{QStringLiteral("CFBundleVersion"), version}};
    fixture->show();
    const auto *line = fixture->outlets().copyright;
    QCOMPARE(runsOf(line), QList<Run>({plain(front), link(company)}));
    QCOMPARE(company.size(), 13);
    QCOMPARE(line->plainText(), front + company);
    auto *accessible = QAccessible::queryAccessibleInterface(fixture->outlets().copyright);
    QCOMPARE(accessible->text(QAccessible::Name), front + company);
}

void AboutTest::aMissingVersionIsAQuestionMark()
{
    fixture->bundle->info = {{QStringLiteral("CFBundleName"), QStringLiteral("KS-7")}};
    showAboutBox();
    QCOMPARE(runsOf(fixture->outlets().copyright),
             QList<Run>({plain(QStringLiteral("v? by ")), link(QStringLiteral("Orvex Network"))}));
    QCOMPARE(box()->version->text(), QStringLiteral("v?"));
    fixture->bundle->info.clear();
    QCOMPARE(paneVersion(*fixture->bundle), QStringLiteral("?"));
}

void AboutTest::theVersionLineOpensNothing()
{
    fixture->show();
    QTest::mouseClick(fixture->outlets().copyright, Qt::LeftButton);
    QCOMPARE(opened(), QStringList());
    QCOMPARE(fixture->outlets().copyright->focusPolicy(), Qt::NoFocus);
}

void AboutTest::theLinkIsReadableOnADarkBackground()
{
    fixture->show();
    const auto company = [this] { return runsOf(fixture->outlets().copyright).constLast(); };
    lookDark(true);
    QTRY_VERIFY_WITH_TIMEOUT(company().color.lightness() > 150, Timeout);
    const auto dark = company();
    QVERIFY(dark.underlined);
    QVERIFY(dark.color.blue() > dark.color.red() && dark.color.blue() > dark.color.green());
    lookDark(false);
    QTRY_COMPARE_WITH_TIMEOUT(company().color, QColor(Qt::blue), Timeout);
}

void AboutTest::theAboutBoxShowsVersionAndSite()
{
    fixture->bundle->info = {{QStringLiteral("CFBundleVersion"), QStringLiteral("2.1.3")}};
    showAboutBox();
    QCOMPARE(box()->windowTitle(), QStringLiteral("About KS-7"));
    QCOMPARE(box()->version->text(), QStringLiteral("v2.1.3"));
    QCOMPARE(runsOf(field()), QList<Run>({link(QStringLiteral(KS7_WEBSITE_HOST))}));
    QVERIFY(field()->alignment().testFlag(Qt::AlignHCenter));
}

void AboutTest::theTitleIsReadOutAtEveryShowing()
{
    for (int showing = 0; showing < 2; ++showing) {
        showAboutBox();
        auto *accessible = QAccessible::queryAccessibleInterface(box());
        QCOMPARE(accessible->text(QAccessible::Name), QStringLiteral("About KS-7"));
        QCOMPARE(box()->windowHandle()->title(), QStringLiteral("About KS-7"));
        box()->close();
    }
}

void AboutTest::theMenuShowsOneAboutBox()
{
    showAboutBox();
    auto *first = box();
    showAboutBox();
    QCOMPARE(box(), first);
    QCOMPARE(fixture->window.findChildren<KS7AboutBoxWindow *>().size(), 1);
    QVERIFY(!box()->isModal());
}

void AboutTest::okAndEscapeCloseTheBox()
{
    showAboutBox();
    QTest::keyClick(box(), Qt::Key_Escape);
    QVERIFY(!box()->isVisible());
    showAboutBox();
    box()->findChild<QPushButton *>()->click();
    QVERIFY(!box()->isVisible());
    showAboutBox();
    QVERIFY(box()->isVisible());
}

void AboutTest::okHasTheFocusAtEveryShowing()
{
    for (int showing = 0; showing < 2; ++showing) {
        showAboutBox();
        QCOMPARE(box()->focusWidget()->objectName(), QStringLiteral("aboutOkayButton"));
        field()->setFocus();
        box()->close();
    }
}

void AboutTest::theDiagnosisIsCopied()
{
    showAboutBox();
    box()->findChild<QPushButton *>(QStringLiteral("aboutCopyButton"))->click();
    const QString copied = QGuiApplication::clipboard()->text();
    QVERIFY2(copied.contains(QStringLiteral("KS-7 preferences")), qPrintable(copied));
}

void AboutTest::aHostMayDestroyTheWindowUnderTheBox()
{
    auto *hostWindow = new QWidget;
    fixture->load();
    fixture->pane->mainView()->setParent(hostWindow);
    hostWindow->show();
    fixture->outlets().pulldownMenu->menu()->actions().constLast()->trigger();
    const QPointer<KS7AboutBoxWindow> shown = hostWindow->findChild<KS7AboutBoxWindow *>();
    QVERIFY(shown);
    // The host must remove the pane's view from its window before it deletes the window. Otherwise Qt would
    // delete the view too.
    fixture->pane->mainView()->setParent(nullptr);
    delete hostWindow;
    QVERIFY(shown);
    fixture.reset();
    QVERIFY(!shown);
}

void AboutTest::pressAndReleaseInsideOpenOnce()
{
    showAboutBox();
    press(inside());
    QCOMPARE(opened(), QStringList());
    release(inside() + QPoint(2, 1));
    QCOMPARE(opened(), QStringList{Site});
}

void AboutTest::releaseOutsideOpensNothing()
{
    showAboutBox();
    press(inside());
    QTest::mouseMove(field(), outside());
    release(outside());
    QCOMPARE(opened(), QStringList());
    // The mouse button was already released outside the link field, which ended the press. Another release
    // inside the field must not open the page.
    release(inside());
    QCOMPARE(opened(), QStringList());
}

void AboutTest::draggingOutAndInAgainOpens()
{
    showAboutBox();
    press(inside());
    QTest::mouseMove(field(), outside());
    QTest::mouseMove(field(), inside());
    release(inside());
    QCOMPARE(opened(), QStringList{Site});
}

void AboutTest::pressOutsideOpensNothing()
{
    showAboutBox();
    QTest::mousePress(box(), Qt::LeftButton, {}, QPoint(2, 2));
    release(inside());
    QCOMPARE(opened(), QStringList());
}

void AboutTest::otherButtonsOpenNothing()
{
    showAboutBox();
    QTest::mouseClick(field(), Qt::RightButton);
    QTest::mouseClick(field(), Qt::MiddleButton);
    QCOMPARE(opened(), QStringList());
}

void AboutTest::anotherButtonDuringAPressChangesNothing()
{
    showAboutBox();
    press(inside());
    QTest::mouseClick(field(), Qt::RightButton, {}, inside());
    QCOMPARE(opened(), QStringList());
    release(inside());
    QCOMPARE(opened(), QStringList{Site});
}

void AboutTest::anInactiveWindowIsOnlyActivated()
{
    showAboutBox();
    activate(&fixture->window);
    QVERIFY(QApplication::activeWindow() != box());
    QTest::mouseClick(field(), Qt::LeftButton);
    QCOMPARE(opened(), QStringList());
    activate(box());
    QTest::mouseClick(field(), Qt::LeftButton);
    QCOMPARE(opened(), QStringList{Site});
    QVERIFY(!field()->acceptsFirstMouse());
}

void AboutTest::aPressFromBeforeTheActivationOpensNothing()
{
    using namespace std::chrono;
    showAboutBox();
    const auto clickMadeAt = [this](steady_clock::time_point time) {
        const auto stamp = duration_cast<milliseconds>(time.time_since_epoch()).count();
        for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            QMouseEvent event(type, inside(), field()->mapToGlobal(inside()), Qt::LeftButton,
                              type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, {});
            event.setTimestamp(static_cast<ulong>(static_cast<quint32>(stamp)));
            QCoreApplication::sendEvent(field(), &event);
        }
    };
    const auto before = steady_clock::now() - milliseconds(1);
    activate(&fixture->window);
    activate(box());
    clickMadeAt(before);
    QCOMPARE(opened(), QStringList());
    clickMadeAt(steady_clock::now() + milliseconds(1));
    QCOMPARE(opened(), QStringList{Site});
}

void AboutTest::theHandCursorCoversTheField()
{
    showAboutBox();
    QCOMPARE(field()->cursor().shape(), Qt::PointingHandCursor);
    QVERIFY(field()->findChildren<QWidget *>().isEmpty());
}

void AboutTest::aDoubleClickOpensTwice()
{
    showAboutBox();
    press(inside());
    release(inside());
    QMouseEvent second(QEvent::MouseButtonDblClick, inside(), field()->mapToGlobal(inside()), Qt::LeftButton,
                       Qt::LeftButton, {});
    QCoreApplication::sendEvent(field(), &second);
    release(inside());
    QCOMPARE(opened(), QStringList({Site, Site}));
}

void AboutTest::aClickSelectsNothing()
{
    showAboutBox();
    QTest::mouseDClick(field(), Qt::LeftButton);
    QVERIFY(!field()->hasSelectedText());
    QCOMPARE(field()->textInteractionFlags(), Qt::NoTextInteraction);
}

void AboutTest::returnAndSpaceOpen()
{
    showAboutBox();
    QTest::keyClick(box(), Qt::Key_Tab);
    field()->setFocus();
    QTest::keyClick(field(), Qt::Key_Return);
    QTest::keyClick(field(), Qt::Key_Space);
    QCOMPARE(opened(), QStringList({Site, Site}));
    QVERIFY(box()->isVisible());
    QTest::keyClick(field(), Qt::Key_Escape);
    QVERIFY(!box()->isVisible());
}

void AboutTest::assistiveProgramsFindALink()
{
    showAboutBox();
    auto *accessible = QAccessible::queryAccessibleInterface(field());
    QCOMPARE(accessible->role(), QAccessible::Link);
    QCOMPARE(accessible->text(QAccessible::Name), QStringLiteral(KS7_WEBSITE_HOST));
    QVERIFY(accessible->state().focusable);
    QVERIFY(accessible->actionInterface()->actionNames().contains(QAccessibleActionInterface::pressAction()));
    accessible->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QCOMPARE(opened(), QStringList{Site});
}

QTEST_MAIN(AboutTest)
#include "About_test.moc"
