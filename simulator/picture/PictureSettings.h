#pragma once

#include <QString>

namespace simulator {

/// The name, size and frame rate of the PipeWire node.
struct PictureSettings {
    QString nodeName = QStringLiteral("KS-7 Wireless Webcam");
    QString nodeDescription = QStringLiteral("KS-7 Wireless Webcam");
    int width = 640;
    int height = 480;
    int framerate = 30;
};

} // namespace simulator
