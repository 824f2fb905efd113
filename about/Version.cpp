#include "about/Version.h"

#include "platform/desktop/Bundle.h"

QString paneVersion(const platform::Bundle &bundle)
{
    const QVariant version = bundle.infoDictionary().value(QStringLiteral("CFBundleVersion"));
    return version.isValid() ? version.toString() : QStringLiteral("?");
}
