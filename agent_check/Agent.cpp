#include "agent_check/Agent.h"

#include "agent/RemoteCaller.h"
#include "agent/RemoteNames.h"
#include "agent_check/Translation.h"
#include "platform/bus/BusCall.h"
#include "platform/bus/BusNames.h"

#include <QDBusMessage>
#include <QDBusPendingReply>

using namespace std::chrono_literals;

namespace agent_check {

namespace {

/// The agent counts as hung when this number of its operations have timed out.
constexpr int MostSilent = 3;

QDBusMessage askDaemon(const QDBusConnection &bus, const QString &method, const QString &name)
{
    auto call = QDBusMessage::createMethodCall(platform::bus::Daemon, platform::bus::DaemonPath,
                                               platform::bus::Daemon, method);
    return platform::callAndWait(bus, call << name);
}

/// Formats a D-Bus signature for a message. The empty signature becomes "nothing".
QString inWords(const QString &signature)
{
    return signature.isEmpty() ? Translation::tr("nothing") : QLatin1Char('"') + signature + QLatin1Char('"');
}

} // namespace

Agent::Agent(const QDBusConnection &bus, int slowness)
    : mBus(bus)
    , mSlowness(slowness)
{
}

void Agent::find()
{
    mOwner = ownerNow(RemoteNames::AgentServer);
    mOwnerUSB = ownerNow(RemoteNames::AgentServerUSB);
    mSilent.clear();
}

QString Agent::owner(const QString &registeredName) const
{
    return registeredName == RemoteNames::AgentServer ? mOwner : mOwnerUSB;
}

QString Agent::name() const
{
    return mOwner;
}

QString Agent::ownerNow(const QString &registeredName) const
{
    const auto reply = askDaemon(mBus, QStringLiteral("GetNameOwner"), RemoteNames::busName(registeredName));
    return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0).toString() : QString();
}

std::optional<uint> Agent::processOf(const QString &busName) const
{
    const auto reply = askDaemon(mBus, QStringLiteral("GetConnectionUnixProcessID"), busName);
    if (reply.type() != QDBusMessage::ReplyMessage)
        return {};
    return reply.arguments().value(0).toUInt();
}

bool Agent::isThere() const
{
    return !mOwner.isEmpty() && ownerNow(RemoteNames::AgentServer) == mOwner
        && ownerNow(RemoteNames::AgentServerUSB) == mOwnerUSB;
}

std::chrono::milliseconds Agent::timeOf(const QString &operation) const
{
    const bool isSlow =
        operation == QStringLiteral("startUpdate") || operation == QStringLiteral("setPassKey");
    return (isSlow ? SlowCallTimeout : platform::CallTimeout) * mSlowness;
}

QDBusPendingCall Agent::begin(const QString &operation, const QVariantList &arguments) const
{
    const Operation &declared = declaredOperation(operation);
    auto call = QDBusMessage::createMethodCall(owner(declared.registeredName),
                                               RemoteNames::objectPath(declared.registeredName),
                                               declared.interface, operation);
    call.setAutoStartService(false);
    call.setArguments(arguments);
    return mBus.asyncCall(call, int(timeOf(operation).count()));
}

Answer Agent::end(const QString &operation, QDBusPendingCall call)
{
    call.waitForFinished();
    const QDBusMessage reply = call.reply();
    return {problemOf(declaredOperation(operation), reply), reply.arguments()};
}

Answer Agent::ask(const QString &operation, const QVariantList &arguments)
{
    if (mSilent.contains(operation))
        return {Translation::tr("%1 timed out before and is not called again").arg(operation), {}};
    return end(operation, begin(operation, arguments));
}

void Agent::timedOut(const Operation &operation)
{
    mSilent.insert(operation.name);
    const auto ping = QDBusMessage::createMethodCall(
        owner(operation.registeredName), RemoteNames::objectPath(operation.registeredName),
        QStringLiteral("org.freedesktop.DBus.Peer"), QStringLiteral("Ping"));
    mIsHung = mIsHung || mSilent.size() >= MostSilent
        || platform::timedOut(platform::callAndWait(mBus, ping, platform::CallTimeout * mSlowness));
}

QString Agent::problemOf(const Operation &operation, const QDBusMessage &reply)
{
    if (reply.type() == QDBusMessage::ErrorMessage) {
        if (!isThere())
            return Translation::tr("%1: the agent ended without a reply").arg(operation.call());
        if (platform::timedOut(reply)) {
            timedOut(operation);
            return Translation::tr("%1: no reply within %2 s")
                .arg(operation.call())
                .arg(timeOf(operation.name) / 1s);
        }
        return Translation::tr("%1: the reply is the error %2, \"%3\"")
            .arg(operation.call(), reply.errorName(), reply.errorMessage());
    }
    if (reply.signature() != operation.out)
        return Translation::tr("%1: the reply is %2 instead of %3")
            .arg(operation.call(), inWords(reply.signature()), inWords(operation.out));
    return {};
}

QByteArray Agent::introspection(const QString &registeredName) const
{
    auto call = QDBusMessage::createMethodCall(owner(registeredName), RemoteNames::objectPath(registeredName),
                                               QStringLiteral("org.freedesktop.DBus.Introspectable"),
                                               QStringLiteral("Introspect"));
    const auto reply = platform::callAndWait(mBus, call, platform::CallTimeout * mSlowness);
    return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0).toString().toUtf8()
                                                      : QByteArray();
}

} // namespace agent_check
