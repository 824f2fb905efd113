#include "agent_check/CheckContext.h"

#include "agent/RemoteNames.h"
#include "agent_check/Translation.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

#include <csignal>

using namespace std::chrono_literals;

namespace agent_check {

namespace {

constexpr auto Tick = 20ms;

volatile std::sig_atomic_t interrupted = 0;

} // namespace

bool isInterrupted()
{
    return interrupted != 0;
}

void endOnSignals()
{
    for (const int number : {SIGINT, SIGTERM, SIGHUP})
        std::signal(number, [](int) { interrupted = 1; });
}

Outcome skipForChanges()
{
    return skip(Translation::tr("the check of this demand changes something; --allow-changes permits it"));
}

QString notPosted(const QString &notification)
{
    return Translation::tr("the agent did not post %1 in time").arg(notification);
}

QString postedTimes(const QString &notification, int times)
{
    return Translation::tr("%1 was posted %2 times").arg(notification).arg(times);
}

QString withoutOwner(const QString &busName)
{
    return Translation::tr("no process owns %1").arg(busName);
}

QString preferredReturned(const QString &address, bool returned)
{
    return Translation::tr("isPreferredDeviceAddress returned %1 for %2")
        .arg(returned ? QStringLiteral("true") : QStringLiteral("false"), address);
}

CheckContext::CheckContext(Options given, const QDBusConnection &connection)
    : options(std::move(given))
    , bus(connection)
    , recorder(connection)
    , agent(connection, options.slowness)
{
}

Outcome CheckContext::outcomeOfImproperReply(const QString &problem) const
{
    const bool isNamed = options.groups.isEmpty() || options.groups.contains(QStringLiteral("operation"));
    return isNamed ? skip(problem) : fail(problem);
}

bool CheckContext::waitFor(const std::function<bool()> &condition, std::chrono::milliseconds limit) const
{
    const QDeadlineTimer deadline(options.limit(limit));
    QEventLoop loop;
    QTimer tick;
    tick.start(Tick);
    while (!condition()) {
        if (deadline.hasExpired() || isInterrupted())
            return false;
        loop.processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

void CheckContext::listenFor(std::chrono::milliseconds time) const
{
    const QDeadlineTimer end(time);
    waitFor([&end] { return end.hasExpired(); }, time * 2);
}

void CheckContext::post(const QString &name, const QVariantMap &userInfo) const
{
    auto signal =
        QDBusMessage::createSignal(RemoteNames::NotificationPath, RemoteNames::NotificationInterface, name);
    bus.send(signal << userInfo);
}

int CheckContext::posts(const QString &name, int from) const
{
    return recorder.count(name, agent.name(), from);
}

int CheckContext::mark() const
{
    // Wait for a reply of the bus daemon. The bus delivers in order, so all earlier posts arrive before this
    // reply.
    static_cast<void>(agent.isThere());
    QCoreApplication::processEvents();
    return recorder.nextIndex();
}

bool CheckContext::waitForPost(const QString &name, int from, std::chrono::milliseconds limit) const
{
    return waitFor([&] { return posts(name, from) > 0; }, limit);
}

} // namespace agent_check
