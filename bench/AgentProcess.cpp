#include "bench/AgentProcess.h"

#include <QCoreApplication>

AgentProcess::AgentProcess()
{
    mProcess.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    mProcess.start(QCoreApplication::applicationDirPath() + QStringLiteral("/bench_agent"), QStringList());
    haveCameras(3);
}

AgentProcess::~AgentProcess()
{
    mProcess.closeWriteChannel();
    mProcess.waitForFinished();
}

void AgentProcess::haveCameras(int count)
{
    ask(QStringLiteral("cameras %1\n").arg(count));
}

void AgentProcess::haveCameraAtTheCable()
{
    ask(QStringLiteral("cable\n"));
}

void AgentProcess::moveLevels()
{
    ask(QStringLiteral("levels\n"));
}

QStringList AgentProcess::takeCalls()
{
    return ask(QStringLiteral("calls\n")).split(QLatin1Char('\t'), Qt::SkipEmptyParts);
}

QString AgentProcess::ask(const QString &line)
{
    mProcess.write(line.toUtf8());
    while (!mProcess.canReadLine() && mProcess.waitForReadyRead()) { }
    return QString::fromUtf8(mProcess.readLine()).trimmed();
}
