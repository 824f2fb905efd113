#pragma once

namespace simulator {

/// How long things take, in milliseconds.
struct Timing {
    int pairing = 1500;
    int starting = 2000;
    int streaming = 2000;
    /// Plugging the demo's camera in.
    int plugging = 3000;
    /// From the start of a search to the camera found, and to the end of the search.
    int finding = 2500;
    int searching = 4000;
    int passKey = 700;
    /// Between two reports of a firmware update; it makes FirmwareSteps of them.
    int firmwareStep = 100;
    /// A camera starting again after its update.
    int restarting = 4000;

    /// All of it twenty times as fast.
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

inline constexpr int FirmwareSteps = 50;

} // namespace simulator
