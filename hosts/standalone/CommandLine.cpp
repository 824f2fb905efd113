#include "hosts/standalone/CommandLine.h"

CommandLine::CommandLine()
    : mHelp(addHelpOption())
    , mVersion(addVersionOption())
    , mDiagnose(QStringLiteral("diagnose"), tr("Prints a description of this machine for a bug report."))
{
    setApplicationDescription(tr("Shows the settings of the KS-7 wireless webcam."));
    setSingleDashWordOptionMode(ParseAsLongOptions);
    addOption(mDiagnose);
}

bool CommandLine::asksForText(int argc, char **argv)
{
    QStringList arguments;
    for (int index = 0; index < argc; ++index)
        arguments << QString::fromLocal8Bit(argv[index]);
    parse(arguments);
    return isSet(mHelp) || isSet(mVersion) || asksForDiagnosis();
}
