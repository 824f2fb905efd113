#pragma once

#include <QCommandLineParser>

/// The program's command line. Its texts use the translators that are installed when it is constructed.
class CommandLine : public QCommandLineParser {
    Q_DECLARE_TR_FUNCTIONS(ks7_preferences)
public:
    CommandLine();

    /// Whether the options only print text, which needs no display.
    [[nodiscard]] bool asksForText(int argc, char **argv);
    [[nodiscard]] bool asksForDiagnosis() const { return isSet(mDiagnose); }

private:
    QCommandLineOption mHelp;
    QCommandLineOption mVersion;
    QCommandLineOption mDiagnose;
};
