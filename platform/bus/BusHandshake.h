#pragma once

#include <QByteArray>
#include <QDBusConnection>
#include <QDeadlineTimer>

#include <memory>

namespace platform {

/// Tests over its own socket whether a bus replies. QDBusConnection::connectToBus() blocks the process's
/// D-Bus thread for 25 s if a bus accepts and does not reply. So call it only for a bus that has replied
/// here.
class BusHandshake {
public:
    enum class Outcome { Refused, Silent, Answered };

    /// Starts at once and never blocks. The time limit is that of one call.
    explicit BusHandshake(QDBusConnection::BusType type);
    /// The unfinished handshake with a silent bus, else a new one. So all callers in the process share one
    /// wait.
    static std::shared_ptr<BusHandshake> shared(QDBusConnection::BusType type);
    ~BusHandshake();
    BusHandshake(const BusHandshake &) = delete;
    BusHandshake &operator=(const BusHandshake &) = delete;

    /// Blocks until the bus replies or the rest of the time limit is over. Later calls do not block, so a
    /// silent bus costs one wait.
    Outcome wait();
    /// Checks without blocking.
    Outcome look();
    /// Descriptor that becomes readable when a silent bus replies or closes; -1 when there is none.
    [[nodiscard]] int socket() const { return mSocket; }

private:
    void begin(const QByteArray &address);
    Outcome lookFor(int milliseconds);

    int mSocket = -1;
    Outcome mOutcome = Outcome::Refused;
    QDeadlineTimer mDeadline;
};

/// Keeps Qt away from a silent session bus. Qt's accessibility bridge calls QDBusConnection::sessionBus(),
/// which would block for ever. Qt then has no session bus until the process ends. No effect if the bus
/// replies or the connection exists already.
void keepToolkitOffSilentBus();

} // namespace platform
