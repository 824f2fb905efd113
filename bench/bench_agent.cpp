// An agent for benchmarks, in a process of its own. It reads commands from its standard input:
//   cameras N   replaces the cameras by N new ones and prefers the first one; prints "ready"
//   cable       plugs in the second camera, which has old firmware; prints "ready"
//   levels      changes the audio levels twenty times a second; prints "ready"
//   calls       prints the calls received since the last such command, separated by tabs
#include "agent/RemoteNames.h"
#include "agent/WireTypes.h"
#include "tests/support/RecordingAgent.h"

#include <QCoreApplication>

#include <atomic>
#include <chrono>
#include <iostream>
#include <optional>
#include <string>
#include <thread>

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

void haveCameraAtTheCable(RecordingAgent &agent)
{
    agent.answer(QStringLiteral("indexOfPreferredKS7Cam"), {QVariant::fromValue(qulonglong(1))});
    agent.answer(QStringLiteral("getPreferredKS7Cam"), {recordOf(1)});
    agent.answer(QStringLiteral("connectedCamHasBTAddress"), {true});
    agent.answer(QStringLiteral("connectedCamNeedsFirmwareUpdate"), {true});
}

/// Changes the audio levels every 50 ms in a thread, so that the meters show a new level at each reading.
class MovingLevels {
public:
    explicit MovingLevels(RecordingAgent &agent)
        : mThread([this, &agent] { move(agent); })
    {
    }
    ~MovingLevels()
    {
        mOver = true;
        mThread.join();
    }

private:
    void move(RecordingAgent &agent)
    {
        for (int step = 0; !mOver; ++step) {
            const double level = 0.1 + 0.05 * (step * 7 % 11);
            agent.answer(QStringLiteral("getAudioLevel_l"), {level, level / 2});
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        }
    }

    std::atomic<bool> mOver = false;
    std::thread mThread;
};

void serve(RecordingAgent &agent)
{
    std::optional<MovingLevels> levels;
    std::string word;
    while (std::cin >> word) {
        int count = 0;
        if (word == "cameras" && std::cin >> count) {
            haveCameras(agent, count);
            std::cout << "ready" << std::endl;
        } else if (word == "cable") {
            haveCameraAtTheCable(agent);
            std::cout << "ready" << std::endl;
        } else if (word == "levels") {
            levels.emplace(agent);
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
