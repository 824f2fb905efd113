#pragma once

#include <QString>

#include <functional>
#include <memory>

namespace platform {

/// Posted once on the local center when a connection has died. The object is the Connection.
inline const QString NSConnectionDidDieNotification = QStringLiteral("NSConnectionDidDieNotification");

/// A remote object whose interface is not known yet.
class RootProxy {
public:
    virtual ~RootProxy() = default;
};

/// A link to the one owner that held a registered name when it was opened. It dies on invalidate(), when that
/// owner releases the name or lets a call time out, and when the bus goes away.
class Connection {
public:
    virtual ~Connection() = default;

    /// The remote root object, null once the connection is dead.
    virtual std::shared_ptr<RootProxy> rootProxy() = 0;
    /// Ends the connection; a live one reports its death before this returns.
    virtual void invalidate() = 0;
    [[nodiscard]] virtual bool isValid() const = 0;
};

/// Looks remote objects up by their registered names.
class ConnectionRegistry {
public:
    virtual ~ConnectionRegistry() = default;

    /// A connection to `name` on the local bus; null when nobody owns the name. Connections found dead here
    /// report their death on the next turn of the run loop.
    virtual std::shared_ptr<Connection> connectionWithRegisteredName(const QString &name) = 0;
    /// Sets the handler for a bus that returns after a loss while `name` is already owned. The pane has then
    /// missed the agent's start notification.
    // NOLINTBEGIN(performance-unnecessary-value-param): implementations keep the handler.
    virtual void whenFoundAgain([[maybe_unused]] const QString &name,
                                [[maybe_unused]] std::function<void()> handler)
    {
    }
    // NOLINTEND(performance-unnecessary-value-param)
};

} // namespace platform
