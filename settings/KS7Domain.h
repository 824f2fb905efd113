#pragma once

#include "agent/AgentContract.h"

#include <QString>
#include <QVariant>

namespace platform {
class UserDefaults;
}

/// Access to the agent's preferences domain, which holds every setting that the pane shows.
namespace KS7Domain {

/// The value that this process has set and not yet written, else the stored one. Returns an invalid variant
/// if the domain or the key is absent.
QVariant domainObjectForKey(platform::UserDefaults &defaults, const QString &key);
/// Changes one value of the domain in memory; synchronize() writes the whole domain to disk. If the domain
/// does not exist, it is not created and the value is dropped.
void domainSetObject(platform::UserDefaults &defaults, const QVariant &value, const QString &forKey);
/// Returns true for any number other than 0, and `absent` if the domain has no such key.
bool boolForKey(platform::UserDefaults &defaults, const QString &key, bool absent);

} // namespace KS7Domain
