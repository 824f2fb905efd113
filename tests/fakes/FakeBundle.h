#pragma once

#include "platform/desktop/Bundle.h"

#include <QString>
#include <QVariantMap>

/// The pane's resources, or those of a folder, with an information dictionary that tests can change.
class FakeBundle final : public platform::Bundle {
public:
    [[nodiscard]] QString pathForResource(const QString &name, const QString &type) const override;
    [[nodiscard]] QVariantMap infoDictionary() const override { return info; }
    QVariantMap info{{QStringLiteral("CFBundleVersion"), QStringLiteral("1.0")}};
    /// Folder of the resources. Empty selects the resources compiled into the pane.
    QString folder;
};
