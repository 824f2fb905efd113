#pragma once

#include "platform/desktop/Bundle.h"

#include <QString>
#include <QVariantMap>

/// A bundle with the pane's own resources or those of a folder. Tests can change its information dictionary.
class FakeBundle final : public platform::Bundle {
public:
    [[nodiscard]] QString pathForResource(const QString &name, const QString &type) const override;
    [[nodiscard]] QVariantMap infoDictionary() const override { return info; }
    QVariantMap info{{QStringLiteral("CFBundleVersion"), QStringLiteral("1.0")}};
    /// The folder that contains the resources. If empty, the resources compiled into the pane are used.
    QString folder;
};
