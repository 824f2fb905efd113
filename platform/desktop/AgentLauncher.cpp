#include "platform/desktop/AgentLauncher.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>

namespace platform {
namespace {

const QString InstalledAgent = QStringLiteral("/Library/Application Support/KS-7/KS7Agent.app");
const QString ProgramInFolder = QStringLiteral("KS7Agent");

class DetachedAgentLauncher final : public AgentLauncher {
public:
    bool launch() override
    {
        const QFileInfo program(agentProgram());
        if (!program.isFile() || !program.isExecutable())
            return false;
        QProcess process;
        process.setProgram(program.filePath());
        process.setWorkingDirectory(QDir::rootPath());
        // The agent outlives us: it must not hold on to the ends of the host's pipes.
        process.setStandardInputFile(QProcess::nullDevice());
        process.setStandardOutputFile(QProcess::nullDevice());
        process.setStandardErrorFile(QProcess::nullDevice());
        return process.startDetached();
    }
};

} // namespace

QString agentProgram()
{
    const QString chosen = qEnvironmentVariable("KS7_AGENT");
    const QFileInfo agent(chosen.isEmpty() ? InstalledAgent : chosen);
    return agent.isDir() ? QDir(agent.absoluteFilePath()).filePath(ProgramInFolder)
                         : agent.absoluteFilePath();
}

std::shared_ptr<AgentLauncher> makeAgentLauncher()
{
    return std::make_shared<DetachedAgentLauncher>();
}

} // namespace platform
