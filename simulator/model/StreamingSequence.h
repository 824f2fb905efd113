#pragma once

#include "simulator/model/Timing.h"

#include <QString>
#include <QTimer>

namespace simulator {

class CameraRegistry;
class Notifier;

/// Takes one camera from its call over pairing and starting to streaming, and back.
class StreamingSequence final : public QObject {
    Q_OBJECT
public:
    StreamingSequence(CameraRegistry &roster, Notifier &notifier, const Timing &timing);

    /// Ends what runs and calls this camera; one that cannot be reached is called in vain.
    void begin(const QString &address);
    /// Every camera that pairs, starts or streams falls back to "Not Streaming".
    void end();
    /// What the course and whoever else knows of it report.
    void enter(int status);

private:
    void advance();
    [[nodiscard]] int delayBefore(int status) const;

    CameraRegistry &mRoster;
    Notifier &mNotifier;
    Timing mTiming;
    QTimer mTimer;
    QString mAddress;
};

} // namespace simulator
