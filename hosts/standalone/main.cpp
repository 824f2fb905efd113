#include "hosts/standalone/CommandLine.h"
#include "hosts/standalone/HostIcon.h"
#include "hosts/standalone/HostWindow.h"
#include "hosts/standalone/PanePluginLoader.h"
#include "hosts/standalone/PrefPanesManager.h"
#include "hosts/standalone/Translators.h"
#include "pane/PreferencePane.h"

#include <QApplication>
#include <QIcon>
#include <QMessageBox>
#include <QTextStream>

namespace {

/// The translation context of the texts in this file.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(ks7_preferences)
};

/// Tells the user why the pane cannot be loaded, in a message box and on standard error. Returns the exit
/// code.
int refuse(const QString &reason)
{
    const QString text = Words::tr("The KS-7 pane cannot be loaded.");
    QTextStream(stderr) << "ks7-preferences: " << text << ' ' << reason << Qt::endl;
    QMessageBox box(QMessageBox::Critical, Words::tr("KS-7"), text, QMessageBox::Ok);
    box.setInformativeText(reason);
    box.exec();
    return 1;
}

/// Prints the text for --help, --version or --diagnose. Returns the exit code for --diagnose; for the other
/// two, process() exits the program.
int printText(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const Translators translators;
    CommandLine().process(application);
    PanePluginLoader loader;
    if (!loader.factory()) {
        QTextStream(stderr) << "ks7-preferences: " << loader.error() << Qt::endl;
        return 1;
    }
    QTextStream(stdout) << loader.factory()->diagnose() << Qt::flush;
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication::setApplicationName(QStringLiteral("ks7-preferences"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KS7_VERSION));
    if (CommandLine().asksForText(argc, argv))
        return printText(argc, argv);
    PanePluginLoader loader;
    if (loader.factory())
        loader.factory()->prepareProcess();
    const QApplication application(argc, argv);
    const Translators translators;
    CommandLine().process(application);
    QGuiApplication::setDesktopFileName(QStringLiteral("ks7-preferences"));
    QGuiApplication::setWindowIcon(hostIcon());

    if (!loader.factory())
        return refuse(loader.error());
    HostWindow window(loader.factory()->pane());
    const PrefPanesManager manager([&window] { window.showOverview(); });
    window.resize(window.sizeHint());
    window.show();
    return QApplication::exec();
}
