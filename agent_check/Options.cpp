#include "agent_check/Options.h"

#include "agent_check/Translation.h"
#include "agent_check/demands/Demand.h"

#include <QCommandLineParser>

#include <cstdio>
#include <cstdlib>

namespace agent_check {

namespace {

constexpr int MostSlowness = 100;

[[noreturn]] void complain(const QString &text)
{
    std::fprintf(stderr, "ks7-agent-check: %s\n", qUtf8Printable(text));
    std::exit(CannotCheck);
}

QList<QCommandLineOption> declaredOptions()
{
    return {
        {QStringLiteral("launch"), Translation::tr("Starts this program, checks it, and ends it."),
         QStringLiteral("program")},
        {QStringLiteral("allow-changes"),
         Translation::tr("Also checks demands that change something. Renames, hides, prefers and finally "
                         "removes this camera. Writes its firmware if it is on the USB cable and needs an "
                         "update. Changes settings and restores them."),
         QStringLiteral("address")},
        {QStringLiteral("passkey"),
         Translation::tr("With --allow-changes: the new passkey of the camera on the USB cable."),
         QStringLiteral("digits")},
        {QStringLiteral("only"),
         Translation::tr("Checks this group; may be repeated. Groups: %1.")
             .arg(groupNames().join(QStringLiteral(", "))),
         QStringLiteral("group")},
        {QStringLiteral("slow"), Translation::tr("Multiplies every time limit by this factor."),
         QStringLiteral("factor"), QStringLiteral("1")},
        {QStringLiteral("json"), Translation::tr("Prints one JSON object.")},
    };
}

int slownessFrom(const QString &text)
{
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (!isNumber || number < 1 || number > MostSlowness)
        complain(
            Translation::tr("--slow takes a number from 1 to %1, not \"%2\".").arg(MostSlowness).arg(text));
    return number;
}

QStringList groupsFrom(const QStringList &names)
{
    for (const QString &name : names) {
        if (!groupNames().contains(name))
            complain(Translation::tr("There is no group \"%1\".").arg(name));
    }
    return names;
}

} // namespace

bool Options::wantsJson(const QStringList &arguments)
{
    return arguments.contains(QStringLiteral("--json"));
}

Options Options::parse(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(Translation::tr(
        "Checks a KS-7 camera agent against its contract, one line for each demand.\n"
        "Without --allow-changes it changes no camera and no setting, but asks for one search.\n"
        "Exit code: 0 nothing failed, 1 a demand failed, 2 nothing could be checked."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOptions(declaredOptions());
    if (!parser.parse(arguments) || !parser.positionalArguments().isEmpty())
        complain(parser.errorText().isEmpty() ? Translation::tr("There are too many arguments.")
                                              : parser.errorText());
    parser.process(arguments);
    Options options;
    options.launch = parser.value(QStringLiteral("launch"));
    options.camera = parser.value(QStringLiteral("allow-changes"));
    options.passKey = parser.value(QStringLiteral("passkey"));
    options.groups = groupsFrom(parser.values(QStringLiteral("only")));
    options.slowness = slownessFrom(parser.value(QStringLiteral("slow")));
    options.json = parser.isSet(QStringLiteral("json"));
    return options;
}

} // namespace agent_check
