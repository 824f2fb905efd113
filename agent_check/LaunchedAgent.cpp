#include "agent_check/LaunchedAgent.h"

#include <QDir>
#include <QFileInfo>

namespace agent_check {

namespace {

constexpr int EndTime = 3000; // ms

} // namespace

LaunchedAgent::LaunchedAgent(const QString &program)
{
    // Start the agent like the pane does, but forward its standard error: its messages help the developer of
    // the agent.
    mProcess.setProgram(QFileInfo(program).absoluteFilePath());
    mProcess.setWorkingDirectory(QDir::rootPath());
    mProcess.setStandardInputFile(QProcess::nullDevice());
    mProcess.setStandardOutputFile(QProcess::nullDevice());
    mProcess.setProcessChannelMode(QProcess::ForwardedErrorChannel);
}

LaunchedAgent::~LaunchedAgent()
{
    if (!isRunning())
        return;
    mProcess.terminate();
    if (!mProcess.waitForFinished(EndTime)) {
        mProcess.kill();
        mProcess.waitForFinished(EndTime);
    }
}

bool LaunchedAgent::start()
{
    const QFileInfo program(mProcess.program());
    if (!program.isFile() || !program.isExecutable())
        return false;
    mProcess.start();
    return mProcess.waitForStarted();
}

} // namespace agent_check
