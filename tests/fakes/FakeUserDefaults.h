#pragma once

#include "platform/preferences/UserDefaults.h"
#include "tests/fakes/Journal.h"

#include <functional>
#include <optional>

/// One preferences domain in memory. A write of the pane stays pending until synchronize() copies it to
/// `onDisk`.
class FakeUserDefaults final : public platform::UserDefaults {
public:
    explicit FakeUserDefaults(Journal journal)
        : mJournal(std::move(journal))
    {
    }
    std::optional<platform::PropertyListDictionary> persistentDomainForName(const QString &name) override;
    void setPersistentDomain(const std::optional<platform::PropertyListDictionary> &domain,
                             const QString &name) override;
    bool synchronize() override;

    /// Writes a value directly to `onDisk`, as the agent's own process does.
    void agentWrites(const QString &key, const QVariant &value);
    [[nodiscard]] QVariant stored(const QString &key) const;
    std::optional<platform::PropertyListDictionary> onDisk;
    /// Hook that runs at the end of synchronize().
    std::function<void()> duringSynchronize = [] {};
    /// While true, synchronize() discards a pending write and returns false.
    bool diskIsFull = false;

private:
    Journal mJournal;
    std::optional<platform::PropertyListDictionary> mPending;
};
