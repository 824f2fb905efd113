#pragma once

#include <QHash>
#include <QString>

namespace simulator {

inline constexpr int FirmwareSteps = 50;

/// The error codes that the agent returns by itself, without a script.
namespace ErrorCode {
inline constexpr int NoCameraAtCable = -101;
inline constexpr int Busy = -102;
inline constexpr int BadPassKey = -103;
inline constexpr int PassKeyRefused = -104;
inline constexpr int PassKeyLost = -105;
inline constexpr int NoUpdateNeeded = -106;
inline constexpr int FirmwareNotVerified = -107;
inline constexpr int CableUnplugged = -108;
}

/// The durations of the agent's operations in milliseconds.
struct Timing {
    int pairing = 1500;
    int starting = 2000;
    int streaming = 2000;
    /// Time from the start of the demo until a camera is plugged in.
    int plugging = 3000;
    /// Times from the start of a search until it finds a camera (`finding`) and until it ends (`searching`).
    int finding = 2500;
    int searching = 4000;
    int passKey = 700;
    /// Time between two progress reports of a firmware update. An update has FirmwareSteps reports.
    int firmwareStep = 100;
    /// Time that a camera needs to restart after its firmware update.
    int restarting = 4000;

    /// Returns all durations divided by twenty, for fast tests.
    static Timing quick()
    {
        return {.pairing = 75,
                .starting = 100,
                .streaming = 100,
                .plugging = 150,
                .finding = 125,
                .searching = 200,
                .passKey = 35,
                .firmwareStep = 5,
                .restarting = 200};
    }
};

/// Switches for the actions that the agent takes by itself, their durations, and the error codes that a
/// script has set.
struct Behaviour {
    /// Whether the agent acts by itself on its hardware: it streams the preferred camera and changes statuses
    /// with Bluetooth and the cable. If false, only a script does so.
    bool connect = true;
    /// Whether a search for cameras is announced, lasts some time and finds a camera.
    bool discover = true;
    /// Whether the agent reports an accepted passkey as set.
    bool passKey = true;
    /// Whether a started firmware update reports its progress and its end.
    bool firmware = true;
    /// Whether the passkeys "0000" and "9999" and every second firmware update fail, and a camera restarts
    /// after an update.
    bool demoFailures = true;
    Timing timing = {};
    /// Error codes by name. For "setPassKey" and "startUpdate" the call returns the code. For "KS7PassKeySet"
    /// and "KS7FirmwareUpdateEnded" the notification contains it as "Result".
    QHash<QString, int> errors = {};

    /// Returns the switch with this name; null without such a switch.
    bool *find(const QString &name)
    {
        if (name == QStringLiteral("connect"))
            return &connect;
        if (name == QStringLiteral("discover"))
            return &discover;
        if (name == QStringLiteral("passKey"))
            return &passKey;
        if (name == QStringLiteral("firmware"))
            return &firmware;
        return name == QStringLiteral("demoFailures") ? &demoFailures : nullptr;
    }
};

} // namespace simulator
