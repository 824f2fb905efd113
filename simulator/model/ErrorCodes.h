#pragma once

#include <QHash>
#include <QString>

namespace simulator {

/// The codes that the agent answers with of itself.
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

/// The codes that a script has asked for, by what is to fail: "setPassKey" and "startUpdate" at once,
/// "KS7PassKeySet" and "KS7FirmwareUpdateEnded" in their reports.
using WantedErrors = QHash<QString, int>;

} // namespace simulator
