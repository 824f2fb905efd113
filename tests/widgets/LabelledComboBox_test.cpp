#include "widgets/LabelledComboBox.h"

#include "tests/support/ActiveWindow.h"
#include "tests/support/Timeout.h"

#include <QTest>
#include <QWheelEvent>

/// Tests the wheel over a combo box on a page that the wheel scrolls, like a page of System Settings.
class LabelledComboBoxTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { mPage.reset(); }
    void withoutTheFocusThePageHasTheWheel();
    void withTheFocusTheWheelChooses();
    void theWheelDoesNotGiveTheFocus();

private:
    /// Returns whether the combo box used the event. If not, Qt sends it to the page.
    bool usesTheWheel();

    std::unique_ptr<QWidget> mPage;
    LabelledComboBox *mComboBox = nullptr;
};

void LabelledComboBoxTest::init()
{
    mPage = std::make_unique<QWidget>();
    mPage->setFocusPolicy(Qt::StrongFocus);
    mComboBox = new LabelledComboBox(mPage.get());
    mComboBox->addItems({QStringLiteral("Smooth motion"), QStringLiteral("Picture quality")});
    mPage->show();
    makeActive(mPage.get());
    mPage->setFocus();
    QTRY_VERIFY_WITH_TIMEOUT(mPage->hasFocus(), Timeout);
}

bool LabelledComboBoxTest::usesTheWheel()
{
    constexpr int OneStepDown = -120;
    const QPoint centre = mComboBox->rect().center();
    QWheelEvent event(centre, mComboBox->mapToGlobal(centre), {}, {0, OneStepDown}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(mComboBox, &event);
    return event.isAccepted();
}

void LabelledComboBoxTest::withoutTheFocusThePageHasTheWheel()
{
    QVERIFY(!usesTheWheel());
    QCOMPARE(mComboBox->currentIndex(), 0);
}

void LabelledComboBoxTest::withTheFocusTheWheelChooses()
{
    mComboBox->setFocus();
    QTRY_VERIFY_WITH_TIMEOUT(mComboBox->hasFocus(), Timeout);
    QVERIFY(usesTheWheel());
    QCOMPARE(mComboBox->currentIndex(), 1);
}

// Qt gives a widget with Qt::WheelFocus the focus before the wheel event, but only if a person turns the
// wheel.
void LabelledComboBoxTest::theWheelDoesNotGiveTheFocus()
{
    QCOMPARE(mComboBox->focusPolicy(), Qt::StrongFocus);
}

QTEST_MAIN(LabelledComboBoxTest)
#include "LabelledComboBox_test.moc"
