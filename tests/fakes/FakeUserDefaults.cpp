#include "tests/fakes/FakeUserDefaults.h"

#include <utility>

std::optional<platform::PropertyListDictionary> FakeUserDefaults::persistentDomainForName(const QString &)
{
    return mPending ? mPending : onDisk;
}

void FakeUserDefaults::setPersistentDomain(const std::optional<platform::PropertyListDictionary> &domain,
                                           const QString &)
{
    if (!domain)
        return;
    note(mJournal, QStringLiteral("write domain"));
    mPending = domain;
}

bool FakeUserDefaults::synchronize()
{
    note(mJournal, QStringLiteral("synchronize"));
    const auto pending = std::exchange(mPending, std::nullopt);
    if (pending && !diskIsFull)
        onDisk = pending;
    duringSynchronize();
    return !pending || !diskIsFull;
}

void FakeUserDefaults::agentWrites(const QString &key, const QVariant &value)
{
    if (!onDisk)
        onDisk.emplace();
    onDisk->setValue(key, value);
}

QVariant FakeUserDefaults::stored(const QString &key) const
{
    return onDisk ? onDisk->value(key) : QVariant();
}
