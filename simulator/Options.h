#pragma once

#include "simulator/picture/PictureSettings.h"

#include <QString>

namespace simulator {

enum class Scenario { Demo, Empty, Scripted };

/// What the command line asks for.
struct Options {
    Scenario scenario = Scenario::Demo;
    bool quick = false;
    bool picture = true;
    bool pictureOnly = false;
    bool fillsPreferences = true;
    PictureSettings pictureSettings;

    /// Ends the process with help or a complaint where the command line asks for that.
    static Options parse(const QStringList &arguments);
};

} // namespace simulator
