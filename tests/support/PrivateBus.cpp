#include "tests/support/PrivateBus.h"

#include <QFile>

#include <csignal>
#include <sys/types.h>

PrivateBus::PrivateBus(const char *addressVariable)
    : mSocket(qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/test-bus"))
{
    const QByteArray address = "unix:path=" + mSocket.toUtf8();
    qputenv(addressVariable, address);
    start();
}

PrivateBus::~PrivateBus()
{
    kill();
}

void PrivateBus::start()
{
    QFile::remove(mSocket);
    mDaemon.start(QStringLiteral("dbus-daemon"),
                  {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address"),
                   QStringLiteral("--address=unix:path=") + mSocket});
    // The daemon prints its address once it listens.
    mDaemon.waitForReadyRead();
}

void PrivateBus::kill()
{
    mDaemon.kill();
    mDaemon.waitForFinished();
}

void PrivateBus::stop()
{
    signalDaemon(SIGSTOP);
}

void PrivateBus::resume()
{
    signalDaemon(SIGCONT);
}

void PrivateBus::signalDaemon(int signal) const
{
    ::kill(static_cast<pid_t>(mDaemon.processId()), signal);
}
