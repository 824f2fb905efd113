#pragma once

#include "simulator/picture/PictureSettings.h"

class QString;
class QThread;

namespace simulator {

class Picture;

/// The picture on a thread of its own: GStreamer's first start reads all of its plug-ins, which may take
/// seconds, and PipeWire may not answer, while the agent has calls to answer.
class BackgroundPicture final {
public:
    explicit BackgroundPicture(const PictureSettings &settings);
    BackgroundPicture(const BackgroundPicture &) = delete;
    BackgroundPicture &operator=(const BackgroundPicture &) = delete;
    /// Waits until the picture has gone, unless that hangs.
    ~BackgroundPicture();

    /// Each happens after those that were asked for before.
    void prepare();
    void start(const QString &caption);
    void stop();

private:
    // What hangs is left to the end of the process.
    QThread *const mThread;
    Picture *const mPicture;
};

} // namespace simulator
