#include "platform/preferences/UserDefaults.h"

#include "platform/LogCategory.h"
#include "platform/preferences/AtomicFile.h"

#include <QCoreApplication>
#include <QObject>
#include <QStandardPaths>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <map>

namespace platform {
namespace {

/// Two writes within one tick of the file system's clock leave the same time behind.
constexpr std::int64_t ClockTickNs = 100'000'000;

std::int64_t nowNs()
{
    timespec now = {};
    ::clock_gettime(CLOCK_REALTIME, &now);
    return static_cast<std::int64_t>(now.tv_sec) * 1'000'000'000 + now.tv_nsec;
}

/// One domain: what its file held when it was last read, and what is to be written.
class Domain {
public:
    explicit Domain(QString path)
        : mPath(std::move(path))
    {
        load();
    }

    [[nodiscard]] const std::optional<PropertyListDictionary> &contents() const
    {
        return mPending ? mPending : mContents;
    }

    void setPending(const PropertyListDictionary &dictionary) { mPending = dictionary; }

    bool synchronize()
    {
        reloadIfChanged();
        return !mPending || writePending();
    }

private:
    void reloadIfChanged()
    {
        const bool settled = !mStamp.exists || std::abs(mReadAtNs - mStamp.changedNs) > ClockTickNs;
        if (!settled || AtomicFile::stampOf(mPath) != mStamp)
            load();
    }

    void load()
    {
        mReadAtNs = nowNs();
        const AtomicFile::Contents file = AtomicFile::read(mPath);
        const bool seenBefore = file.stamp == mStamp;
        mStamp = file.stamp;
        const bool absent = file.error == ENOENT || file.error == ENOTDIR;
        // Understanding the file takes longer than reading it, and most of the time it is what it was.
        const bool isKnown = file.error == 0 && mContents && file.bytes == mBytes;
        if (!isKnown)
            mContents = file.error == 0 ? PropertyListDictionary::fromXml(file.bytes) : std::nullopt;
        mBytes = file.bytes;
        const bool wasUsable = mUsable;
        mUsable = absent || mContents.has_value();
        if (!mUsable && (wasUsable || !seenBefore))
            reportUnusable(file.error);
    }

    void reportUnusable(int error) const
    {
        qCWarning(KS7_PLATFORM, "%s is left as it is and not used: %s", qUtf8Printable(mPath),
                  error != 0 ? std::strerror(error) : "not a property list with a dictionary");
    }

    bool writePending()
    {
        if (!mUsable) {
            mPending.reset();
            return false;
        }
        const QByteArray bytes = mPending->toXml();
        if (const int error = AtomicFile::replace(mPath, bytes, &mStamp)) {
            reportUnwritten(error);
            return false;
        }
        mReadAtNs = nowNs();
        mBytes = bytes;
        mWriteError = 0;
        mContents.swap(mPending);
        mPending.reset();
        return true;
    }

    void reportUnwritten(int error)
    {
        // Tried again at every synchronize(): said once.
        if (error != mWriteError)
            qCWarning(KS7_PLATFORM, "%s cannot be written: %s", qUtf8Printable(mPath), std::strerror(error));
        mWriteError = error;
    }

    QString mPath;
    /// What mContents was made from.
    QByteArray mBytes;
    std::optional<PropertyListDictionary> mContents;
    std::optional<PropertyListDictionary> mPending;
    AtomicFile::Stamp mStamp;
    std::int64_t mReadAtNs = 0;
    int mWriteError = 0;
    bool mUsable = true;
};

/// Domains in files, cached; what is pending is written at the latest when the program ends.
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
        const Domain *domain = domainNamed(name);
        return domain ? domain->contents() : std::nullopt;
    }

    void setPersistentDomain(const std::optional<PropertyListDictionary> &dictionary,
                             const QString &name) override
    {
        Domain *domain = domainNamed(name);
        if (domain && dictionary)
            domain->setPending(*dictionary);
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
