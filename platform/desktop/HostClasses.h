#pragma once

#include <QObject>
#include <QString>

#include <memory>

namespace platform {

/// Looks a class of the hosting application up by its name.
class HostClasses {
public:
    virtual ~HostClasses() = default;

    /// The object for the named class; null when the host has none. Its operations are invokable methods.
    virtual QObject *classNamed(const QString &name) = 0;
};

std::shared_ptr<HostClasses> makeHostClasses();

} // namespace platform
