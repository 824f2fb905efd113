#pragma once

#include <QString>

#include <cstdint>

/// Constants of the contract between the pane and the agent. The other parts of the contract are the XML
/// files of the interfaces and NotificationNames.h.

/// The status numbers of a camera. The agent sends them as integers, so they must not change.
enum KS7CamStatus : std::int32_t {
    kKS7CamNotFound = 0,
    kKS7CamNotStreaming = 1,
    kKS7CamPairing = 2,
    kKS7CamStarting = 3,
    kKS7CamStreaming = 4,
    kKS7CamError = 5,
};

/// The preferences domain. Both the pane and the agent write it.
namespace KS7Domain {

inline const QString Name = QStringLiteral("com.orvex.KS7Agent");

} // namespace KS7Domain

namespace PreferenceKeys {

inline const QString KS7On = QStringLiteral("KS7On");
inline const QString ShowStatusMenu = QStringLiteral("ShowStatusMenu");
inline const QString VideoSize2 = QStringLiteral("VideoSize2");
inline const QString LogToFile = QStringLiteral("LogToFile");
inline const QString FriendlyNames = QStringLiteral("FriendlyNames");
inline const QString IgnoredCams = QStringLiteral("IgnoredCams");

} // namespace PreferenceKeys

/// The agent's PipeWire node of class Video/Source, which delivers the camera's picture.
namespace PictureNode {

inline const QString Name = QStringLiteral("KS-7 Wireless Webcam");

} // namespace PictureNode
