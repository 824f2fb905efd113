#include "simulator/ExitSignals.h"

#include <QCoreApplication>

#include <csignal>
#include <pthread.h>
#include <sys/signalfd.h>
#include <unistd.h>

namespace simulator {

namespace {

/// Blocks SIGTERM and SIGINT, and returns a file descriptor that reports them. Call this before any thread
/// starts: new threads inherit the block, and a thread without it would let the signal kill the process.
int blockedSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGINT);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    return signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
}

} // namespace

ExitSignals::ExitSignals()
    : mNotifier(blockedSignals(), QSocketNotifier::Read)
{
    connect(&mNotifier, &QSocketNotifier::activated, this, &ExitSignals::read);
}

void ExitSignals::read()
{
    signalfd_siginfo signal{};
    if (::read(int(mNotifier.socket()), &signal, sizeof signal) > 0)
        QCoreApplication::quit();
}

} // namespace simulator
