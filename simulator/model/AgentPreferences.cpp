#include "simulator/model/AgentPreferences.h"

#include "agent/AgentContract.h"

namespace simulator {

namespace {

platform::PropertyListDictionary withoutForeignKeys(platform::PropertyListDictionary settings)
{
    const QStringList known{PreferenceKeys::KS7On,         PreferenceKeys::ShowStatusMenu,
                            PreferenceKeys::VideoSize2,    PreferenceKeys::LogToFile,
                            PreferenceKeys::FriendlyNames, PreferenceKeys::IgnoredCams};
    const QStringList keys = settings.keys();
    for (const QString &key : keys) {
        if (!known.contains(key))
            settings.setValue(key, QVariant());
    }
    return settings;
}

} // namespace

AgentPreferences::AgentPreferences(std::shared_ptr<platform::UserDefaults> defaults)
    : mDefaults(std::move(defaults))
{
}

platform::PropertyListDictionary AgentPreferences::domain() const
{
    return mDefaults->persistentDomainForName(KS7Domain::Name).value_or(platform::PropertyListDictionary());
}

void AgentPreferences::fillIn()
{
    auto settings = domain();
    const QVariantMap first{{PreferenceKeys::KS7On, true},
                            {PreferenceKeys::ShowStatusMenu, true},
                            {PreferenceKeys::VideoSize2, 1},
                            {PreferenceKeys::LogToFile, false},
                            {PreferenceKeys::FriendlyNames, QVariantMap()}};
    for (auto entry = first.begin(); entry != first.end(); ++entry) {
        if (!settings.value(entry.key()).isValid())
            settings.setValue(entry.key(), entry.value());
    }
    mDefaults->setPersistentDomain(settings, KS7Domain::Name);
    synchronize();
}

void AgentPreferences::synchronize()
{
    mDefaults->synchronize();
}

QVariant AgentPreferences::value(const QString &key) const
{
    return domain().value(key);
}

void AgentPreferences::set(const QString &key, const QVariant &value)
{
    // Load the changes of other programs first. The write below replaces the whole file and would undo them.
    synchronize();
    auto settings = domain();
    settings.setValue(key, value);
    mDefaults->setPersistentDomain(mForgetful ? withoutForeignKeys(settings) : settings, KS7Domain::Name);
    synchronize();
}

bool AgentPreferences::isServiceOn() const
{
    const QVariant on = value(PreferenceKeys::KS7On);
    return !on.isValid() || on.toBool();
}

QVariant AgentPreferences::cameraValue(const QString &key, const QString &address) const
{
    return value(key).toMap().value(address);
}

void AgentPreferences::setCameraValue(const QString &key, const QString &address, const QVariant &value)
{
    synchronize();
    QVariantMap cameras = this->value(key).toMap();
    cameras.insert(address, value);
    set(key, cameras);
}

void AgentPreferences::removeCameraValue(const QString &key, const QString &address)
{
    synchronize();
    QVariantMap cameras = value(key).toMap();
    if (cameras.remove(address) > 0)
        set(key, cameras);
}

} // namespace simulator
