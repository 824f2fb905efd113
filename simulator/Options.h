#pragma once

#include "simulator/picture/PictureSettings.h"

#include <QString>

namespace simulator {

enum class Scenario { Demo, Empty, Scripted };

/// The options of the command line.
struct Options {
    Scenario scenario = Scenario::Demo;
    bool quick = false;
    bool picture = true;
    bool pictureOnly = false;
    bool fillsPreferences = true;
    PictureSettings pictureSettings;

    /// Parses the command line. Exits the process after --help and after a wrong option.
    static Options parse(const QStringList &arguments);
};

} // namespace simulator
