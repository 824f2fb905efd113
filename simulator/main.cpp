#include "simulator/ExitSignals.h"
#include "simulator/Options.h"
#include "simulator/bus/AgentService.h"
#include "simulator/picture/Picture.h"

#include <QGuiApplication>

#include <cstdio>
#include <cstdlib>

namespace {

int complain(const QString &text)
{
    std::fprintf(stderr, "ks7-agent-simulator: %s\n", qUtf8Printable(text));
    return EXIT_FAILURE;
}

int runAgent(const simulator::Options &options)
{
    const auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return complain(QStringLiteral("there is no session bus"));
    simulator::AgentService agent(options, bus);
    if (const auto why = agent.start())
        return complain(*why);
    return QCoreApplication::exec();
}

int runPicture(const simulator::Options &options)
{
    simulator::Picture picture(options.pictureSettings);
    QObject::connect(&picture, &simulator::Picture::failed, QCoreApplication::instance(),
                     [] { QCoreApplication::exit(EXIT_FAILURE); });
    picture.show(options.pictureSettings.nodeDescription);
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char **argv)
{
    // Drawing text needs a QGuiApplication. The offscreen platform plug-in needs neither a display nor a
    // desktop theme.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qunsetenv("QT_QPA_PLATFORMTHEME");
    const QGuiApplication application(argc, argv);
    const simulator::ExitSignals exitSignals;
    QCoreApplication::setApplicationName(QStringLiteral("ks7-agent-simulator"));
    const auto options = simulator::Options::parse(QCoreApplication::arguments());
    return options.pictureOnly ? runPicture(options) : runAgent(options);
}
