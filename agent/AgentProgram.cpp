#include "agent/AgentProgram.h"

#include <QDir>
#include <QFileInfo>

namespace {

const QString InstalledAgent = QStringLiteral("/Library/Application Support/KS-7/KS7Agent.app");
const QString ProgramInFolder = QStringLiteral("KS7Agent");

} // namespace

QString agentProgram()
{
    const QString chosen = qEnvironmentVariable("KS7_AGENT");
    const QFileInfo agent(chosen.isEmpty() ? InstalledAgent : chosen);
    return agent.isDir() ? QDir(agent.absoluteFilePath()).filePath(ProgramInFolder)
                         : agent.absoluteFilePath();
}
