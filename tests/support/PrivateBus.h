#pragma once

#include <QProcess>

/// A bus of the test's own, always at the same address, that can be killed, stopped and started again. Made
/// before the process first looks for the session bus, or for the bus that another variable gives the address
/// of.
class PrivateBus {
public:
    explicit PrivateBus(const char *addressVariable = "DBUS_SESSION_BUS_ADDRESS");
    ~PrivateBus();
    PrivateBus(const PrivateBus &) = delete;
    PrivateBus &operator=(const PrivateBus &) = delete;

    void start();
    void kill();
    /// The daemon stands still; messages to it wait.
    void stop();
    void resume();

private:
    void signalDaemon(int signal) const;
    QProcess mDaemon;
    QString mSocket;
};
