#include "agent_check/Bench.h"

#include "agent/RemoteNames.h"
#include "agent_check/Words.h"

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
    return skip(Words::tr("it changes something; --allow-changes allows that"));
}

Bench::Bench(Options given, const QDBusConnection &connection)
    : options(std::move(given))
    , bus(connection)
    , ear(connection)
    , agent(connection, options.slowness)
{
}

Outcome Bench::unjudged(const QString &problem) const
{
    const bool isNamed = options.groups.isEmpty() || options.groups.contains(QStringLiteral("operation"));
    return isNamed ? skip(problem) : fail(problem);
}

bool Bench::waitFor(const std::function<bool()> &condition, std::chrono::milliseconds limit) const
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

void Bench::listenFor(std::chrono::milliseconds time) const
{
    const QDeadlineTimer end(time);
    waitFor([&end] { return end.hasExpired(); }, time * 2);
}

void Bench::post(const QString &name, const QVariantMap &userInfo) const
{
    auto signal =
        QDBusMessage::createSignal(RemoteNames::NotificationPath, RemoteNames::NotificationInterface, name);
    bus.send(signal << userInfo);
}

int Bench::posts(const QString &name, int from) const
{
    return ear.count(name, agent.name(), from);
}

int Bench::mark() const
{
    // Wait for a reply of the bus daemon. The bus delivers in order, so all earlier posts arrive before this
    // reply.
    static_cast<void>(agent.isThere());
    QCoreApplication::processEvents();
    return ear.now();
}

bool Bench::waitForPost(const QString &name, int from, std::chrono::milliseconds limit) const
{
    return waitFor([&] { return posts(name, from) > 0; }, limit);
}

} // namespace agent_check
