// An agent in a process of its own that does as it is told on its standard input, a line each:
//   cameras N   from now on N cameras, the first one preferred; answers "ready"
//   calls       answers with the calls since the last time, separated by tabs
#include "agent/RemoteNames.h"
#include "agent/WireTypes.h"
#include "tests/support/RecordingAgent.h"

#include <QCoreApplication>

#include <iostream>
#include <string>

namespace {

QString addressOf(int camera)
{
    return QStringLiteral("00-1b-dc-%1").arg(camera, 6, 16, QLatin1Char('0'));
}

QVariantMap recordOf(int camera)
{
    return {{RecordKeys::Status, camera % 4},
            {RecordKeys::CameraIDString, QStringLiteral("%1").arg(camera, 4, 16, QLatin1Char('0'))},
            {RecordKeys::FriendlyName, QStringLiteral("Camera %1").arg(camera)}};
}

void haveCameras(RecordingAgent &agent, int count)
{
    CameraDictionary cameras;
    QStringList sorted;
    for (int camera = 0; camera < count; ++camera) {
        sorted.append(addressOf(camera));
        cameras.insert(sorted.constLast(), recordOf(camera));
    }
    agent.answer(QStringLiteral("cameraDict"), {QVariant::fromValue(cameras)});
    agent.answer(QStringLiteral("sortedDeviceList"), {sorted});
    agent.answer(QStringLiteral("indexOfPreferredKS7Cam"), {QVariant::fromValue(qulonglong(0))});
    agent.answer(QStringLiteral("getPreferredKS7Cam"), {recordOf(0)});
    agent.answer(QStringLiteral("getAudioLevel_l"), {0.5, 0.25});
}

void serve(RecordingAgent &agent)
{
    std::string word;
    while (std::cin >> word) {
        int count = 0;
        if (word == "cameras" && std::cin >> count) {
            haveCameras(agent, count);
            std::cout << "ready" << std::endl;
        } else {
            std::cout << agent.takeJournal().join(QLatin1Char('\t')).toStdString() << std::endl;
        }
    }
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    RecordingAgent agent;
    haveCameras(agent, 3);
    agent.publishBoth();
    serve(agent);
}
