#pragma once

#include <QString>

#include <functional>
#include <memory>

namespace platform {

/// Posted once on the local notification center when a Connection has died; its object is the Connection.
inline const QString NSConnectionDidDieNotification = QStringLiteral("NSConnectionDidDieNotification");

/// Stands for a remote object. To call its operations, make a proxy for one of its interfaces from it.
class RootProxy {
public:
    virtual ~RootProxy() = default;
};

/// A connection to the one process that owned a registered name when the connection was opened. It dies on
/// invalidate(), when that process releases the name or lets a call time out, and when the bus is lost.
class Connection {
public:
    virtual ~Connection() = default;

    /// The remote root object; null if the connection is dead.
    virtual std::shared_ptr<RootProxy> rootProxy() = 0;
    /// Ends the connection. If it was alive, its death is reported before this function returns.
    virtual void invalidate() = 0;
    [[nodiscard]] virtual bool isValid() const = 0;
};

/// Opens connections to remote objects by their registered names.
class ConnectionRegistry {
public:
    virtual ~ConnectionRegistry() = default;

    /// Opens a connection to the owner of `name` on the session bus; returns null if there is no owner. Older
    /// connections that turn out to be dead report their death on the next turn of the event loop.
    virtual std::shared_ptr<Connection> connectionWithRegisteredName(const QString &name) = 0;
    /// Sets a handler for the case that the bus returns after a loss and `name` is already owned. The agent's
    /// start notification was then missed.
    // NOLINTBEGIN(performance-unnecessary-value-param): implementations keep the handler.
    virtual void whenFoundAgain([[maybe_unused]] const QString &name,
                                [[maybe_unused]] std::function<void()> handler)
    {
    }
    // NOLINTEND(performance-unnecessary-value-param)
};

} // namespace platform
