#include "about/KS7AboutBoxWindow.h"
#include "platform/sheets/Sheets.h"
#include "tests/support/PaneFixture.h"
#include "tests/support/Timeout.h"

#include <QAction>
#include <QApplication>
#include <QDialogButtonBox>
#include <QMenu>
#include <QProxyStyle>
#include <QPushButton>
#include <QTest>
#include <QToolButton>

#include <algorithm>

Q_DECLARE_METATYPE(QDialogButtonBox::ButtonLayout)

namespace {

/// Qt's style with the button order of a given desktop.
class DesktopsStyle final : public QProxyStyle {
public:
    explicit DesktopsStyle(QDialogButtonBox::ButtonLayout order)
        : mOrder(order)
    {
    }
    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *result) const override
    {
        return hint == SH_DialogButtonLayout ? mOrder : QProxyStyle::styleHint(hint, option, widget, result);
    }

private:
    QDialogButtonBox::ButtonLayout mOrder;
};

} // namespace

/// Tests that the buttons of each sheet stand in the order of the desktop.
class SheetButtonsTest : public QObject {
    Q_OBJECT

    std::unique_ptr<PaneFixture> mFixture;

    Outlets &outlets() { return mFixture->outlets(); }

    void openOn(QDialogButtonBox::ButtonLayout order)
    {
        QApplication::setStyle(new DesktopsStyle(order));
        mFixture = std::make_unique<PaneFixture>();
        mFixture->show();
    }

    static bool showDialog(QWidget *dialog)
    {
        dialog->show();
        return QTest::qWaitForWindowExposed(dialog, Timeout);
    }

    /// Object names from left to right.
    static QStringList buttonsOf(const QWidget *dialog)
    {
        auto buttons = dialog->findChildren<QPushButton *>();
        std::sort(buttons.begin(), buttons.end(), [](const QWidget *one, const QWidget *other) {
            return one->mapToGlobal(QPoint()).x() < other->mapToGlobal(QPoint()).x();
        });
        QStringList names;
        for (const auto *button : buttons)
            names.append(button->objectName());
        return names;
    }

    /// Turns "Okay Cancel" into the object names of a sheet's buttons, which begin with the sheet's name.
    static QStringList named(const char *beginning, const QString &words)
    {
        QStringList names;
        for (const auto &word : words.split(QLatin1Char(' ')))
            names.append(QLatin1String(beginning) + word + QLatin1String("Button"));
        return names;
    }

    QDialog *openAboutBox()
    {
        outlets().pulldownMenu->menu()->actions().last()->trigger();
        return mFixture->window.findChild<KS7AboutBoxWindow *>();
    }

    static void eachDesktop()
    {
        QTest::addColumn<QDialogButtonBox::ButtonLayout>("order");
        QTest::addColumn<bool>("isCancelFirst");
        QTest::newRow("GNOME") << QDialogButtonBox::GnomeLayout << true;
        QTest::newRow("KDE") << QDialogButtonBox::KdeLayout << false;
    }

private Q_SLOTS:
    void cleanup() { mFixture.reset(); }

    void buttonsKeepTheirNamesInEachOrder_data() { eachDesktop(); }
    void buttonsKeepTheirNamesInEachOrder()
    {
        QFETCH(QDialogButtonBox::ButtonLayout, order);
        QFETCH(bool, isCancelFirst);
        openOn(order);
        const auto okay = isCancelFirst ? QStringLiteral("Cancel Okay") : QStringLiteral("Okay Cancel");
        const auto next =
            isCancelFirst ? QStringLiteral("Cancel Continue") : QStringLiteral("Continue Cancel");
        for (QWidget *sheet : {outlets().propertiesSheet, outlets().pinSheet, outlets().firmwareSheet})
            QVERIFY(showDialog(sheet));
        QCOMPARE(buttonsOf(outlets().propertiesSheet), named("properties", okay));
        QCOMPARE(buttonsOf(outlets().pinSheet), named("pin", okay));
        QCOMPARE(buttonsOf(outlets().firmwareSheet), named("firmware", next));
        auto *about = openAboutBox();
        QVERIFY(about && showDialog(about));
        QCOMPARE(buttonsOf(about), named("about", QStringLiteral("Copy Okay")));
    }

    void continueKeepsItsPlaceInEachOrder_data() { eachDesktop(); }
    void continueKeepsItsPlaceInEachOrder()
    {
        QFETCH(QDialogButtonBox::ButtonLayout, order);
        openOn(order);
        QVERIFY(showDialog(outlets().firmwareSheet));
        const auto place = outlets().firmwareContinueButton->geometry();
        outlets().firmwareCancelButton->hide();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        QCOMPARE(outlets().firmwareContinueButton->geometry(), place);
    }

    void returnAcceptsInEachOrder_data() { eachDesktop(); }
    void returnAcceptsInEachOrder()
    {
        QFETCH(QDialogButtonBox::ButtonLayout, order);
        openOn(order);
        for (QPushButton *button : {outlets().pinOkayButton, outlets().firmwareContinueButton}) {
            QVERIFY(showDialog(button->window()));
            QVERIFY2(button->isDefault(), qPrintable(button->objectName()));
        }
    }
};

QTEST_MAIN(SheetButtonsTest)
#include "SheetButtons_test.moc"
