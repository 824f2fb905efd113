#include "agent/RemoteCaller.h"

#include "platform/base/LogCategory.h"
#include "platform/bus/RemoteConnection.h"

#include <QDBusError>
#include <QDBusMessage>

namespace {

/// askSlowly() returns this error code if there is no proper reply, because 0 would mean success.
constexpr int NoResult = -1;

} // namespace

RemoteCaller::RemoteCaller(std::shared_ptr<platform::DBusRootProxy> root, QString interface)
    : mRoot(std::move(root))
    , mInterface(std::move(interface))
{
}

int RemoteCaller::askSlowly(const QString &method, const QVariantList &arguments)
{
    const auto reply = call<int>(method, arguments, SlowCallTimeout);
    if (reply)
        return reply->value();
    return isValid() ? NoResult : 0;
}

void RemoteCaller::tell(const QString &method, const QVariantList &arguments)
{
    call<>(method, arguments);
}

bool RemoteCaller::isValid() const
{
    return mRoot->isValid();
}

QDBusPendingCall RemoteCaller::send(const QString &method, const QVariantList &arguments,
                                    std::chrono::milliseconds timeout)
{
    auto message = QDBusMessage::createMethodCall(mRoot->owner(), mRoot->path(), mInterface, method);
    message.setAutoStartService(false);
    message.setArguments(arguments);
    return mRoot->bus().asyncCall(message, static_cast<int>(timeout.count()));
}

bool RemoteCaller::isAnswered(QDBusPendingCall &call, int declaredResults)
{
    call.waitForFinished();
    const auto reply = call.reply();
    if (call.isError()) {
        mRoot->callFailed(reply);
        qCWarning(PLATFORM_LOG, "A call to the agent failed: %s", qUtf8Printable(call.error().message()));
        return false;
    }
    // QDBusPendingReply checks only the declared types and would accept further arguments after them, so
    // count the arguments here.
    const bool complete = reply.arguments().size() == declaredResults;
    if (!complete)
        qCWarning(PLATFORM_LOG, "A reply of the agent is too long: \"%s\"",
                  qUtf8Printable(reply.signature()));
    return complete;
}
