#include "about/Version.h"

#include "pane/KS7SettingsWindowController.h"
#include "platform/desktop/Bundle.h"
#include "widgets/LinkLabel.h"

namespace {

const auto VersionKey = QStringLiteral("CFBundleVersion");
const auto Company = QStringLiteral("Orvex Network");

} // namespace

QString paneVersion(const platform::Bundle &bundle)
{
    const QVariant version = bundle.infoDictionary().value(VersionKey);
    return version.isValid() ? version.toString() : QStringLiteral("?");
}

void KS7SettingsWindowController::setupCopyright()
{
    const QString text = tr("v%1 by %2").arg(paneVersion(*mServices.bundle), Company);
    outlets.copyright->setTextWithLink(text, static_cast<int>(Company.size()));
}
