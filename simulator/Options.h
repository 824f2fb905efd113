#pragma once

#include "simulator/picture/PictureSettings.h"

#include <QString>

namespace simulator {

enum class Scenario { Demo, Empty, Scripted };

/// The parsed command line.
struct Options {
    Scenario scenario = Scenario::Demo;
    bool quick = false;
    bool picture = true;
    bool pictureOnly = false;
    bool fillsPreferences = true;
    PictureSettings pictureSettings;

    /// Exits the process after --help or a wrong option.
    static Options parse(const QStringList &arguments);
};

} // namespace simulator
