#pragma once

#include "platform/preferences/PropertyList.h"

#include <QString>

namespace agent_check {

/// The agent's preferences file.
QString preferencesFile();

/// The file as it is now.
struct Preferences {
    /// Why it cannot be read; empty when it can.
    QString problem;
    platform::PropertyListDictionary values;

    static Preferences read();
    /// Replaces the file; empty, or why not.
    [[nodiscard]] QString write() const;
    /// True when the key is absent, as for the pane.
    [[nodiscard]] bool isOn(const QString &key) const;
};

/// Whether the file switches the camera service on.
bool isServiceOn();

} // namespace agent_check
