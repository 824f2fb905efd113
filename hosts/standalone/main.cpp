#include "hosts/standalone/HostWindow.h"
#include "hosts/standalone/PrefPanesManager.h"
#include "platform/PreferencePane.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QIcon>
#include <QLocale>
#include <QMessageBox>
#include <QPluginLoader>
#include <QTextStream>
#include <QTranslator>

namespace {

/// Gives this program's own texts a context.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(ks7_preferences)
};

/// Where the plug-in lies beside this program: in a build folder, else as installed.
QString pluginFile()
{
    const QDir here(QCoreApplication::applicationDirPath());
    const QString built = here.filePath(QStringLiteral("../plugins/ks7/ks7pane.so"));
    return QFileInfo::exists(built) ? built
                                    : here.filePath(QStringLiteral(KS7_INSTALLED_PLUGINS "/ks7pane.so"));
}

/// Says in a window and on the standard error output why there is no pane.
int refuse(const QString &reason)
{
    const QString text = Words::tr("The KS-7 pane cannot be loaded.");
    QTextStream(stderr) << "ks7-preferences: " << text << ' ' << reason << Qt::endl;
    QMessageBox box(QMessageBox::Critical, Words::tr("KS-7"), text, QMessageBox::Ok);
    box.setInformativeText(reason);
    box.exec();
    return 1;
}

/// Prints what the pane finds on this machine; 0, or 1 when there is no pane to ask.
int diagnose()
{
    QPluginLoader loader(pluginFile());
    QString report;
    if (!QMetaObject::invokeMethod(loader.instance(), "diagnose", Q_RETURN_ARG(QString, report))) {
        QTextStream(stderr) << "ks7-preferences: " << loader.errorString() << Qt::endl;
        return 1;
    }
    QTextStream(stdout) << report << Qt::flush;
    return 0;
}

/// The program's command line. What only asks a question is answered here, also where there is no display to
/// open a window on, and ends the program.
class CommandLine : public QCommandLineParser {
public:
    CommandLine()
    {
        setApplicationDescription(Words::tr("Shows the settings of the KS-7 wireless webcam."));
        setSingleDashWordOptionMode(ParseAsLongOptions);
        addOption(mDiagnose);
    }

    void answerQuestions(int argc, char **argv)
    {
        QStringList arguments;
        for (int index = 0; index < argc; ++index)
            arguments << QString::fromLocal8Bit(argv[index]);
        parse(arguments);
        if (!isSet(mHelp) && !isSet(mVersion) && !isSet(mDiagnose))
            return;
        const QCoreApplication application(argc, argv);
        process(application);
        std::exit(diagnose());
    }

private:
    QCommandLineOption mHelp = addHelpOption();
    QCommandLineOption mVersion = addVersionOption();
    QCommandLineOption mDiagnose{QStringLiteral("diagnose"),
                                 Words::tr("Prints what the pane finds on this machine, for a bug report.")};
};

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication::setApplicationName(QStringLiteral("ks7-preferences"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KS7_VERSION));
    CommandLine commandLine;
    commandLine.answerQuestions(argc, argv);
    const QApplication application(argc, argv);
    commandLine.process(application);
    QGuiApplication::setDesktopFileName(QStringLiteral("ks7-preferences"));
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/host/ks7-preferences.svg")));

    QTranslator translator;
    if (translator.load(QLocale(), QStringLiteral("ks7"), QStringLiteral("_"), QStringLiteral(":/host")))
        QCoreApplication::installTranslator(&translator);
    QPluginLoader loader(pluginFile());
    auto *factory = qobject_cast<platform::PreferencePaneFactory *>(loader.instance());
    if (!factory)
        return refuse(loader.isLoaded() ? Words::tr("It is something else.") : loader.errorString());
    HostWindow window(factory->pane());
    const PrefPanesManager manager([&window] { window.showOverview(); });
    // Wide enough for the picture beside the list.
    window.resize(window.sizeHint().expandedTo({860, 560}));
    window.show();
    return QApplication::exec();
}
