#pragma once

#include "platform/updates/SoftwareUpdate.h"

#include <QDateTime>
#include <QString>

#include <functional>
#include <memory>

namespace platform {

class BusConnection;

/// Parameters of the updater. Tests pass values of their own.
struct UpdaterOptions {
    /// Path of an installed file. The package that contains this file is kept up to date.
    QString ownFile;
    /// Path of the file in which UpdateState stores its values.
    QString stateFile;
    std::function<QDateTime()> now;
};

/// Absolute path of the library or program that contains this code, with links resolved.
QString ownCodeFile();

/// Makes the framework that updates from the distribution's packages. At most once a day, it asks PackageKit
/// for a newer version of the package that contains `ownFile`. It offers nothing if no package contains that
/// file, or without PackageKit or a network. `bus` is the system bus, which is opened in the background.
std::shared_ptr<SoftwareUpdateFramework> makePackageKitFramework(std::shared_ptr<BusConnection> bus,
                                                                 UpdaterOptions options);

/// Makes the same framework for the package of this library. The state file is the current user's, in a
/// folder with the name `program`.
std::shared_ptr<SoftwareUpdateFramework> makePackageKitFramework(std::shared_ptr<BusConnection> bus,
                                                                 const QString &program);

} // namespace platform
