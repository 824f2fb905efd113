#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>
#include <optional>

namespace platform {

/// The root dictionary of a property list. Copies are cheap and independent; values that the pane does
/// not understand come through a rewrite exactly as they were.
class PropertyListDictionary {
public:
    PropertyListDictionary();
    ~PropertyListDictionary();
    PropertyListDictionary(const PropertyListDictionary &other);
    PropertyListDictionary &operator=(const PropertyListDictionary &other);

    /// Reads an XML property list; nothing when it does not parse or its root is no dictionary.
    static std::optional<PropertyListDictionary> fromXml(const QByteArray &xml);
    [[nodiscard]] QByteArray toXml() const;

    /// The value as bool, qlonglong, qulonglong, double, QString, QDateTime, QByteArray, QVariantList or
    /// QVariantMap; an invalid variant when the key is absent.
    [[nodiscard]] QVariant value(const QString &key) const;
    void setValue(const QString &key, const QVariant &value);
    [[nodiscard]] QStringList keys() const;

private:
    struct Node;
    std::shared_ptr<const Node> mNode;
};

/// The user's preferences, one dictionary for each application (a "domain").
class UserDefaults {
public:
    virtual ~UserDefaults() = default;

    /// The domain as it was last read; nothing when there is none or its file cannot be read or parsed.
    virtual std::optional<PropertyListDictionary> persistentDomainForName(const QString &name) = 0;
    /// Replaces the domain, in memory until synchronize(). Nothing in, nothing done.
    virtual void setPersistentDomain(const std::optional<PropertyListDictionary> &domain,
                                     const QString &name) = 0;
    /// Writes what is pending and reads again what others have changed. False when a write failed.
    virtual bool synchronize() = 0;
};

/// The file of the current user's domain below $XDG_CONFIG_HOME, there or not; empty for what cannot be a
/// domain's name.
QString fileOfDomain(const QString &name);

/// The domains of the current user, each in its file below $XDG_CONFIG_HOME.
std::shared_ptr<UserDefaults> makeFileUserDefaults();

} // namespace platform
