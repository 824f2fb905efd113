#pragma once

#include <QCommandLineParser>

/// The command line of ks7-preferences. Install the translators first, because the constructor translates the
/// help texts.
class CommandLine : public QCommandLineParser {
    Q_DECLARE_TR_FUNCTIONS(ks7_preferences)
public:
    CommandLine();

    /// Returns whether the program only has to print a text: for --help, --version and --diagnose. Printing
    /// needs no display.
    [[nodiscard]] bool asksForText(int argc, char **argv);
    [[nodiscard]] bool asksForDiagnosis() const { return isSet(mDiagnose); }

private:
    QCommandLineOption mHelp;
    QCommandLineOption mVersion;
    QCommandLineOption mDiagnose;
};
