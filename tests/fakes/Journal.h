#pragma once

#include <QStringList>

#include <memory>

/// The calls that the fakes received, in order, one line each: "remote flush", "post KS7StartDiscovering",
/// "pause 100", "launch".
using Journal = std::shared_ptr<QStringList>;

/// Appends a line; a null journal records nothing.
inline void note(const Journal &journal, const QString &line)
{
    if (journal)
        journal->append(line);
}
