#include "platform/sheets/Sheets.h"
#include "tests/support/Timeout.h"

#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>
#include <QWindow>

#include <functional>

using platform::AlertSheet;
using platform::Sheet;

namespace {

/// A host's window with a field, which has the focus, and a button.
class HostWindow : public QMainWindow {
    Q_OBJECT
public:
    HostWindow()
    {
        auto *content = new QWidget;
        auto *layout = new QVBoxLayout(content);
        layout->addWidget(&field);
        layout->addWidget(&button);
        setCentralWidget(content);
        QObject::connect(&button, &QPushButton::clicked, this, [this] { ++clicks; });
    }
    void appear()
    {
        show();
        activateWindow();
        field.setFocus();
        QVERIFY(QTest::qWaitForWindowActive(this, Timeout));
    }
    QLineEdit field;
    QPushButton button;
    int clicks = 0;
    bool refusesToClose = false;

protected:
    void closeEvent(QCloseEvent *event) override { event->setAccepted(!refusesToClose); }
};

/// Lets the application receive a quit event without quitting. During that event `whatCloses` runs, which may
/// close windows, as Qt 6 does.
class HostThatStays : public QObject {
public:
    HostThatStays() { qApp->installEventFilter(this); }
    void isToldToQuit(std::function<void()> whatCloses = [] {})
    {
        mWhatCloses = std::move(whatCloses);
        QEvent quit(QEvent::Quit);
        QCoreApplication::sendEvent(qApp, &quit);
    }
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() != QEvent::Quit)
            return false;
        mWhatCloses();
        return true;
    }

private:
    std::function<void()> mWhatCloses;
};

/// Counts a widget's events of one type.
class Events : public QObject {
public:
    Events(QWidget *widget, QEvent::Type type)
        : mType(type)
    {
        widget->installEventFilter(this);
    }
    int count = 0;
    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == mType ? 1 : 0;
        return false;
    }

private:
    QEvent::Type mType;
};

const AlertSheet Failure{QStringLiteral("A Failure"), QStringLiteral("OK"),
                         QStringLiteral("<b>It</b> failed & <i>ended</i>.")};
const AlertSheet OtherFailure{QStringLiteral("A Failure"), QStringLiteral("OK"),
                              QStringLiteral("Other words.")};

} // namespace

/// Tests the sheets and alerts that the real presenter shows.
class QtSheetPresenterTest : public QObject {
    Q_OBJECT

private:
    std::shared_ptr<platform::SheetPresenter> mPresenter;
    std::unique_ptr<HostWindow> mWindow;
    int mEnded = 0;

    platform::SheetDidEnd counting()
    {
        return [this](QWidget *sheet, int, void *) {
            ++mEnded;
            sheet->hide();
        };
    }
    void beginAlert(const AlertSheet &alert, QWidget *window)
    {
        mPresenter->beginAlertSheet(alert, window, counting());
    }
    static QList<QMessageBox *> alertsOnScreen()
    {
        QList<QMessageBox *> boxes;
        const auto widgets = QApplication::topLevelWidgets();
        for (auto *widget : widgets) {
            if (auto *box = qobject_cast<QMessageBox *>(widget); box && box->isVisible())
                boxes.append(box);
        }
        return boxes;
    }
    static QMessageBox *theAlert()
    {
        const auto boxes = alertsOnScreen();
        return boxes.size() == 1 ? boxes.constFirst() : nullptr;
    }
    static void waitForTheAlertToHaveTheFocus()
    {
        QTRY_COMPARE_WITH_TIMEOUT(QApplication::activeWindow(), static_cast<QWidget *>(theAlert()), Timeout);
    }
    static void turnTheLoop() { QTest::qWait(0); }
    /// Sends a quit event, for which Qt closes one window after the other until one refuses.
    static void tellToQuit()
    {
        QEvent quit(QEvent::Quit);
        QCoreApplication::sendEvent(qApp, &quit);
    }
    static void inTheEventLoop(const std::function<void()> &happening)
    {
        QEventLoop application;
        QTimer::singleShot(0, &application, [&] {
            happening();
            application.quit();
        });
        application.exec();
    }
    /// Runs a nested event loop, such as that of an application's question "Really quit?".
    static void askInANestedLoop()
    {
        QEventLoop question;
        QTimer::singleShot(20, &question, &QEventLoop::quit);
        question.exec();
    }
    void expectToBeUpAndToRefuse(Sheet &sheet)
    {
        QVERIFY(sheet.isVisible());
        QVERIFY(!sheet.close());
        QVERIFY(sheet.isVisible());
        QCOMPARE(mEnded, 0);
    }
    static bool hangsOn(const QWidget *dialog, const QWidget *window)
    {
        return dialog->windowHandle()->transientParent() == window->windowHandle()
            && dialog->windowModality() == Qt::WindowModal;
    }
    void clickTheButtonOf(HostWindow &window)
    {
        const auto spot = window.button.mapTo(&window, window.button.rect().center());
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, spot);
    }

private Q_SLOTS:
    void init()
    {
        mEnded = 0;
        mPresenter = platform::makeQtSheetPresenter();
        mWindow = std::make_unique<HostWindow>();
    }
    void cleanup()
    {
        mPresenter.reset();
        mWindow.reset();
        QCOMPARE(alertsOnScreen().size(), 0);
    }

    void anAlertShowsItsTextsUnchanged()
    {
        mWindow->appear();
        beginAlert(Failure, mWindow.get());
        auto *box = theAlert();
        QVERIFY(box);
        QVERIFY(hangsOn(box, mWindow.get()));
        QCOMPARE(box->windowTitle(), Failure.title);
        QCOMPARE(box->text(), Failure.title);
        QCOMPARE(box->informativeText(), Failure.message);
        QCOMPARE(box->accessibleName(), Failure.title);
        QCOMPARE(box->buttons().size(), 1);
        QCOMPARE(box->buttons().constFirst()->text(), QStringLiteral("OK"));
        const auto labels = box->findChildren<QLabel *>();
        for (const auto *label : labels)
            QCOMPARE(label->textFormat(), Qt::PlainText);
        QCOMPARE(mEnded, 0);
    }

    void anAlertEndsOnceHoweverItIsEnded_data()
    {
        QTest::addColumn<QString>("how");
        QTest::newRow("by its button") << QStringLiteral("button");
        QTest::newRow("by Return") << QStringLiteral("return");
        QTest::newRow("by Escape") << QStringLiteral("escape");
        QTest::newRow("by closing its window") << QStringLiteral("close");
    }
    void anAlertEndsOnceHoweverItIsEnded()
    {
        QFETCH(QString, how);
        mWindow->appear();
        beginAlert(Failure, mWindow.get());
        const QPointer<QMessageBox> box = theAlert();
        QVERIFY(box);
        if (how == QStringLiteral("button"))
            QTest::mouseClick(box->buttons().constFirst(), Qt::LeftButton);
        else if (how == QStringLiteral("return"))
            QTest::keyClick(box.data(), Qt::Key_Return);
        else if (how == QStringLiteral("escape"))
            QTest::keyClick(box.data(), Qt::Key_Escape);
        else
            box->close();
        QCOMPARE(mEnded, 1);
        QTRY_VERIFY2(box.isNull(), "an ended alert does not stay in memory");
        QCOMPARE(mEnded, 1);
    }

    void theWindowUnderAnAlertIsBlocked()
    {
        mWindow->appear();
        clickTheButtonOf(*mWindow);
        QCOMPARE(mWindow->clicks, 1);
        beginAlert(Failure, mWindow.get());
        QVERIFY(QTest::qWaitForWindowExposed(theAlert(), Timeout));
        clickTheButtonOf(*mWindow);
        QCOMPARE(mWindow->clicks, 1);
        QTest::keyClick(theAlert(), Qt::Key_Escape);
        clickTheButtonOf(*mWindow);
        QCOMPARE(mWindow->clicks, 2);
    }

    void theFocusReturnsToItsWidget()
    {
        mWindow->appear();
        // Use the second widget: Qt would focus the first one in a window that remembers no focus widget.
        mWindow->button.setFocus();
        QVERIFY(mWindow->button.hasFocus());
        beginAlert(Failure, mWindow.get());
        waitForTheAlertToHaveTheFocus();
        QVERIFY(!mWindow->button.hasFocus());
        QTest::keyClick(theAlert(), Qt::Key_Escape);
        QTRY_VERIFY_WITH_TIMEOUT(mWindow->button.hasFocus(), Timeout);
    }

    void aFocusThatMovesBehindAnAlertStays()
    {
        mWindow->appear();
        mWindow->button.setFocus();
        beginAlert(Failure, mWindow.get());
        waitForTheAlertToHaveTheFocus();
        mWindow->field.setFocus();
        QTest::keyClick(theAlert(), Qt::Key_Escape);
        QTRY_COMPARE_WITH_TIMEOUT(QApplication::activeWindow(), static_cast<QWidget *>(mWindow.get()),
                                  Timeout);
        QCOMPARE(mWindow->focusWidget(), &mWindow->field);
    }

    void theSameAlertIsShownOnceAndEndsForEveryCaller()
    {
        mWindow->appear();
        beginAlert(Failure, mWindow.get());
        beginAlert(Failure, mWindow.get());
        QVERIFY(theAlert());
        QTest::keyClick(theAlert(), Qt::Key_Escape);
        QCOMPARE(mEnded, 2);
        QCOMPARE(alertsOnScreen().size(), 0);
        beginAlert(Failure, mWindow.get());
        QVERIFY2(theAlert(), "said again, it is shown again");
    }

    void differentAlertsAreShownOneAfterTheOther()
    {
        mWindow->appear();
        beginAlert(Failure, mWindow.get());
        beginAlert(OtherFailure, mWindow.get());
        QVERIFY(theAlert());
        QCOMPARE(theAlert()->informativeText(), Failure.message);
        QTest::keyClick(theAlert(), Qt::Key_Escape);
        QCOMPARE(mEnded, 1);
        QVERIFY(theAlert());
        QCOMPARE(theAlert()->informativeText(), OtherFailure.message);
        waitForTheAlertToHaveTheFocus();
        QTest::keyClick(theAlert(), Qt::Key_Escape);
        QCOMPARE(mEnded, 2);
        QTRY_VERIFY_WITH_TIMEOUT(mWindow->field.hasFocus(), Timeout);
    }

    void theNumberOfAlertsIsBounded()
    {
        constexpr int VeryMany = 1000;
        mWindow->appear();
        for (int number = 0; number < VeryMany; ++number) {
            beginAlert({Failure.title, Failure.defaultButton, QString::number(number)}, mWindow.get());
            beginAlert(Failure, mWindow.get());
        }
        int shown = 0;
        for (; theAlert(); ++shown)
            QTest::keyClick(theAlert(), Qt::Key_Escape);
        QVERIFY2(shown >= 10 && shown <= 50, qPrintable(QString::number(shown)));
        QVERIFY2(mEnded >= shown && mEnded <= 100, qPrintable(QString::number(mEnded)));
        beginAlert(OtherFailure, mWindow.get());
        QVERIFY2(theAlert(), "an alert that was read makes room for the next");
    }

    void theSameAlertBeforeAndAfterTheFirstWindowIsShownOnce()
    {
        beginAlert(Failure, nullptr);
        mWindow->appear();
        beginAlert(Failure, mWindow.get());
        QTRY_VERIFY_WITH_TIMEOUT(theAlert(), Timeout);
        turnTheLoop();
        QVERIFY(theAlert());
        QTest::keyClick(theAlert(), Qt::Key_Escape);
        QCOMPARE(mEnded, 2);
        QCOMPARE(alertsOnScreen().size(), 0);
    }

    void aWindowThatIsActivatedLateGivesTheFocusToItsAlert()
    {
        mWindow->appear();
        beginAlert(Failure, mWindow.get());
        waitForTheAlertToHaveTheFocus();
        mWindow->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(mWindow.get(), Timeout));
        waitForTheAlertToHaveTheFocus();
    }

    void aDestroyedWindowRemovesItsQueuedAlerts()
    {
        mWindow->appear();
        beginAlert(Failure, mWindow.get());
        beginAlert(OtherFailure, mWindow.get());
        mWindow = std::make_unique<HostWindow>();
        mWindow->appear();
        turnTheLoop();
        QCOMPARE(alertsOnScreen().size(), 0);
        QCOMPARE(mEnded, 0);
    }

    void anAlertWithoutAWindowWaitsForOne()
    {
        QCOMPARE(mPresenter->applicationMainWindow(), nullptr);
        beginAlert(Failure, nullptr);
        beginAlert(Failure, nullptr);
        QCOMPARE(alertsOnScreen().size(), 0);
        mWindow->appear();
        QTRY_VERIFY_WITH_TIMEOUT(theAlert(), Timeout);
        QVERIFY(hangsOn(theAlert(), mWindow.get()));
        QTest::keyClick(theAlert(), Qt::Key_Escape);
        QCOMPARE(mEnded, 2);
        mWindow->hide();
        beginAlert(OtherFailure, nullptr);
        QCOMPARE(alertsOnScreen().size(), 0);
        mWindow->appear();
        QTRY_VERIFY_WITH_TIMEOUT(theAlert(), Timeout);
    }

    void anAlertForAHiddenWindowWaits()
    {
        beginAlert(Failure, mWindow.get());
        QCOMPARE(alertsOnScreen().size(), 0);
        mWindow->appear();
        QTRY_VERIFY_WITH_TIMEOUT(theAlert(), Timeout);
    }

    void anAlertForAHiddenWindowWaitsBesideAnotherWindow()
    {
        HostWindow other;
        other.appear();
        beginAlert(Failure, mWindow.get());
        mWindow->show();
        other.activateWindow();
        QTRY_VERIFY_WITH_TIMEOUT(theAlert(), Timeout);
        QVERIFY(hangsOn(theAlert(), mWindow.get()));
    }

    void anAlertWithoutAWindowUsesTheNextOne()
    {
        auto other = std::make_unique<HostWindow>();
        beginAlert(Failure, other.get());
        other.reset();
        mWindow->appear();
        QTRY_VERIFY_WITH_TIMEOUT(theAlert(), Timeout);
        QVERIFY(hangsOn(theAlert(), mWindow.get()));
    }

    void aHostMayHaveADialogAsItsWindow()
    {
        QDialog host;
        beginAlert(Failure, nullptr);
        host.show();
        QTRY_VERIFY_WITH_TIMEOUT(theAlert(), Timeout);
        QVERIFY(hangsOn(theAlert(), &host));
    }

    void theMainWindowIsADialogOnlyIfThereIsNoOtherWindow()
    {
        QDialog aboutBox;
        aboutBox.show();
        mWindow->appear();
        QCOMPARE(mPresenter->applicationMainWindow(), mWindow.get());
        aboutBox.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&aboutBox, Timeout));
        QCOMPARE(mPresenter->applicationMainWindow(), mWindow.get());
    }

    void theActiveWindowIsTheMainOne()
    {
        HostWindow other;
        mWindow->appear();
        other.appear();
        QCOMPARE(mPresenter->applicationMainWindow(), &other);
        mWindow->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(mWindow.get(), Timeout));
        QCOMPARE(mPresenter->applicationMainWindow(), mWindow.get());
    }

    void alertsAndSheetsAreNotMainWindows()
    {
        Sheet sheet;
        mPresenter->beginSheet(&sheet, nullptr, counting());
        QCOMPARE(mPresenter->applicationMainWindow(), nullptr);
        mWindow->appear();
        beginAlert(Failure, mWindow.get());
        waitForTheAlertToHaveTheFocus();
        QCOMPARE(mPresenter->applicationMainWindow(), mWindow.get());
    }

    void aDestroyedWindowRemovesItsAlerts()
    {
        mWindow->appear();
        beginAlert(Failure, mWindow.get());
        const QPointer<QMessageBox> box = theAlert();
        mWindow.reset();
        QTRY_VERIFY_WITH_TIMEOUT(box.isNull(), Timeout);
        QCOMPARE(mEnded, 0);
    }

    void aSheetIsVisibleUntilItIsEnded()
    {
        mWindow->appear();
        Sheet sheet;
        mPresenter->beginSheet(&sheet, mWindow.get(), counting());
        QVERIFY(sheet.isVisible());
        QVERIFY(hangsOn(&sheet, mWindow.get()));
        QTest::keyClick(&sheet, Qt::Key_Escape);
        QVERIFY2(sheet.isVisible(), "without a cancel action Escape does nothing");
        mPresenter->endSheet(&sheet);
        QCOMPARE(mEnded, 1);
        QVERIFY(!sheet.isVisible());
    }

    void aSheetIsNoWiderThanItsWindow()
    {
        mWindow->appear();
        Sheet sheet;
        QVBoxLayout layout(&sheet);
        QLabel label(QStringLiteral("Some words that are wrapped where the sheet is narrow. ").repeated(3));
        label.setWordWrap(true);
        layout.addWidget(&label);
        sheet.setWantedWidth(500);
        for (const int width : {300, 600}) {
            mWindow->resize(width, 400);
            mPresenter->beginSheet(&sheet, mWindow.get(), counting());
            QCOMPARE(sheet.width(), std::min(width, 500));
            mPresenter->endSheet(&sheet);
        }
    }

    void aSheetIsBegunOnce()
    {
        mWindow->appear();
        Sheet sheet;
        mPresenter->beginSheet(&sheet, mWindow.get(), counting());
        mPresenter->beginSheet(&sheet, mWindow.get(), counting());
        mPresenter->endSheet(&sheet);
        QVERIFY(!sheet.isVisible());
        mPresenter->endSheet(&sheet);
        QCOMPARE(mEnded, 1);
    }

    void onlyAQuitOfTheHostClosesASheetThatRefuses()
    {
        mWindow->appear();
        HostThatStays host;
        Sheet sheet;
        for (int ended = 1; ended <= 2; ++ended) {
            mWindow->show();
            mPresenter->beginSheet(&sheet, mWindow.get(), counting());
            QVERIFY(!sheet.close());
            QVERIFY(sheet.isVisible());
            host.isToldToQuit([&] {
                QVERIFY(sheet.close());
                QVERIFY(mWindow->close());
            });
            QVERIFY(!sheet.isVisible());
            turnTheLoop();
            QVERIFY(!sheet.isVisible());
            QCOMPARE(mEnded, ended);
        }
    }

    void aQuitThatClosesNothingLeavesTheSheetAsItWas()
    {
        mWindow->appear();
        HostThatStays host;
        Sheet sheet;
        mPresenter->beginSheet(&sheet, mWindow.get(), counting());
        host.isToldToQuit();
        turnTheLoop();
        expectToBeUpAndToRefuse(sheet);
    }

    void aCancelledQuitLeavesTheSheetAsItWas()
    {
        mWindow->appear();
        mWindow->refusesToClose = true;
        Sheet sheet;
        mPresenter->beginSheet(&sheet, mWindow.get(), counting());
        Events hidden(&sheet, QEvent::Hide);
        for (int time = 1; time <= 2; ++time) {
            tellToQuit();
            QVERIFY2(hidden.count == time, "the sheet closes before the window refuses");
            turnTheLoop();
            expectToBeUpAndToRefuse(sheet);
            QVERIFY(hangsOn(&sheet, mWindow.get()));
        }
        mPresenter->endSheet(&sheet);
        QCOMPARE(mEnded, 1);
        QVERIFY(!sheet.isVisible());
    }

    void aCancelledQuitCancelsNoSheet()
    {
        mWindow->appear();
        mWindow->refusesToClose = true;
        Sheet sheet;
        sheet.setCancelAction([&] { mPresenter->endSheet(&sheet); });
        mPresenter->beginSheet(&sheet, mWindow.get(), counting());
        tellToQuit();
        turnTheLoop();
        QVERIFY(sheet.isVisible());
        QCOMPARE(mEnded, 0);
        mPresenter->endSheet(&sheet);
    }

    void aSheetThatEndsDuringAQuitDoesNotComeBack()
    {
        mWindow->appear();
        HostThatStays host;
        Sheet sheet;
        mPresenter->beginSheet(&sheet, mWindow.get(), counting());
        host.isToldToQuit([&] {
            sheet.close();
            mPresenter->endSheet(&sheet);
        });
        turnTheLoop();
        QVERIFY(!sheet.isVisible());
        QCOMPARE(mEnded, 1);
    }

    void aQuitWithAQuestionStillClosesTheSheet()
    {
        mWindow->appear();
        HostThatStays host;
        Sheet sheet;
        mPresenter->beginSheet(&sheet, mWindow.get(), counting());
        inTheEventLoop([&] {
            host.isToldToQuit([&] {
                askInANestedLoop();
                sheet.close();
                mWindow->close();
            });
        });
        turnTheLoop();
        QVERIFY(!sheet.isVisible());
        QCOMPARE(mEnded, 1);
    }

    void aSheetStaysHiddenUntilTheQuitIsDecided()
    {
        mWindow->appear();
        HostThatStays host;
        Sheet sheet;
        mPresenter->beginSheet(&sheet, mWindow.get(), counting());
        bool wasAway = false;
        inTheEventLoop([&] {
            host.isToldToQuit([&] {
                sheet.close();
                askInANestedLoop();
                wasAway = !sheet.isVisible();
            });
        });
        QVERIFY(wasAway);
        turnTheLoop();
        expectToBeUpAndToRefuse(sheet);
    }

    void aQuitEndsTheSheet_data()
    {
        QTest::addColumn<bool>("closesTheWindow");
        QTest::newRow("after all windows have closed") << true;
        QTest::newRow("while the window is visible") << false;
    }
    void aQuitEndsTheSheet()
    {
        QFETCH(bool, closesTheWindow);
        mWindow->appear();
        Sheet sheet;
        mPresenter->beginSheet(&sheet, mWindow.get(), counting());
        QTimer::singleShot(0, qApp, [closesTheWindow] {
            if (closesTheWindow)
                tellToQuit();
            else
                QCoreApplication::exit();
        });
        QCoreApplication::exec();
        QVERIFY(!sheet.isVisible());
        QCOMPARE(mEnded, 1);
        turnTheLoop();
        QVERIFY(!sheet.isVisible());
        QCOMPARE(mEnded, 1);
    }

    void aSheetThatAQuitHasClosedStaysHiddenWhenTheHostEnds()
    {
        mWindow->appear();
        HostThatStays host;
        Sheet sheet;
        mPresenter->beginSheet(&sheet, mWindow.get(), counting());
        Events shown(&sheet, QEvent::Show);
        QTimer::singleShot(0, qApp, [&] {
            host.isToldToQuit([&] { sheet.close(); });
            // The event loop ends here, so Qt delivers the deferred deletes after aboutToQuit.
            QCoreApplication::exit();
        });
        QCoreApplication::exec();
        turnTheLoop();
        QCOMPARE(shown.count, 0);
        QVERIFY(!sheet.isVisible());
        QCOMPARE(mEnded, 1);
    }

    void noWidgetBehindASheetBecomesNative()
    {
        mWindow->appear();
        Sheet sheet(mWindow->centralWidget());
        mPresenter->beginSheet(&sheet, mWindow.get(), counting());
        beginAlert(Failure, mWindow.get());
        QVERIFY(hangsOn(&sheet, mWindow.get()));
        QVERIFY(hangsOn(theAlert(), mWindow.get()));
        const auto widgets = mWindow->findChildren<QWidget *>();
        for (const auto *widget : widgets) {
            QVERIFY2(!widget->testAttribute(Qt::WA_NativeWindow), widget->metaObject()->className());
            QVERIFY2(widget->isWindow() || !widget->windowHandle(), widget->metaObject()->className());
        }
        mPresenter->endSheet(&sheet);
    }

    void aSheetFollowsItsViewIntoAnotherWindow()
    {
        auto *view = new QWidget;
        auto *sheet = new Sheet(view);
        for (int time = 0; time < 2; ++time) {
            QMainWindow window;
            window.setCentralWidget(view);
            window.show();
            mPresenter->beginSheet(sheet, &window, counting());
            QVERIFY(hangsOn(sheet, &window));
            mPresenter->endSheet(sheet);
            window.takeCentralWidget();
        }
        delete view;
    }

    void sheetsAndAlertsHaveNoButtonsThatMinimiseOrMaximise()
    {
        mWindow->appear();
        Sheet sheet;
        mPresenter->beginSheet(&sheet, mWindow.get(), counting());
        beginAlert(Failure, mWindow.get());
        for (const QWidget *dialog : {static_cast<QWidget *>(&sheet), static_cast<QWidget *>(theAlert())}) {
            QVERIFY(dialog->windowFlags().testFlag(Qt::CustomizeWindowHint));
            QVERIFY(!(dialog->windowFlags() & Qt::WindowMinMaxButtonsHint));
            QVERIFY(dialog->windowFlags().testFlag(Qt::WindowCloseButtonHint));
        }
        mPresenter->endSheet(&sheet);
    }

    void onlyAnErrorHasAWarningSign()
    {
        mWindow->appear();
        beginAlert(Failure, mWindow.get());
        QCOMPARE(theAlert()->icon(), QMessageBox::Warning);
        QTest::keyClick(theAlert(), Qt::Key_Escape);
        auto news = OtherFailure;
        news.kind = platform::AlertKind::Information;
        beginAlert(news, mWindow.get());
        QCOMPARE(theAlert()->icon(), QMessageBox::Information);
    }

    void anAlertIsNoWiderThanItsWindow()
    {
        mWindow->appear();
        mWindow->resize(300, 400);
        const auto words = QStringLiteral("Some words. ").repeated(20);
        beginAlert({QStringLiteral("T"), QStringLiteral("OK"), words}, mWindow.get());
        QVERIFY2(theAlert()->width() <= 300, qPrintable(QString::number(theAlert()->width())));
    }

    void anAlertIsAsWideAsASentence()
    {
        mWindow->appear();
        mWindow->resize(700, 400);
        const auto sentence = QStringLiteral("A sentence of some length that says what happened.");
        beginAlert({QStringLiteral("T"), QStringLiteral("OK"), sentence}, mWindow.get());
        const auto *label = theAlert()->findChild<QLabel *>(QStringLiteral("qt_msgbox_informativelabel"));
        constexpr int AnyWidth = 10000;
        QCOMPARE(label->heightForWidth(label->width()), label->heightForWidth(AnyWidth));
        QTest::keyClick(theAlert(), Qt::Key_Escape);
        beginAlert({QStringLiteral("T"), QStringLiteral("OK"), sentence.repeated(50)}, mWindow.get());
        QVERIFY2(theAlert()->width() < theAlert()->screen()->availableSize().width(),
                 "a long text is wrapped");
        QTest::keyClick(theAlert(), Qt::Key_Escape);
        beginAlert({QStringLiteral("T"), QStringLiteral("OK"), QString()}, mWindow.get());
        QVERIFY2(theAlert(), "an alert may have no message");
    }

    void theCloseButtonCancels()
    {
        mWindow->appear();
        Sheet sheet;
        sheet.setCancelAction([&] { mPresenter->endSheet(&sheet); });
        mPresenter->beginSheet(&sheet, mWindow.get(), counting());
        QVERIFY(sheet.close());
        QVERIFY(!sheet.isVisible());
        QCOMPARE(mEnded, 1);
    }

    void theEndHandlerRunsWhileTheSheetIsVisible()
    {
        mWindow->appear();
        Sheet sheet;
        bool wasVisible = false;
        int code = -1;
        mPresenter->beginSheet(&sheet, mWindow.get(), [&](QWidget *ended, int returnCode, void *) {
            wasVisible = ended->isVisible();
            code = returnCode;
            ended->hide();
        });
        mPresenter->endSheet(&sheet);
        QVERIFY(wasVisible);
        QCOMPARE(code, 0);
        QTRY_VERIFY_WITH_TIMEOUT(mWindow->field.hasFocus(), Timeout);
    }

    void aSheetThatEndsInAnInactiveWindowActivatesNothing_data()
    {
        QTest::addColumn<bool>("hasAnotherSheet");
        QTest::newRow("the window's only sheet") << false;
        QTest::newRow("one sheet of two") << true;
    }
    void aSheetThatEndsInAnInactiveWindowActivatesNothing()
    {
        QFETCH(bool, hasAnotherSheet);
        mWindow->appear();
        mWindow->button.setFocus();
        Sheet other;
        Sheet sheet;
        if (hasAnotherSheet)
            mPresenter->beginSheet(&other, mWindow.get(), counting());
        mPresenter->beginSheet(&sheet, mWindow.get(), counting());
        HostWindow elsewhere;
        elsewhere.appear();
        mPresenter->endSheet(&sheet);
        turnTheLoop();
        QCOMPARE(QApplication::activeWindow(), &elsewhere);
        QVERIFY(elsewhere.field.hasFocus());
        QCOMPARE(mWindow->focusWidget(), &mWindow->button);
    }

    void endingASheetThatIsNotVisibleDoesNothing()
    {
        Sheet sheet;
        mPresenter->endSheet(&sheet);
        mPresenter->endSheet(nullptr);
        mPresenter->beginSheet(&sheet, mWindow.get(), counting());
        mPresenter->endSheet(&sheet);
        mPresenter->endSheet(&sheet);
        QCOMPARE(mEnded, 1);
    }

    void aSheetMayBeBegunAgainFromItsEnd()
    {
        mWindow->appear();
        Sheet sheet;
        mPresenter->beginSheet(&sheet, mWindow.get(), [&](QWidget *, int, void *) {
            mPresenter->beginSheet(&sheet, mWindow.get(), counting());
        });
        mPresenter->endSheet(&sheet);
        QVERIFY(sheet.isVisible());
        mPresenter->endSheet(&sheet);
        QCOMPARE(mEnded, 1);
    }

    void aSheetOutlivesItsWindow()
    {
        mWindow->appear();
        Sheet sheet;
        mPresenter->beginSheet(&sheet, mWindow.get(), counting());
        mWindow.reset();
        QVERIFY(!sheet.isVisible());
        mPresenter->endSheet(&sheet);
        QCOMPARE(mEnded, 0);
        mWindow = std::make_unique<HostWindow>();
        mWindow->appear();
        mPresenter->beginSheet(&sheet, mWindow.get(), counting());
        mPresenter->endSheet(&sheet);
        QCOMPARE(mEnded, 1);
    }

    void aDestroyedSheetIsForgotten()
    {
        mWindow->appear();
        auto sheet = std::make_unique<Sheet>();
        mPresenter->beginSheet(sheet.get(), mWindow.get(), counting());
        sheet.reset();
        beginAlert(Failure, mWindow.get());
        QTest::keyClick(theAlert(), Qt::Key_Escape);
        QTRY_VERIFY_WITH_TIMEOUT(mWindow->field.hasFocus(), Timeout);
        QCOMPARE(mEnded, 1);
    }

    void anAlertOverASheetGivesTheFocusBackToTheSheet()
    {
        mWindow->appear();
        Sheet sheet;
        mPresenter->beginSheet(&sheet, mWindow.get(), counting());
        beginAlert(Failure, mWindow.get());
        waitForTheAlertToHaveTheFocus();
        QTest::keyClick(theAlert(), Qt::Key_Escape);
        QTRY_COMPARE_WITH_TIMEOUT(QApplication::activeWindow(), static_cast<QWidget *>(&sheet), Timeout);
        QVERIFY(sheet.isVisible());
    }
};

QTEST_MAIN(QtSheetPresenterTest)

#include "QtSheetPresenter_test.moc"
