#include "platform/desktop/Bundle.h"

#include "platform/preferences/UserDefaults.h"

#include <QFile>

// The resources come with a static library, so somebody has to ask for them by name. Outside any namespace,
// as the resource compiler wants it.
static void initPaneResources()
{
    Q_INIT_RESOURCE(ks7_pane);
    Q_INIT_RESOURCE(ks7_platform_translations);
}

namespace platform {
namespace {

const QString Folder = QStringLiteral(":/com.orvex.KS7PreferencesPane/");

class PaneBundle final : public Bundle {
public:
    PaneBundle() { initPaneResources(); }

    [[nodiscard]] QString pathForResource(const QString &name, const QString &type) const override
    {
        const QString path = Folder + name + QLatin1Char('.') + type;
        return QFile::exists(path) ? path : QString();
    }

    [[nodiscard]] QVariantMap infoDictionary() const override
    {
        QFile file(pathForResource(QStringLiteral("Info"), QStringLiteral("plist")));
        if (!file.open(QIODevice::ReadOnly))
            return {};
        const auto dictionary = PropertyListDictionary::fromXml(file.readAll());
        QVariantMap info;
        for (const auto &key : dictionary ? dictionary->keys() : QStringList())
            info.insert(key, dictionary->value(key));
        return info;
    }
};

} // namespace

std::shared_ptr<Bundle> makePaneBundle()
{
    return std::make_shared<PaneBundle>();
}

} // namespace platform
