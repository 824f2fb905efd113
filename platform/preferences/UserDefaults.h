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

    /// The domain as it is at this moment, or as set by this process and not handed over yet. Nothing when
    /// the file is absent or unusable.
    virtual std::optional<PropertyListDictionary> persistentDomainForName(const QString &name) = 0;
    /// Replaces the domain, in memory until synchronize(). Nothing in, nothing done.
    virtual void setPersistentDomain(const std::optional<PropertyListDictionary> &domain,
                                     const QString &name) = 0;
    /// Hands over what was set. A write that fails is dropped and logged; false then. A domain that was
    /// deleted since it was set stays deleted.
    virtual bool synchronize() = 0;
};

/// Path of the current user's domain below $XDG_CONFIG_HOME, which may not exist; empty for what cannot be a
/// domain's name.
QString fileOfDomain(const QString &name);

/// The domains of the current user, each in its file below $XDG_CONFIG_HOME.
std::shared_ptr<UserDefaults> makeFileUserDefaults();

} // namespace platform
