#pragma once

#include <QProcess>
#include <QStringList>

/// The agent that the measured pane talks to: a process of its own, so that its work is not the pane's.
class AgentProcess {
public:
    AgentProcess();
    ~AgentProcess();
    AgentProcess(const AgentProcess &) = delete;
    AgentProcess &operator=(const AgentProcess &) = delete;

    void haveCameras(int count);
    /// The second camera is the preferred one, not streaming, at the USB cable, and wants new firmware.
    void haveCameraAtTheCable();
    /// From now on the audio levels are others whenever they are asked for.
    void moveLevels();
    /// What it was asked since the last time, a call and its argument each.
    QStringList takeCalls();

private:
    QString ask(const QString &line);

    QProcess mProcess;
};
