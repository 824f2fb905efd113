#include "platform/preferences/UserDefaults.h"

#include "platform/base/LogCategory.h"
#include "platform/preferences/AtomicFile.h"

#include <QCoreApplication>
#include <QObject>
#include <QStandardPaths>

#include <cerrno>
#include <cstring>
#include <map>
#include <utility>

namespace platform {
namespace {

/// One domain: the contents of its file when last read, and the contents that wait to be written.
class Domain {
public:
    explicit Domain(QString path)
        : mPath(std::move(path))
    {
    }

    std::optional<PropertyListDictionary> contents()
    {
        return mWrite ? mWrite->dictionary : read().dictionary;
    }

    void setContents(const PropertyListDictionary &dictionary)
    {
        const bool isNew = mWrite ? mWrite->isNew : AtomicFile::isAbsent(mPath);
        mWrite = {dictionary, isNew};
    }

    bool synchronize()
    {
        const auto write = std::exchange(mWrite, std::nullopt);
        if (!write)
            return true;
        if (read().isAbsent() && !write->isNew)
            return true;
        return (mRead.isAbsent() || mRead.dictionary) && replace(write->dictionary);
    }

private:
    struct Read {
        AtomicFile::Contents file;
        std::optional<PropertyListDictionary> dictionary;
        [[nodiscard]] bool isAbsent() const { return AtomicFile::meansAbsent(file.error); }
    };
    struct Write {
        PropertyListDictionary dictionary;
        bool isNew = false;
    };

    /// Reads the file at every call, because two writes may have the same time stamp. Parses the contents,
    /// and logs errors, only if they have changed.
    const Read &read()
    {
        const AtomicFile::Contents file = AtomicFile::read(mPath);
        if (file == mRead.file)
            return mRead;
        mRead = {file, file.error == 0 ? PropertyListDictionary::fromXml(file.bytes) : std::nullopt};
        if (!mRead.isAbsent() && !mRead.dictionary)
            qCWarning(PLATFORM_LOG, "%s is unusable and left unchanged: %s", qUtf8Printable(mPath),
                      file.error != 0 ? std::strerror(file.error) : "not a property list with a dictionary");
        return mRead;
    }

    bool replace(const PropertyListDictionary &dictionary)
    {
        const QByteArray bytes = dictionary.toXml();
        const int error = AtomicFile::replace(mPath, bytes);
        if (error == 0)
            mRead = {{0, bytes}, dictionary};
        else
            qCWarning(PLATFORM_LOG, "%s cannot be written: %s", qUtf8Printable(mPath), std::strerror(error));
        return error == 0;
    }

    QString mPath;
    Read mRead = {{ENOENT, {}}, std::nullopt};
    std::optional<Write> mWrite;
};

/// Keeps each domain in a file of its own. The destructor writes the changes that are still pending.
class FileUserDefaults : public UserDefaults {
public:
    FileUserDefaults()
    {
        if (QCoreApplication *application = QCoreApplication::instance())
            QObject::connect(application, &QCoreApplication::aboutToQuit, &mContext,
                             [this] { synchronize(); });
    }

    ~FileUserDefaults() override { FileUserDefaults::synchronize(); }

    std::optional<PropertyListDictionary> persistentDomainForName(const QString &name) override
    {
        Domain *domain = domainNamed(name);
        return domain ? domain->contents() : std::nullopt;
    }

    void setPersistentDomain(const std::optional<PropertyListDictionary> &dictionary,
                             const QString &name) override
    {
        Domain *domain = domainNamed(name);
        if (domain && dictionary)
            domain->setContents(*dictionary);
    }

    bool synchronize() override
    {
        bool written = true;
        for (auto &[name, domain] : mDomains)
            written = domain.synchronize() && written;
        return written;
    }

private:
    Domain *domainNamed(const QString &name)
    {
        const auto found = mDomains.find(name);
        if (found != mDomains.end())
            return &found->second;
        const QString path = fileOfDomain(name);
        return path.isEmpty() ? nullptr : &mDomains.try_emplace(name, path).first->second;
    }

    std::map<QString, Domain> mDomains;
    QObject mContext;
};

} // namespace

QString fileOfDomain(const QString &name)
{
    if (name.isEmpty() || name.contains(QLatin1Char('/')) || name.contains(QChar(QChar::Null)))
        return {};
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return folder + QLatin1Char('/') + name + QStringLiteral(".plist");
}

std::shared_ptr<UserDefaults> makeFileUserDefaults()
{
    return std::make_shared<FileUserDefaults>();
}

} // namespace platform
