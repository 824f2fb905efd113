#pragma once

#include "platform/bus/BusCall.h"

#include <QDBusPendingReply>
#include <QString>
#include <QVariantList>

#include <chrono>
#include <memory>
#include <optional>

namespace platform {
class DBusRootProxy;
}

/// Makes the calls of one interface and checks their replies. A reply that does not have exactly the declared
/// types counts as none. Replaces QDBusAbstractInterface, which looks up the owner of the name without a time
/// limit and cannot forbid the bus to start a service.
class RemoteCaller {
public:
    RemoteCaller(std::shared_ptr<platform::DBusRootProxy> root, QString interface);

    /// Blocks until the reply; no event loop runs. nullopt when there is none, at once when the link is dead.
    template <class... Results>
    std::optional<QDBusPendingReply<Results...>>
    call(const QString &method, const QVariantList &arguments,
         std::chrono::milliseconds timeout = platform::CallTimeout)
    {
        if (!isValid())
            return {};
        QDBusPendingReply<Results...> reply = send(method, arguments, timeout);
        if (!isAnswered(reply, reply.count()))
            return {};
        return reply;
    }

    /// The result of a call; 0, false or empty when there is no reply.
    template <class Result>
    Result ask(const QString &method, const QVariantList &arguments)
    {
        const auto reply = call<Result>(method, arguments);
        return reply ? reply->value() : Result();
    }
    /// The error code of an operation that writes to the camera's flash memory, for up to 30 s. -1 for an
    /// error or a wrong reply. 0 when the link has died, which is reported by itself.
    int askSlowly(const QString &method, const QVariantList &arguments);
    /// A call without a result. It waits for its reply as well.
    void tell(const QString &method, const QVariantList &arguments);

private:
    [[nodiscard]] bool isValid() const;
    QDBusPendingCall send(const QString &method, const QVariantList &arguments,
                          std::chrono::milliseconds timeout);
    /// Waits for the reply; false when there is none of the declared types.
    bool isAnswered(QDBusPendingCall &call, int declaredResults);

    std::shared_ptr<platform::DBusRootProxy> mRoot;
    QString mInterface;
};
