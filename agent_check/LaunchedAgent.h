#pragma once

#include <QProcess>

#include <chrono>

namespace agent_check {

/// The agent's program, started by this check. The destructor ends it.
class LaunchedAgent {
public:
    explicit LaunchedAgent(const QString &program);
    ~LaunchedAgent();
    LaunchedAgent(const LaunchedAgent &) = delete;
    LaunchedAgent &operator=(const LaunchedAgent &) = delete;

    /// Starts the program. Returns false if it does not exist.
    bool start();
    [[nodiscard]] bool isRunning() const { return mProcess.state() != QProcess::NotRunning; }
    /// Sends SIGTERM to the program.
    void terminate() { mProcess.terminate(); }

private:
    QProcess mProcess;
};

} // namespace agent_check
