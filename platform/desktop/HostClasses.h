#pragma once

#include <QObject>
#include <QString>

#include <memory>

namespace platform {

/// Finds objects that the host publishes, by the name of their class.
class HostClasses {
public:
    virtual ~HostClasses() = default;

    /// The host's object with this class name, null if there is none. Callers use its invokable methods.
    virtual QObject *classNamed(const QString &name) = 0;
};

std::shared_ptr<HostClasses> makeHostClasses();

} // namespace platform
