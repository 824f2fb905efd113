#pragma once

#include <QByteArray>
#include <QDBusConnection>
#include <QDeadlineTimer>

#include <memory>

namespace platform {

/// Asks a bus for a first sign of life over a socket of its own. QDBusConnection::connectToBus() waits 25 s
/// for a bus that accepts and keeps silent, in the thread that serves every connection of the process. So it
/// may only be called for a bus that has answered here.
class BusHandshake {
public:
    enum class Outcome { Refused, Silent, Answered };

    /// Begins at once and never blocks. Its time is that of one call.
    explicit BusHandshake(QDBusConnection::BusType type);
    /// The handshake with a bus that is silent so far, else a new one: all callers of the process together
    /// wait once.
    static std::shared_ptr<BusHandshake> shared(QDBusConnection::BusType type);
    ~BusHandshake();
    BusHandshake(const BusHandshake &) = delete;
    BusHandshake &operator=(const BusHandshake &) = delete;

    /// Blocks for what is left of its time. Afterwards it only looks, so that a silent bus costs one wait.
    Outcome wait();
    /// Looks without waiting.
    Outcome look();
    /// Readable when a silent bus has something to say, or is gone. -1 when there is nothing to wait for.
    [[nodiscard]] int socket() const { return mSocket; }

private:
    void begin(const QByteArray &address);
    Outcome lookFor(int milliseconds);

    int mSocket = -1;
    Outcome mOutcome = Outcome::Refused;
    QDeadlineTimer mDeadline;
};

/// Keeps the toolkit off a session bus that is silent: QDBusConnection::sessionBus(), which the toolkit's
/// bridge to screen readers calls, would block for ever. The toolkit then has no session bus until the
/// process ends. No effect when the bus answers, or when the process has that connection already.
void keepToolkitOffSilentBus();

} // namespace platform
