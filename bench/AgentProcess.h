#pragma once

#include <QProcess>
#include <QStringList>

/// Runs the agent of the measured pane in another process, so that the agent's work does not count as the
/// pane's.
class AgentProcess {
public:
    AgentProcess();
    ~AgentProcess();
    AgentProcess(const AgentProcess &) = delete;
    AgentProcess &operator=(const AgentProcess &) = delete;

    void haveCameras(int count);
    /// Plugs in the second camera. It is then the preferred camera, does not stream and needs new firmware.
    void haveCameraAtTheCable();
    /// Lets the agent change the audio levels faster than the meters read them.
    void moveLevels();
    /// Returns the calls that the agent has received since the last takeCalls(), each with its argument.
    QStringList takeCalls();

private:
    QString ask(const QString &line);

    QProcess mProcess;
};
