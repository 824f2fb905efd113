#pragma once

#include <QProcess>

#include <chrono>

namespace agent_check {

/// A program that this one has started. The destructor ends it.
class Launched {
public:
    explicit Launched(const QString &program);
    ~Launched();
    Launched(const Launched &) = delete;
    Launched &operator=(const Launched &) = delete;

    /// Returns false if there is no such program.
    bool start();
    [[nodiscard]] bool isRunning() const { return mProcess.state() != QProcess::NotRunning; }
    /// Asks the program to end.
    void terminate() { mProcess.terminate(); }

private:
    QProcess mProcess;
};

} // namespace agent_check
