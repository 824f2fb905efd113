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

    /// Returns the domain: if this process has a pending change, the changed contents, else those on disk.
    /// Returns nothing if the file is absent or unusable.
    virtual std::optional<PropertyListDictionary> persistentDomainForName(const QString &name) = 0;
    /// Replaces the domain in memory; synchronize() writes it to disk. A call with nullopt is ignored.
    virtual void setPersistentDomain(const std::optional<PropertyListDictionary> &domain,
                                     const QString &name) = 0;
    /// Writes the pending changes of all domains. A write that fails is logged and not repeated; the result
    /// is then false. A file that was deleted since the change is not created again.
    virtual bool synchronize() = 0;
};

/// Path of the domain's file below $XDG_CONFIG_HOME. The file may be missing. Empty for an invalid name.
QString fileOfDomain(const QString &name);

/// The domains of the current user, each in its file below $XDG_CONFIG_HOME.
std::shared_ptr<UserDefaults> makeFileUserDefaults();

} // namespace platform
