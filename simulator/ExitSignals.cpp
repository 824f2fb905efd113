#include "simulator/ExitSignals.h"

#include <QCoreApplication>

#include <csignal>
#include <pthread.h>
#include <sys/signalfd.h>
#include <unistd.h>

namespace simulator {

namespace {

/// Call this before the first thread starts, because each thread inherits the signal mask of its creator.
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
