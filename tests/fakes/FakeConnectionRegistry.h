#pragma once

#include "platform/bus/Connection.h"
#include "platform/bus/NotificationCenter.h"
#include "tests/fakes/Journal.h"

#include <map>
#include <memory>

class FakeAgent;
class FakeConnection;

/// Opens connections to a FakeAgent. Attempts succeed only while the agent runs.
class FakeConnectionRegistry final : public platform::ConnectionRegistry {
public:
    FakeConnectionRegistry(Journal journal, FakeAgent &agent,
                           std::shared_ptr<platform::NotificationCenter> localCenter);
    std::shared_ptr<platform::Connection> connectionWithRegisteredName(const QString &name) override;
    /// Stops the agent. All open connections report their death.
    void killAgent();
    /// Makes the newest connection to the bus name `name` report its death.
    void die(const QString &name);
    [[nodiscard]] std::shared_ptr<platform::Connection> last(const QString &name) const;

private:
    Journal mJournal;
    FakeAgent &mAgent;
    std::shared_ptr<platform::NotificationCenter> mLocalCenter;
    std::map<QString, std::weak_ptr<FakeConnection>> mLast;
};
