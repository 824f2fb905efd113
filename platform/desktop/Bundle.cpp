#include "platform/desktop/Bundle.h"

#include "platform/preferences/UserDefaults.h"

#include <QFile>

namespace platform {
namespace {

class FolderBundle final : public Bundle {
public:
    explicit FolderBundle(QString folder)
        : mFolder(std::move(folder))
    {
    }

    [[nodiscard]] QString pathForResource(const QString &name, const QString &type) const override
    {
        const QString path = mFolder + QLatin1Char('/') + name + QLatin1Char('.') + type;
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

private:
    QString mFolder;
};

} // namespace

std::shared_ptr<Bundle> makeFolderBundle(const QString &folder)
{
    return std::make_shared<FolderBundle>(folder);
}

} // namespace platform
