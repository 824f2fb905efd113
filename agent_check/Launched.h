#pragma once

#include <QProcess>

#include <chrono>

namespace agent_check {

/// The agent's program, started by this check. The destructor ends it.
class Launched {
public:
    explicit Launched(const QString &program);
    ~Launched();
    Launched(const Launched &) = delete;
    Launched &operator=(const Launched &) = delete;

    /// Starts the program. Returns false if it does not exist.
    bool start();
    [[nodiscard]] bool isRunning() const { return mProcess.state() != QProcess::NotRunning; }
    /// Sends SIGTERM to the program.
    void terminate() { mProcess.terminate(); }

private:
    QProcess mProcess;
};

} // namespace agent_check
