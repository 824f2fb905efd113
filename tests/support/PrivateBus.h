#pragma once

#include <QProcess>

#include <sys/types.h>

/// A bus daemon that tests kill, stop and restart, always at the same address. Construct it before the
/// process first reads the bus address from its environment.
class PrivateBus {
public:
    explicit PrivateBus(const char *addressVariable = "DBUS_SESSION_BUS_ADDRESS");
    ~PrivateBus();
    PrivateBus(const PrivateBus &) = delete;
    PrivateBus &operator=(const PrivateBus &) = delete;

    void start();
    void kill();
    /// Suspends the daemon's process. Messages to the daemon then stay queued.
    void stop();
    void resume();

private:
    [[nodiscard]] pid_t daemonPid() const;
    QProcess mDaemon;
    QString mSocket;
};
