#pragma once

#include "platform/updates/SoftwareUpdate.h"

#include <QDateTime>
#include <QString>

#include <functional>
#include <memory>

namespace platform {

/// What the updater goes by; a test puts its own in.
struct UpdaterOptions {
    /// The file whose package is kept current.
    QString ownFile;
    /// What is remembered between two starts.
    QString memoryFile;
    std::function<QDateTime()> now;
};

/// The library or program that this code was loaded from, as an absolute path without links.
QString ownCodeFile();

/// Updates by the distribution's packages: the package service of the system bus is asked, at most once a
/// day, whether there is a newer package of the one that `ownFile` belongs to. A file without a package, a
/// missing service and a missing network all mean that there is nothing to offer.
std::shared_ptr<SoftwareUpdateFramework> makePackageKitFramework(UpdaterOptions circumstances);

/// The same for this very code and the current user.
std::shared_ptr<SoftwareUpdateFramework> makePackageKitFramework();

} // namespace platform
