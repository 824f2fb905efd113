#pragma once

#include "platform/preferences/UserDefaults.h"

#include <QString>
#include <QVariant>

#include <memory>

namespace simulator {

/// The agent's settings in its preferences file. Each change is written to the file before the function
/// returns. A file that cannot be parsed is never overwritten.
class AgentPreferences {
public:
    explicit AgentPreferences(std::shared_ptr<platform::UserDefaults> defaults);

    /// Writes the default values of all missing keys.
    void fillIn();
    /// Writes pending changes to the file and loads the changes of other programs.
    void synchronize();

    /// Returns the value of a key; an invalid variant without such a key.
    [[nodiscard]] QVariant value(const QString &key) const;
    void set(const QString &key, const QVariant &value);
    [[nodiscard]] bool isServiceOn() const;
    /// A fault for tests: when switched on, each write drops the keys of other programs. The contract forbids
    /// that.
    void setForgetful(bool forgetful) { mForgetful = forgetful; }

    /// Returns a camera's entry in the dictionary under `key`; an invalid variant without an entry.
    [[nodiscard]] QVariant cameraValue(const QString &key, const QString &address) const;
    void setCameraValue(const QString &key, const QString &address, const QVariant &value);
    void removeCameraValue(const QString &key, const QString &address);

private:
    [[nodiscard]] platform::PropertyListDictionary domain() const;

    std::shared_ptr<platform::UserDefaults> mDefaults;
    bool mForgetful = false;
};

} // namespace simulator
