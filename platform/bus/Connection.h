#pragma once

#include <QString>

#include <functional>
#include <memory>

namespace platform {

/// Posted on the local centre, once, when a connection has died; the object is the Connection.
inline const QString NSConnectionDidDieNotification = QStringLiteral("NSConnectionDidDieNotification");

/// The remote end of a connection before its interface is fixed.
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

    /// A connection to `name` on the local host; null when nobody has registered the name. Connections that
    /// are found to be dead here report it on the next turn of the run loop.
    virtual std::shared_ptr<Connection> connectionWithRegisteredName(const QString &name) = 0;
    /// Calls `handler` when a bus that had been away is there again and `name` is already registered on it:
    /// the pane has missed the owner's announcement of its start.
    // NOLINTBEGIN(performance-unnecessary-value-param): implementations keep the handler.
    virtual void whenFoundAgain([[maybe_unused]] const QString &name,
                                [[maybe_unused]] std::function<void()> handler)
    {
    }
    // NOLINTEND(performance-unnecessary-value-param)
};

} // namespace platform
