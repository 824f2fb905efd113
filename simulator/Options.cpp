#include "simulator/Options.h"

#include <QCommandLineParser>
#include <QFile>

#include <cstdio>
#include <cstdlib>

namespace simulator {

namespace {

const char *const Description =
    R"(A stand-in for the KS-7 camera agent. It serves the agent's two objects on the session bus, posts the
agent's notifications, handles those of the settings pane, and keeps the agent's preferences file.

The demo starts with two cameras. "Kitchen" pairs, starts and streams within some seconds; "Desk" is out of
reach and stays "Not Found". Then "Workshop" is plugged in by USB and needs a firmware update. A search takes
four seconds and finds one more camera. A camera pairs, starts and streams when it becomes the preferred one.
A camera on the USB cable stays "Not Streaming", because passkey and firmware changes need that.

Failures in the demo: passkey 0000 is refused at once (code -104), 9999 is refused later (-105). The first
firmware update succeeds; some seconds later, the camera restarts and needs another one. Every second update
fails half-way (-107). Other codes: -101 no camera on the USB cable, -102 an update is running, -103 not a
passkey, -106 no update needed, -108 unplugged during the update.

One PipeWire node of class Video/Source shows a moving picture with the name of the camera that streams. The
picture is black while no camera streams. Without PipeWire, everything but the picture works.

Tests control it through the D-Bus interface com.orvex.KS7AgentSimulator at /com/orvex/KS7AgentSimulator.
These shell commands do the same: they add a camera, let it stream, and end the agent.

)";

/// Returns the example commands that --help and the manual page print.
QString shellLines()
{
    QFile file(QStringLiteral(":/simulator/ShellLines.txt"));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

[[noreturn]] void complain(const QString &text)
{
    std::fprintf(stderr, "ks7-agent-simulator: %s\n", qUtf8Printable(text));
    std::exit(EXIT_FAILURE);
}

int numberFrom(const QString &text, int least, int most, const QString &option)
{
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (!isNumber || number < least || number > most)
        complain(QStringLiteral("%1 takes numbers from %2 to %3, not \"%4\"")
                     .arg(option, QString::number(least), QString::number(most), text));
    return number;
}

Scenario scenarioFrom(const QString &name)
{
    if (name == QStringLiteral("demo"))
        return Scenario::Demo;
    if (name == QStringLiteral("empty"))
        return Scenario::Empty;
    if (name != QStringLiteral("scripted"))
        complain(QStringLiteral("no such scenario: ") + name);
    return Scenario::Scripted;
}

void readSize(const QString &text, PictureSettings &settings)
{
    const QStringList sides = text.split(QLatin1Char('x'));
    if (sides.size() != 2)
        complain(QStringLiteral("--size takes WIDTHxHEIGHT, not \"%1\"").arg(text));
    settings.width = numberFrom(sides.at(0), 16, 4096, QStringLiteral("--size"));
    settings.height = numberFrom(sides.at(1), 16, 4096, QStringLiteral("--size"));
}

PictureSettings pictureFrom(const QCommandLineParser &parser)
{
    PictureSettings settings;
    settings.nodeName = parser.value(QStringLiteral("node-name"));
    settings.nodeDescription = parser.value(QStringLiteral("node-description"));
    readSize(parser.value(QStringLiteral("size")), settings);
    settings.framerate =
        numberFrom(parser.value(QStringLiteral("framerate")), 1, 240, QStringLiteral("--framerate"));
    return settings;
}

void declare(QCommandLineParser &parser)
{
    const PictureSettings picture;
    const auto size = QStringLiteral("%1x%2").arg(picture.width).arg(picture.height);
    parser.setApplicationDescription(QString::fromUtf8(Description) + shellLines());
    parser.addHelpOption();
    parser.addOptions({
        {QStringLiteral("scenario"),
         QStringLiteral(
             "demo (the default), empty (no cameras yet), or scripted (no cameras; cameras appear, "
             "connect and fail only on commands through the D-Bus interface)."),
         QStringLiteral("name"), QStringLiteral("demo")},
        {QStringLiteral("quick"), QStringLiteral("Divides all durations by twenty.")},
        {QStringLiteral("no-preferences"),
         QStringLiteral("Does not write missing preferences at the start.")},
        {QStringLiteral("no-picture"), QStringLiteral("Publishes no picture.")},
        {QStringLiteral("picture-only"), QStringLiteral("Publishes the picture only, without an agent.")},
        {QStringLiteral("node-name"), QStringLiteral("The picture's node.name."), QStringLiteral("name"),
         picture.nodeName},
        {QStringLiteral("node-description"), QStringLiteral("The picture's node.description."),
         QStringLiteral("text"), picture.nodeDescription},
        {QStringLiteral("size"), QStringLiteral("The picture's size."), QStringLiteral("WxH"), size},
        {QStringLiteral("framerate"), QStringLiteral("Frames per second."), QStringLiteral("number"),
         QString::number(picture.framerate)},
    });
}

} // namespace

Options Options::parse(const QStringList &arguments)
{
    QCommandLineParser parser;
    declare(parser);
    parser.process(arguments);
    Options options;
    options.scenario = scenarioFrom(parser.value(QStringLiteral("scenario")));
    options.quick = parser.isSet(QStringLiteral("quick"));
    options.picture = !parser.isSet(QStringLiteral("no-picture"));
    options.pictureOnly = parser.isSet(QStringLiteral("picture-only"));
    options.fillsPreferences = !parser.isSet(QStringLiteral("no-preferences"));
    options.pictureSettings = pictureFrom(parser);
    return options;
}

} // namespace simulator
