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

/// Time limit for the reply to an operation that writes to the camera's flash memory: startUpdate,
/// setPassKey.
inline constexpr std::chrono::milliseconds SlowCallTimeout{30000};

/// Makes the remote calls of one interface. A reply with other types than the declared ones counts as no
/// reply. QDBusAbstractInterface is no substitute: it looks up the name's owner without a timeout and may
/// start a service.
class RemoteCaller {
public:
    RemoteCaller(std::shared_ptr<platform::DBusRootProxy> root, QString interface);

    /// Blocks until the reply arrives or the timeout ends, without an event loop. Returns nullopt without a
    /// proper reply. On a dead connection it returns nullopt at once.
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

    /// Returns the result of a call; 0, false or empty when there is no proper reply.
    template <class Result>
    Result ask(const QString &method, const QVariantList &arguments)
    {
        const auto reply = call<Result>(method, arguments);
        return reply ? reply->value() : Result();
    }
    /// Returns the error code of an operation that writes to the camera's flash memory; waits for
    /// SlowCallTimeout at most. An error or a wrong reply gives -1. A dead connection gives 0, because its
    /// death is reported separately.
    int askSlowly(const QString &method, const QVariantList &arguments);
    /// Makes a call without a result. Blocks until the empty reply arrives, because no operation is one-way.
    void tell(const QString &method, const QVariantList &arguments);

private:
    [[nodiscard]] bool isValid() const;
    QDBusPendingCall send(const QString &method, const QVariantList &arguments,
                          std::chrono::milliseconds timeout);
    /// Blocks until the reply arrives. Returns false if it is an error or has too many arguments.
    bool isAnswered(QDBusPendingCall &call, int declaredResults);

    std::shared_ptr<platform::DBusRootProxy> mRoot;
    QString mInterface;
};
