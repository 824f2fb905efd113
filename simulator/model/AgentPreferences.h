#pragma once

#include "platform/preferences/UserDefaults.h"

#include <QString>
#include <QVariant>

#include <memory>

namespace simulator {

/// The agent's settings in its preferences domain. Every change is on disk before the call returns; a file
/// that cannot be parsed is left as it is.
class AgentPreferences {
public:
    explicit AgentPreferences(std::shared_ptr<platform::UserDefaults> defaults);

    /// Sets absent keys to their defaults.
    void fillIn();
    /// Writes pending changes and reads those of other programs.
    void synchronize();

    /// An invalid variant when the key is absent.
    [[nodiscard]] QVariant value(const QString &key) const;
    void set(const QString &key, const QVariant &value);
    [[nodiscard]] bool isServiceOn() const;
    /// Makes each write drop the keys of other programs. It is a fault for tests: the contract forbids it.
    void setForgetful(bool forgetful) { mForgetful = forgetful; }

    /// One camera's value in a key's dictionary; invalid when absent.
    [[nodiscard]] QVariant cameraValue(const QString &key, const QString &address) const;
    void setCameraValue(const QString &key, const QString &address, const QVariant &value);
    void removeCameraValue(const QString &key, const QString &address);

private:
    [[nodiscard]] platform::PropertyListDictionary domain() const;

    std::shared_ptr<platform::UserDefaults> mDefaults;
    bool mForgetful = false;
};

} // namespace simulator
