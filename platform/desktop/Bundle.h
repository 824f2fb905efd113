#pragma once

#include <QString>
#include <QVariantMap>

#include <memory>

namespace platform {

/// The pane's own resource files and information dictionary, separate from the host's.
class Bundle {
public:
    virtual ~Bundle() = default;

    /// Path of the resource `name`.`type`; empty when the bundle has none.
    [[nodiscard]] virtual QString pathForResource(const QString &name, const QString &type) const = 0;
    /// The contents of the bundle's Info.plist; empty if there is none.
    [[nodiscard]] virtual QVariantMap infoDictionary() const = 0;
};

/// Makes the bundle whose files are in `folder`, a folder of the file system or of Qt's resources.
std::shared_ptr<Bundle> makeFolderBundle(const QString &folder);

} // namespace platform
