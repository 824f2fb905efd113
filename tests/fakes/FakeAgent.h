#pragma once

#include "agent/KS7DeviceControllerProxy.h"
#include "tests/fakes/Journal.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>

/// The state of an agent without a bus. The proxies of FakeAgentProxyFactory take their replies from these
/// fields and record each call in the journal.
class FakeAgent {
public:
    explicit FakeAgent(Journal journal);

    /// Adds or replaces a camera. If the address is new, the function also appends it to `sorted`.
    void addCamera(const QString &address, const QString &name, int status, const QString &cameraID = {});
    void prefer(const QString &address);
    void call(const QString &line) { mJournal->append(QStringLiteral("remote ") + line); }

    bool running = true;
    bool usbServerRunning = true;
    /// The agent starts to run at the connection attempt with this number. If 0, attempts never start it.
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
    /// While true, connectedCamHasBTAddress() returns true for every address, even for a null one.
    bool everyAddressIsAtTheCable = false;
    bool needsFirmware = false;
    int setPassKeyResult = 0;
    int startUpdateResult = 0;
    /// Maps the name of a remote call to a hook. The proxy runs the hook inside the call, before the call
    /// returns.
    std::map<QString, std::function<void()>> during;

private:
    Journal mJournal;
};
