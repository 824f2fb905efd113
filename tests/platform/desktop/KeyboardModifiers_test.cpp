#include "platform/desktop/KeyboardModifiers.h"
#include "tests/support/Timeout.h"

#include <QProcess>
#include <QTest>
#include <QWidget>
#include <QWindow>

/// Tests the state of keys pressed on a real X display. The test's window does not need the focus.
class KeyboardModifiersTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void altIsTheOptionKey();
    void otherKeysAreNot();
    void theFocusIsNotAwaitedOnX11();

private:
    static void press(const char *key) { xdotool("keydown", key); }
    static void release(const char *key) { xdotool("keyup", key); }
    static void xdotool(const char *verb, const char *key);

    QWidget mWindow;
    std::shared_ptr<platform::KeyboardModifiers> mKeyboard = platform::makeKeyboardModifiers();
};

void KeyboardModifiersTest::initTestCase()
{
    mWindow.show();
    QVERIFY(QTest::qWaitForWindowExposed(&mWindow, Timeout));
}

void KeyboardModifiersTest::xdotool(const char *verb, const char *key)
{
    QCOMPARE(QProcess::execute(QStringLiteral("xdotool"), {QLatin1String(verb), QLatin1String(key)}), 0);
}

void KeyboardModifiersTest::altIsTheOptionKey()
{
    QCOMPARE(mKeyboard->currentKeyModifiers(), 0U);
    press("Alt_L");
    QTRY_COMPARE_WITH_TIMEOUT(mKeyboard->currentKeyModifiers(),
                              std::uint32_t(platform::KeyboardModifiers::OptionKey), Timeout);
    release("Alt_L");
    QTRY_COMPARE_WITH_TIMEOUT(mKeyboard->currentKeyModifiers(), 0U, Timeout);
}

void KeyboardModifiersTest::otherKeysAreNot()
{
    press("Shift_L");
    QTRY_VERIFY_WITH_TIMEOUT(QGuiApplication::queryKeyboardModifiers().testFlag(Qt::ShiftModifier), Timeout);
    QCOMPARE(mKeyboard->currentKeyModifiers(), 0U);
    release("Shift_L");
}

void KeyboardModifiersTest::theFocusIsNotAwaitedOnX11()
{
    bool called = false;
    mKeyboard->onceFocused([&] { called = true; });
    QWidget another;
    another.show();
    another.activateWindow();
    QTRY_VERIFY_WITH_TIMEOUT(QGuiApplication::focusWindow() == another.windowHandle(), Timeout);
    QCoreApplication::processEvents();
    QVERIFY(!called);
}

QTEST_MAIN(KeyboardModifiersTest)
#include "KeyboardModifiers_test.moc"
