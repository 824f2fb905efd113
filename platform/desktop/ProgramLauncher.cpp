#include "platform/desktop/ProgramLauncher.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>

namespace platform {
namespace {

class DetachedLauncher final : public ProgramLauncher {
public:
    bool launch(const QString &program) override
    {
        const QFileInfo file(program);
        if (!file.isFile() || !file.isExecutable())
            return false;
        QProcess process;
        process.setProgram(file.filePath());
        process.setWorkingDirectory(QDir::rootPath());
        // Do not let the program inherit the host's standard streams. The program may run longer than the
        // host, and would keep the host's pipes open.
        process.setStandardInputFile(QProcess::nullDevice());
        process.setStandardOutputFile(QProcess::nullDevice());
        process.setStandardErrorFile(QProcess::nullDevice());
        return process.startDetached();
    }
};

} // namespace

std::shared_ptr<ProgramLauncher> makeProgramLauncher()
{
    return std::make_shared<DetachedLauncher>();
}

} // namespace platform
