#pragma once

#include "agent/AgentContract.h"

#include <QString>
#include <QVariant>

namespace platform {
class UserDefaults;
}

/// Access to the agent's preferences domain, which holds every setting that the pane shows.
namespace KS7Domain {

/// The stored value, or the pending one. An invalid variant when domain or key is absent.
QVariant domainObjectForKey(platform::UserDefaults &defaults, const QString &key);
/// Rewrites the whole domain with one value changed, in memory until the next synchronize(). Does not create
/// a domain that does not exist: the value is dropped.
void domainSetObject(platform::UserDefaults &defaults, const QVariant &value, const QString &forKey);
/// Any number that is not zero is on; `absent` when the domain has no such key.
bool boolForKey(platform::UserDefaults &defaults, const QString &key, bool absent);

} // namespace KS7Domain
