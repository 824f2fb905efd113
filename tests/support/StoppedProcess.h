#pragma once

#include "tests/support/Timeout.h"

#include <QDeadlineTimer>
#include <QDirIterator>
#include <QFile>

#include <csignal>
#include <sched.h>
#include <sys/types.h>

/// True if the kernel has stopped every thread of the process.
inline bool isStopped(pid_t process)
{
    QDirIterator threads(QStringLiteral("/proc/%1/task").arg(process), QDir::Dirs | QDir::NoDotAndDotDot);
    bool found = false;
    while (threads.hasNext()) {
        QFile stat(threads.next() + QStringLiteral("/stat"));
        if (!stat.open(QIODevice::ReadOnly))
            continue; // The thread has ended since its folder was listed.
        const QByteArray line = stat.readAll();
        if (line.mid(line.lastIndexOf(')') + 2, 1) != "T")
            return false;
        found = true;
    }
    return found;
}

/// Stops the process and waits until all its threads have stopped: kill() returns earlier, and until then the
/// process may still reply. Returns false on failure.
[[nodiscard]] inline bool stopProcess(pid_t process)
{
    if (process <= 0 || ::kill(process, SIGSTOP) != 0)
        return false;
    const QDeadlineTimer limit(Timeout);
    while (!isStopped(process) && !limit.hasExpired())
        ::sched_yield();
    return isStopped(process);
}

/// Resumes the process. Ignores 0, the identifier of a QProcess that does not run: kill() would resume the
/// caller's process group, which all tests of a ctest run share.
inline void resumeProcess(pid_t process)
{
    if (process > 0)
        ::kill(process, SIGCONT);
}
