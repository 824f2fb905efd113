#pragma once

#include "platform/updates/SoftwareUpdate.h"

#include <QDateTime>
#include <QString>

#include <functional>
#include <memory>

namespace platform {

class BusConnection;

/// The parameters of the updater that tests replace.
struct UpdaterOptions {
    /// File whose package is kept up to date.
    QString ownFile;
    /// Where UpdateState is stored.
    QString stateFile;
    std::function<QDateTime()> now;
};

/// Absolute path of the library or program that contains this code, with links resolved.
QString ownCodeFile();

/// Updates from the distribution's packages. At most once a day it asks PackageKit on the system bus for a
/// newer version of the package that contains `ownFile`. It offers nothing if the file has no package, or
/// without the service or a network. `bus` is the system bus, opened in the background.
std::shared_ptr<SoftwareUpdateFramework> makePackageKitFramework(std::shared_ptr<BusConnection> bus,
                                                                 UpdaterOptions options);

/// The same for this code's own file and the current user; `program` names the folder of the state file.
std::shared_ptr<SoftwareUpdateFramework> makePackageKitFramework(std::shared_ptr<BusConnection> bus,
                                                                 const QString &program);

} // namespace platform
