#pragma once

#include <QByteArray>
#include <QDBusConnection>
#include <QDeadlineTimer>

#include <memory>

namespace platform {

/// Tests over a socket of its own whether a bus replies. Call QDBusConnection::connectToBus() only after a
/// reply. On a bus that accepts and does not reply, it would block the process's D-Bus thread for 25 s.
class BusHandshake {
public:
    enum class Outcome { Refused, Silent, Answered };

    /// Connects and sends a first message without blocking. The reply must arrive within CallTimeout.
    explicit BusHandshake(QDBusConnection::BusType type);
    /// Returns the unfinished handshake with a silent bus, else a new one, so that all callers share one
    /// wait, also one after the other.
    static std::shared_ptr<BusHandshake> shared(QDBusConnection::BusType type);
    /// Releases the handshake that shared() keeps. Call it when the bus has replied or refused; otherwise the
    /// socket stays open.
    static void forget(QDBusConnection::BusType type);
    ~BusHandshake();
    BusHandshake(const BusHandshake &) = delete;
    BusHandshake &operator=(const BusHandshake &) = delete;

    /// Blocks until the bus replies or the time limit of this handshake is over. Later calls do not block, so
    /// a silent bus blocks the process once.
    Outcome wait();
    /// Checks for a reply without blocking.
    Outcome look();
    /// Descriptor that becomes readable when a silent bus replies or closes; -1 if there is no socket.
    [[nodiscard]] int socket() const { return mSocket; }

private:
    void begin(const QByteArray &address);
    Outcome lookFor(int milliseconds);

    int mSocket = -1;
    Outcome mOutcome = Outcome::Refused;
    QDeadlineTimer mDeadline;
};

/// If the session bus is silent, makes QDBusConnection::sessionBus() fail at once until the process ends.
/// Otherwise Qt's accessibility bridge would block there for ever. Has no effect if the bus replies or if
/// sessionBus() has been called before.
void keepToolkitOffSilentBus();

} // namespace platform
