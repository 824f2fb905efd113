#pragma once

#include "platform/preferences/PropertyList.h"

#include <QString>

#include <memory>
#include <optional>

namespace platform {

/// The user's preferences, one dictionary for each application (a "domain").
class UserDefaults {
public:
    virtual ~UserDefaults() = default;

    /// The domain on disk now or, if set, this process's pending write. Nothing when the file is absent or
    /// unusable.
    virtual std::optional<PropertyListDictionary> persistentDomainForName(const QString &name) = 0;
    /// Replaces the domain in memory; synchronize() writes it. An empty `domain` is ignored.
    virtual void setPersistentDomain(const std::optional<PropertyListDictionary> &domain,
                                     const QString &name) = 0;
    /// Writes the pending domain. A failed write is logged, dropped and returns false. A domain deleted on
    /// disk meanwhile stays deleted.
    virtual bool synchronize() = 0;
};

/// Path of the current user's domain file below $XDG_CONFIG_HOME; it may not exist. Empty for an invalid
/// domain name.
QString fileOfDomain(const QString &name);

/// The domains of the current user, each in its file below $XDG_CONFIG_HOME.
std::shared_ptr<UserDefaults> makeFileUserDefaults();

} // namespace platform
