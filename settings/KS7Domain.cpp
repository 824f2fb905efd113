#include "settings/KS7Domain.h"

#include "platform/preferences/UserDefaults.h"

namespace KS7Domain {

QVariant domainObjectForKey(platform::UserDefaults &defaults, const QString &key)
{
    const auto domain = defaults.persistentDomainForName(Name);
    return domain ? domain->value(key) : QVariant();
}

void domainSetObject(platform::UserDefaults &defaults, const QVariant &value, const QString &forKey)
{
    auto domain = defaults.persistentDomainForName(Name);
    if (domain)
        domain->setValue(forKey, value);
    defaults.setPersistentDomain(domain, Name);
}

bool boolForKey(platform::UserDefaults &defaults, const QString &key, bool absent)
{
    const QVariant value = domainObjectForKey(defaults, key);
    return value.isValid() ? value.toDouble() != 0 : absent;
}

} // namespace KS7Domain
