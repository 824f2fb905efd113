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
    /// The file whose package is kept current.
    QString ownFile;
    /// Where UpdateState is stored.
    QString stateFile;
    std::function<QDateTime()> now;
};

/// The library or program that contains this code, as an absolute path without links.
QString ownCodeFile();

/// Updates by the distribution's packages. At most once a day it asks the package service of the system bus
/// for a newer version of the package that `ownFile` belongs to. It offers nothing for a file without a
/// package, without the service or without a network. `bus` is the system bus, opened in the background.
std::shared_ptr<SoftwareUpdateFramework> makePackageKitFramework(std::shared_ptr<BusConnection> bus,
                                                                 UpdaterOptions options);

/// The same for the file of this code and the current user; `program` names the folder of the state file.
std::shared_ptr<SoftwareUpdateFramework> makePackageKitFramework(std::shared_ptr<BusConnection> bus,
                                                                 const QString &program);

} // namespace platform
