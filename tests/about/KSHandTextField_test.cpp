#include "about/KSHandTextField.h"
#include "tests/about/AboutBoxFixture.h"

#include <QAccessible>
#include <QTest>

namespace {

const auto Site = QStringLiteral("url http://" KS7_WEBSITE_HOST);

} // namespace

/// Tests the about box's link.
class KSHandTextFieldTest : public QObject {
    Q_OBJECT
private:
    void press(const QPoint &at) { QTest::mousePress(field(), Qt::LeftButton, {}, at); }
    void release(const QPoint &at) { QTest::mouseRelease(field(), Qt::LeftButton, {}, at); }
    [[nodiscard]] KS7AboutBoxWindow *box() const { return fixture->box(); }
    [[nodiscard]] KSHandTextField *field() const { return box()->website; }
    [[nodiscard]] QStringList opened() const { return fixture->workspace->opened; }
    [[nodiscard]] QPoint inside() const { return field()->rect().center(); }
    [[nodiscard]] QPoint outside() const { return field()->rect().bottomRight() + QPoint(1, 0); }

    std::unique_ptr<AboutBoxFixture> fixture;

private Q_SLOTS:
    void init() { fixture = std::make_unique<AboutBoxFixture>(); }
    void cleanup() { fixture.reset(); }

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

void KSHandTextFieldTest::pressAndReleaseInsideOpenOnce()
{
    fixture->showAboutBox();
    press(inside());
    QCOMPARE(opened(), QStringList());
    release(inside() + QPoint(2, 1));
    QCOMPARE(opened(), QStringList{Site});
}

void KSHandTextFieldTest::releaseOutsideOpensNothing()
{
    fixture->showAboutBox();
    press(inside());
    QTest::mouseMove(field(), outside());
    release(outside());
    QCOMPARE(opened(), QStringList());
    // The mouse button was already released outside the link field, which ended the press. Another release
    // inside the field must not open the page.
    release(inside());
    QCOMPARE(opened(), QStringList());
}

void KSHandTextFieldTest::draggingOutAndInAgainOpens()
{
    fixture->showAboutBox();
    press(inside());
    QTest::mouseMove(field(), outside());
    QTest::mouseMove(field(), inside());
    release(inside());
    QCOMPARE(opened(), QStringList{Site});
}

void KSHandTextFieldTest::pressOutsideOpensNothing()
{
    fixture->showAboutBox();
    QTest::mousePress(box(), Qt::LeftButton, {}, QPoint(2, 2));
    release(inside());
    QCOMPARE(opened(), QStringList());
}

void KSHandTextFieldTest::otherButtonsOpenNothing()
{
    fixture->showAboutBox();
    QTest::mouseClick(field(), Qt::RightButton);
    QTest::mouseClick(field(), Qt::MiddleButton);
    QCOMPARE(opened(), QStringList());
}

void KSHandTextFieldTest::anotherButtonDuringAPressChangesNothing()
{
    fixture->showAboutBox();
    press(inside());
    QTest::mouseClick(field(), Qt::RightButton, {}, inside());
    QCOMPARE(opened(), QStringList());
    release(inside());
    QCOMPARE(opened(), QStringList{Site});
}

void KSHandTextFieldTest::anInactiveWindowIsOnlyActivated()
{
    fixture->showAboutBox();
    fixture->activate(&fixture->window);
    QVERIFY(QApplication::activeWindow() != box());
    QTest::mouseClick(field(), Qt::LeftButton);
    QCOMPARE(opened(), QStringList());
    fixture->activate(box());
    QTest::mouseClick(field(), Qt::LeftButton);
    QCOMPARE(opened(), QStringList{Site});
    QVERIFY(!field()->acceptsFirstMouse());
}

void KSHandTextFieldTest::aPressFromBeforeTheActivationOpensNothing()
{
    using namespace std::chrono;
    fixture->showAboutBox();
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
    fixture->activate(&fixture->window);
    fixture->activate(box());
    clickMadeAt(before);
    QCOMPARE(opened(), QStringList());
    clickMadeAt(steady_clock::now() + milliseconds(1));
    QCOMPARE(opened(), QStringList{Site});
}

void KSHandTextFieldTest::theHandCursorCoversTheField()
{
    fixture->showAboutBox();
    QCOMPARE(field()->cursor().shape(), Qt::PointingHandCursor);
    QVERIFY(field()->findChildren<QWidget *>().isEmpty());
}

void KSHandTextFieldTest::aDoubleClickOpensTwice()
{
    fixture->showAboutBox();
    press(inside());
    release(inside());
    QMouseEvent second(QEvent::MouseButtonDblClick, inside(), field()->mapToGlobal(inside()), Qt::LeftButton,
                       Qt::LeftButton, {});
    QCoreApplication::sendEvent(field(), &second);
    release(inside());
    QCOMPARE(opened(), QStringList({Site, Site}));
}

void KSHandTextFieldTest::aClickSelectsNothing()
{
    fixture->showAboutBox();
    QTest::mouseDClick(field(), Qt::LeftButton);
    QVERIFY(!field()->hasSelectedText());
    QCOMPARE(field()->textInteractionFlags(), Qt::NoTextInteraction);
}

void KSHandTextFieldTest::returnAndSpaceOpen()
{
    fixture->showAboutBox();
    QTest::keyClick(box(), Qt::Key_Tab);
    field()->setFocus();
    QTest::keyClick(field(), Qt::Key_Return);
    QTest::keyClick(field(), Qt::Key_Space);
    QCOMPARE(opened(), QStringList({Site, Site}));
    QVERIFY(box()->isVisible());
    QTest::keyClick(field(), Qt::Key_Escape);
    QVERIFY(!box()->isVisible());
}

void KSHandTextFieldTest::assistiveProgramsFindALink()
{
    fixture->showAboutBox();
    auto *accessible = QAccessible::queryAccessibleInterface(field());
    QCOMPARE(accessible->role(), QAccessible::Link);
    QCOMPARE(accessible->text(QAccessible::Name), QStringLiteral(KS7_WEBSITE_HOST));
    QVERIFY(accessible->state().focusable);
    QVERIFY(accessible->actionInterface()->actionNames().contains(QAccessibleActionInterface::pressAction()));
    accessible->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QCOMPARE(opened(), QStringList{Site});
}

QTEST_MAIN(KSHandTextFieldTest)
#include "KSHandTextField_test.moc"
