#pragma once

#include <QHash>
#include <QString>

namespace simulator {

inline constexpr int FirmwareSteps = 50;

/// The codes that the agent answers without a script.
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

/// Durations in milliseconds.
struct Timing {
    int pairing = 1500;
    int starting = 2000;
    int streaming = 2000;
    /// Time until the demo's camera is plugged in.
    int plugging = 3000;
    /// Time from the start of a search until a camera is found, and until the search ends.
    int finding = 2500;
    int searching = 4000;
    int passKey = 700;
    /// Interval between two progress reports of a firmware update, which has FirmwareSteps of them.
    int firmwareStep = 100;
    /// Time in which a camera restarts after its update.
    int restarting = 4000;

    /// Divides all durations by twenty.
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

/// The agent's behaviour without a script, its timing, and the error codes set by a script.
struct Behaviour {
    /// The preferred camera pairs, starts and streams; a loss of Bluetooth changes the list.
    bool connect = true;
    /// A search is announced, takes its time and finds a camera.
    bool discover = true;
    /// An accepted passkey is reported as set.
    bool passKey = true;
    /// A started update makes progress and ends.
    bool firmware = true;
    /// Passkeys "0000" and "9999" and every second firmware update fail; a camera restarts after an update.
    bool demoFailures = true;
    Timing timing = {};
    /// Codes to fail with: "setPassKey" and "startUpdate" answer them, "KS7PassKeySet" and
    /// "KS7FirmwareUpdateEnded" report them.
    QHash<QString, int> errors = {};

    /// The switch with this name; null when there is none.
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
