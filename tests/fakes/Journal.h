#pragma once

#include <QStringList>

#include <memory>

/// The calls that the fakes have received, in order. Each line describes one call, such as "remote flush",
/// "post KS7StartDiscovering", "pause 100" or "launch".
using Journal = std::shared_ptr<QStringList>;

/// Appends a line to the journal. Does nothing if the journal is null.
inline void note(const Journal &journal, const QString &line)
{
    if (journal)
        journal->append(line);
}
