#include "platform/sheets/DialogPlace.h"
#include "tests/support/Timeout.h"

#include <QDialog>
#include <QTest>
#include <QWindow>

#include <memory>

/// Tests the position of a dialog on a real display, which exposes a window some time after show().
class DialogPlaceTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<QWidget> mWindow;
    std::unique_ptr<QDialog> mDialog;

    void showDialog()
    {
        platform::placeDialog(mDialog.get(), mWindow.get());
        mDialog->show();
    }
    [[nodiscard]] bool isInTheMiddle() const
    {
        const auto distance = mDialog->frameGeometry().center() - mWindow->frameGeometry().center();
        return distance.manhattanLength() <= 4;
    }

private Q_SLOTS:
    void init()
    {
        mWindow = std::make_unique<QWidget>();
        mDialog = std::make_unique<QDialog>();
        // Place the window far from the middle of the screen, where Qt would put a dialog without a parent
        // widget.
        mWindow->setGeometry(20, 30, 400, 300);
        mDialog->setMinimumSize(200, 100);
    }
    void cleanup()
    {
        mDialog.reset();
        mWindow.reset();
    }

    void aDialogIsInTheMiddleOfItsWindow()
    {
        mWindow->show();
        QVERIFY(QTest::qWaitForWindowExposed(mWindow.get(), Timeout));
        showDialog();
        QVERIFY(QTest::qWaitForWindowExposed(mDialog.get(), Timeout));
        QVERIFY(isInTheMiddle());
    }

    void aDialogFollowsAWindowThatIsPlacedLate()
    {
        mWindow->show();
        QVERIFY(!mWindow->windowHandle()->isExposed());
        showDialog();
        mWindow->move(550, 400);
        QVERIFY(!isInTheMiddle());
        QTRY_VERIFY_WITH_TIMEOUT(isInTheMiddle(), Timeout);
    }
};

QTEST_MAIN(DialogPlaceTest)
#include "DialogPlace_test.moc"
