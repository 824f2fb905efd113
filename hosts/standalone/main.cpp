#include "hosts/standalone/HostWindow.h"
#include "hosts/standalone/PrefPanesManager.h"
#include "pane/PreferencePane.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QIcon>
#include <QLibraryInfo>
#include <QLocale>
#include <QMessageBox>
#include <QPluginLoader>
#include <QScreen>
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

QString toolkitTranslations()
{
#if QT_VERSION_MAJOR >= 6
    return QLibraryInfo::path(QLibraryInfo::TranslationsPath);
#else
    return QLibraryInfo::location(QLibraryInfo::TranslationsPath);
#endif
}

/// The toolkit's words and this program's, in the language of the session.
class Translators {
public:
    Translators()
    {
        install(mToolkit, QStringLiteral("qtbase"), toolkitTranslations());
        install(mOwn, QStringLiteral("ks7"), QStringLiteral(":/host"));
    }

private:
    static void install(QTranslator &translator, const QString &name, const QString &folder)
    {
        if (translator.load(QLocale(), name, QStringLiteral("_"), folder))
            QCoreApplication::installTranslator(&translator);
    }

    QTranslator mToolkit;
    QTranslator mOwn;
};

/// The program's command line; its words are those of the language that is set when it is made.
class CommandLine : public QCommandLineParser {
public:
    CommandLine()
    {
        setApplicationDescription(Words::tr("Shows the settings of the KS-7 wireless webcam."));
        setSingleDashWordOptionMode(ParseAsLongOptions);
        addOption(mDiagnose);
    }

    /// Whether only a question is asked, which needs no display to open a window on.
    bool asksAQuestion(int argc, char **argv)
    {
        QStringList arguments;
        for (int index = 0; index < argc; ++index)
            arguments << QString::fromLocal8Bit(argv[index]);
        parse(arguments);
        return isSet(mHelp) || isSet(mVersion) || isSet(mDiagnose);
    }

private:
    QCommandLineOption mHelp = addHelpOption();
    QCommandLineOption mVersion = addVersionOption();
    QCommandLineOption mDiagnose{QStringLiteral("diagnose"),
                                 Words::tr("Prints what the pane finds on this machine, for a bug report.")};
};

int answerQuestion(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const Translators translators;
    CommandLine().process(application);
    return diagnose();
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication::setApplicationName(QStringLiteral("ks7-preferences"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KS7_VERSION));
    if (CommandLine().asksAQuestion(argc, argv))
        return answerQuestion(argc, argv);
    const QApplication application(argc, argv);
    const Translators translators;
    CommandLine().process(application);
    QGuiApplication::setDesktopFileName(QStringLiteral("ks7-preferences"));
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/host/ks7-preferences.svg")));

    QPluginLoader loader(pluginFile());
    auto *factory = qobject_cast<platform::PreferencePaneFactory *>(loader.instance());
    if (!factory)
        return refuse(loader.isLoaded() ? Words::tr("It is something else.") : loader.errorString());
    HostWindow window(factory->pane());
    const PrefPanesManager manager([&window] { window.showOverview(); });
    // Wide enough for the picture beside the list, where the screen is.
    window.resize(window.sizeHint().expandedTo({860, 560}).boundedTo(window.screen()->availableSize()));
    window.show();
    return QApplication::exec();
}
