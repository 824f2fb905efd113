#pragma once

#include "platform/preferences/PropertyList.h"

#include <QString>

namespace agent_check {

/// Returns the path of the agent's preferences file.
QString preferencesFile();

/// The contents of the agent's preferences file at the time of read().
struct Preferences {
    /// The reason why the file could not be read; empty after a successful reading.
    QString problem;
    platform::PropertyListDictionary values;

    static Preferences read();
    /// Replaces the file by these contents. Returns the reason of a failure, or an empty text.
    [[nodiscard]] QString write() const;
    /// Returns the boolean value of a key. Like in the pane, a missing key counts as true.
    [[nodiscard]] bool isOn(const QString &key) const;
};

/// Returns whether the preferences switch the camera service on.
bool isServiceOn();

} // namespace agent_check
