#pragma once

#include "agent/KS7DeviceControllerProxy.h"
#include "tests/fakes/Journal.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>

/// State of an agent without a bus. FakeAgentProxyFactory's proxies reply from these fields and record each
/// call in the journal.
class FakeAgent {
public:
    explicit FakeAgent(Journal journal);

    /// Adds or replaces a camera. A new address is appended to `sorted`.
    void addCamera(const QString &address, const QString &name, int status, const QString &cameraID = {});
    void prefer(const QString &address);
    void call(const QString &line) { mJournal->append(QStringLiteral("remote ") + line); }

    bool running = true;
    bool usbServerRunning = true;
    /// Number of the connection attempt that finds the agent running; 0 means never.
    int appearsAtAttempt = 0;
    int attempts = 0;

    CameraDictionary cameraDict;
    QStringList sorted;
    std::uint64_t indexOfPreferred = NoPreferredCamera;
    std::optional<CameraRecord> preferred;
    bool acceptsNames = true;
    float left = 0;
    float right = 0;
    bool answersLevels = true;

    QString usbAddress;
    /// connectedCamHasBTAddress replies true for every address, even a null one.
    bool everyAddressIsAtTheCable = false;
    bool needsFirmware = false;
    int setPassKeyResult = 0;
    int startUpdateResult = 0;
    /// Called inside the remote call of that name, before its reply.
    std::map<QString, std::function<void()>> during;

private:
    Journal mJournal;
};
