#include "about/KS7AboutBoxWindow.h"
#include "agent/NotificationNames.h"
#include "tests/support/PaneFixture.h"

#include <QApplication>
#include <QLabel>
#include <QLocale>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QTest>

namespace Names = NotificationNames;

namespace {

/// A screen of 800x600 pixels at 200 %, in logical pixels.
constexpr QSize SmallScreen(400, 300);
/// Room for a window manager's title bar.
constexpr int TitleBar = 28;

} // namespace

/// Tests that alerts and the about box fit into a small screen. This test's own screen is 400 pixels wide.
class SmallScreenTest : public QObject {
    Q_OBJECT

    std::unique_ptr<PaneFixture> mFixture;
    QWidget mHostWindow;

    static void inEachLanguage()
    {
        QTest::addColumn<QString>("language");
        QTest::newRow("English") << QStringLiteral("en_US");
        QTest::newRow("German") << QStringLiteral("de_DE");
    }

    void loadPane()
    {
        QFETCH(QString, language);
        QLocale::setDefault(QLocale(language));
        mFixture = std::make_unique<PaneFixture>();
        mFixture->load();
    }

    /// The words of all alerts that the pane shows.
    QList<platform::AlertSheet> allAlerts()
    {
        auto &controller = mFixture->controller();
        mFixture->agent.addCamera(QStringLiteral("a"), QStringLiteral("Kitchen"), 4);
        mFixture->agent.prefer(QStringLiteral("a"));
        mFixture->show();
        controller.displayAgentError();
        controller.displayBluetoothError();
        controller.qtError(-2147483647);
        controller.pinError(-2147483647);
        controller.changePIN(nullptr);
        mFixture->agent.everyAddressIsAtTheCable = true;
        controller.changePIN(nullptr);
        mFixture->agentPosts(
            Names::PassKeySet,
            {{QStringLiteral("Result"), 0}, {QStringLiteral("PassKey"), QStringLiteral("1234567890123456")}});
        QList<platform::AlertSheet> alerts;
        for (const auto &shown : mFixture->sheets->alerts)
            alerts.append(shown.alert);
        return alerts;
    }

    static QMessageBox *shownAlert()
    {
        const auto widgets = QApplication::topLevelWidgets();
        for (auto *widget : widgets) {
            if (auto *box = qobject_cast<QMessageBox *>(widget); box && box->isVisible())
                return box;
        }
        return nullptr;
    }

    static void expectToFit(const QWidget &dialog)
    {
        const auto size = dialog.size();
        const auto found =
            QStringLiteral("%1x%2: %3").arg(size.width()).arg(size.height()).arg(dialog.windowTitle());
        QVERIFY2(size.width() <= SmallScreen.width(), qPrintable(found));
        QVERIFY2(size.height() <= SmallScreen.height() - TitleBar, qPrintable(found));
        const auto labels = dialog.findChildren<QLabel *>();
        for (const auto *label : labels) {
            if (!label->isVisible())
                continue;
            expectToBeInside(dialog, *label, label->text());
            expectToShowItsText(*label);
        }
        const auto buttons = dialog.findChildren<QPushButton *>();
        for (const auto *button : buttons) {
            expectToBeInside(dialog, *button, button->text());
            QVERIFY2(button->width() >= button->sizeHint().width(), qPrintable(button->text()));
        }
    }

    static void expectToBeInside(const QWidget &dialog, const QWidget &part, const QString &text)
    {
        const QRect place(part.mapTo(&dialog, QPoint()), part.size());
        QVERIFY2(dialog.rect().contains(place), qPrintable(text));
    }

    static void expectToShowItsText(const QLabel &label)
    {
        const auto size = label.size();
        const auto found = QStringLiteral("%1x%2: %3").arg(size.width()).arg(size.height()).arg(label.text());
        QVERIFY2(size.width() >= label.minimumSizeHint().width(), qPrintable(found));
        if (label.hasHeightForWidth())
            QVERIFY2(size.height() >= label.heightForWidth(size.width()), qPrintable(found));
    }

public:
    /// QTEST_MAIN calls initMain() before it constructs the application. The function must be public for
    /// that.
    static void initMain() { qputenv("QT_SCALE_FACTOR", "2"); }

private Q_SLOTS:
    void initTestCase()
    {
        QCOMPARE(QGuiApplication::primaryScreen()->availableSize().width(), SmallScreen.width());
        // A window may be wider than its screen.
        mHostWindow.resize(2 * SmallScreen.width(), SmallScreen.height());
        mHostWindow.show();
    }
    void cleanup()
    {
        mFixture.reset();
        QLocale::setDefault(QLocale::c());
    }

    void everyAlertFits_data() { inEachLanguage(); }
    void everyAlertFits()
    {
        loadPane();
        const auto presenter = platform::makeQtSheetPresenter();
        const auto alerts = allAlerts();
        QCOMPARE(alerts.size(), 7);
        for (const auto &alert : alerts) {
            presenter->beginAlertSheet(alert, &mHostWindow, [](QWidget *, int, void *) {});
            auto *box = shownAlert();
            QVERIFY(box);
            QCOMPARE(box->informativeText(), alert.message);
            expectToFit(*box);
            box->close();
        }
    }

    void theAboutBoxFits_data() { inEachLanguage(); }
    void theAboutBoxFits()
    {
        loadPane();
        KS7AboutBoxWindow box(&mHostWindow);
        box.awakeFromNib(*mFixture->bundle, mFixture->workspace);
        box.setDiagnosis([] { return QStringLiteral("All is well."); });
        box.show();
        expectToFit(box);
        box.findChild<QPushButton *>(QStringLiteral("aboutCopyButton"))->click();
        QCoreApplication::processEvents();
        expectToFit(box);
    }
};

QTEST_MAIN(SmallScreenTest)
#include "SmallScreen_test.moc"
