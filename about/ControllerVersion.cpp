#include "about/Version.h"
#include "pane/KS7SettingsWindowController.h"
#include "widgets/LinkLabel.h"

void KS7SettingsWindowController::setupCopyright()
{
    const auto company = QStringLiteral("Orvex Network");
    const QString text = tr("v%1 by %2").arg(paneVersion(*mServices.bundle), company);
    outlets.copyright->setTextWithLink(text, static_cast<int>(company.size()));
}
