#pragma once

#include "platform/bus/Connection.h"
#include "platform/bus/NotificationCenter.h"
#include "tests/fakes/Journal.h"

#include <map>
#include <memory>

class FakeAgent;
class FakeConnection;

/// Connections to a FakeAgent. They succeed while the agent runs.
class FakeConnectionRegistry final : public platform::ConnectionRegistry {
public:
    FakeConnectionRegistry(Journal journal, FakeAgent &agent,
                           std::shared_ptr<platform::NotificationCenter> localCenter);
    std::shared_ptr<platform::Connection> connectionWithRegisteredName(const QString &name) override;
    /// Ends the agent; all open connections report their death.
    void killAgent();
    /// Lets the newest connection to `name` report its death.
    void die(const QString &name);
    [[nodiscard]] std::shared_ptr<platform::Connection> last(const QString &name) const;

private:
    Journal mJournal;
    FakeAgent &mAgent;
    std::shared_ptr<platform::NotificationCenter> mLocalCenter;
    std::map<QString, std::weak_ptr<FakeConnection>> mLast;
};
