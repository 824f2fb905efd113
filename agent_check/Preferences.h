#pragma once

#include "platform/preferences/PropertyList.h"

#include <QString>

namespace agent_check {

/// The agent's preferences file.
QString preferencesFile();

/// The contents of the file when it was read.
struct Preferences {
    /// The reason why the file cannot be read; empty after a successful read.
    QString problem;
    platform::PropertyListDictionary values;

    static Preferences read();
    /// Replaces the file. Returns the reason of a failure, or an empty text.
    [[nodiscard]] QString write() const;
    /// An absent key counts as true, as in the pane.
    [[nodiscard]] bool isOn(const QString &key) const;
};

/// Whether the file switches the camera service on.
bool isServiceOn();

} // namespace agent_check
