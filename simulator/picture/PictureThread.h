#pragma once

#include "simulator/picture/PictureSettings.h"
#include "simulator/picture/TestPicture.h"
#include "simulator/picture/VideoSource.h"

#include <QThread>

namespace simulator {

/// Runs a PipeWire loop with a VideoSource that sends a test picture.
class PictureThread final : public QThread, private FramePainter {
    Q_OBJECT
public:
    explicit PictureThread(const PictureSettings &settings);
    ~PictureThread() override;

    TestPicture &picture() { return mPicture; }
    /// Makes the thread finish soon. May be called from any thread.
    void requestEnd();

Q_SIGNALS:
    void failed();

protected:
    void run() override;

private:
    void paint(VideoFrame &frame) override;
    void published() override;
    void lost(const std::string &reason) override;

    const PictureSettings mSettings;
    TestPicture mPicture;
    pw_main_loop *mLoop = nullptr;
    spa_source *mEnd = nullptr;
    bool mHasComplained = false;
};

} // namespace simulator
