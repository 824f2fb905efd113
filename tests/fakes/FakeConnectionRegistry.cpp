#include "tests/fakes/FakeConnectionRegistry.h"

#include "tests/fakes/FakeAgent.h"

#include <utility>

namespace {

class FakeRoot final : public platform::RootProxy { };

} // namespace

class FakeConnection final : public platform::Connection {
public:
    explicit FakeConnection(std::shared_ptr<platform::NotificationCenter> localCenter)
        : mLocalCenter(std::move(localCenter))
    {
    }
    std::shared_ptr<platform::RootProxy> rootProxy() override
    {
        return mValid ? std::make_shared<FakeRoot>() : nullptr;
    }
    void invalidate() override { die(); }
    [[nodiscard]] bool isValid() const override { return mValid; }
    void die()
    {
        if (!std::exchange(mValid, false))
            return;
        mLocalCenter->postNotificationName(platform::NSConnectionDidDieNotification,
                                           static_cast<platform::Connection *>(this));
    }

private:
    std::shared_ptr<platform::NotificationCenter> mLocalCenter;
    bool mValid = true;
};

FakeConnectionRegistry::FakeConnectionRegistry(Journal journal, FakeAgent &agent,
                                               std::shared_ptr<platform::NotificationCenter> localCenter)
    : mJournal(std::move(journal))
    , mAgent(agent)
    , mLocalCenter(std::move(localCenter))
{
}

std::shared_ptr<platform::Connection>
FakeConnectionRegistry::connectionWithRegisteredName(const QString &name)
{
    note(mJournal, QStringLiteral("connect ") + name);
    const bool isUSB = name.endsWith(QStringLiteral("USB"));
    if (!isUSB && ++mAgent.attempts == mAgent.appearsAtAttempt)
        mAgent.running = true;
    if (!mAgent.running || (isUSB && !mAgent.usbServerRunning))
        return nullptr;
    auto connection = std::make_shared<FakeConnection>(mLocalCenter);
    mLast[name] = connection;
    return connection;
}

std::shared_ptr<platform::Connection> FakeConnectionRegistry::last(const QString &name) const
{
    const auto entry = mLast.find(name);
    return entry == mLast.end() ? nullptr : entry->second.lock();
}

void FakeConnectionRegistry::die(const QString &name)
{
    if (const auto connection = mLast[name].lock())
        connection->die();
}

void FakeConnectionRegistry::killAgent()
{
    mAgent.running = false;
    const auto connections = mLast;
    for (const auto &[name, weak] : connections) {
        if (const auto connection = weak.lock())
            connection->die();
    }
}
