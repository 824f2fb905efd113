#include "tests/support/PrivateBus.h"

#include "tests/support/StoppedProcess.h"

#include <QFile>
#include <QTest>

#include <csignal>

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
    // Wait until the daemon prints its address, because from then on it accepts connections.
    mDaemon.waitForReadyRead();
}

void PrivateBus::kill()
{
    mDaemon.kill();
    mDaemon.waitForFinished();
}

void PrivateBus::stop()
{
    QVERIFY(stopProcess(daemonPid()));
}

void PrivateBus::resume()
{
    resumeProcess(daemonPid());
}

pid_t PrivateBus::daemonPid() const
{
    return static_cast<pid_t>(mDaemon.processId());
}
