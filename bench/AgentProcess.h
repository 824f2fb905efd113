#pragma once

#include <QProcess>
#include <QStringList>

/// Runs the measured pane's agent in another process, so that its work does not count as the pane's.
class AgentProcess {
public:
    AgentProcess();
    ~AgentProcess();
    AgentProcess(const AgentProcess &) = delete;
    AgentProcess &operator=(const AgentProcess &) = delete;

    void haveCameras(int count);
    /// Plugs the second camera in. It becomes the preferred one, does not stream and needs new firmware.
    void haveCameraAtTheCable();
    /// Changes the audio levels with every request.
    void moveLevels();
    /// The calls since the last time, each with its argument.
    QStringList takeCalls();

private:
    QString ask(const QString &line);

    QProcess mProcess;
};
