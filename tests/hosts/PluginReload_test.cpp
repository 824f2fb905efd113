#include "pane/PreferencePane.h"
#include "tests/support/Timeout.h"

#include <QFile>
#include <QPluginLoader>
#include <QTest>
#include <QVBoxLayout>
#include <QWidget>

/// Tests the real plug-in in a host that unloads plug-ins.
class PluginReloadTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void thePaneSurvivesTheUnloadingOfItsPlugin();

private:
    static QString plugin()
    {
        return qEnvironmentVariable("KS7_BUILD") + QStringLiteral("/plugins/ks7/ks7pane.so");
    }
    static platform::PreferencePane *paneOf(QPluginLoader &loader);
};

void PluginReloadTest::initTestCase()
{
    // The agent's program does not exist, so loading and showing the pane open only the error sheet.
    qputenv("KS7_AGENT", "/nonexistent");
}

platform::PreferencePane *PluginReloadTest::paneOf(QPluginLoader &loader)
{
    auto *factory = qobject_cast<platform::PreferencePaneFactory *>(loader.instance());
    return factory ? factory->pane() : nullptr;
}

void PluginReloadTest::thePaneSurvivesTheUnloadingOfItsPlugin()
{
    QPluginLoader loader(plugin());
    auto *pane = paneOf(loader);
    QVERIFY2(pane, qPrintable(loader.errorString()));
    QWidget window;
    (new QVBoxLayout(&window))->addWidget(pane->mainView());
    window.show();
    auto *table = pane->mainView()->findChild<QWidget *>(QStringLiteral("cameraListTable"));
    auto *button = pane->mainView()->findChild<QWidget *>(QStringLiteral("addButton"));
    pane->willSelect();
    button->setFocus();
    loader.unload();
    // The library must stay mapped, because GLib keeps the types that the library has registered until the
    // process ends.
    QFile mapped(QStringLiteral("/proc/self/maps"));
    QVERIFY(mapped.open(QIODevice::ReadOnly));
    QVERIFY(mapped.readAll().contains("ks7pane.so"));
    // A timer gives the table the focus a moment after the pane was shown. Here the timer fires after
    // unload(), which must not crash.
    QTRY_COMPARE_WITH_TIMEOUT(window.focusWidget(), table, Timeout);
    QPluginLoader again(plugin());
    QCOMPARE(paneOf(again), pane);
    pane->didUnselect();
    pane->willSelect();
    QCoreApplication::processEvents();
    pane->didUnselect();
    pane->mainView()->setParent(nullptr);
    QVERIFY(again.unload());
}

QTEST_MAIN(PluginReloadTest)
#include "PluginReload_test.moc"
