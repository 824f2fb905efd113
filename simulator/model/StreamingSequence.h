#pragma once

#include "simulator/model/Behaviour.h"

#include <QString>
#include <QTimer>

namespace simulator {

class CameraRegistry;
class BusNotifier;

/// Changes the status of one camera step by step: pairing, starting, streaming.
class StreamingSequence final : public QObject {
    Q_OBJECT
public:
    StreamingSequence(CameraRegistry &registry, BusNotifier &notifier, const Behaviour &behaviour);

    /// Ends the running sequence and starts one for this camera. Ignores a camera out of reach.
    void begin(const QString &address);
    /// Ends the running sequence. Sets all cameras that are pairing, starting or streaming to "Not
    /// Streaming".
    void end();
    /// Sets the status of the camera that this sequence has started, otherwise that of the preferred camera.
    /// Posts the notification for this status.
    void enter(int status);

private:
    void advance();
    [[nodiscard]] int delayBefore(int status) const;

    CameraRegistry &mRegistry;
    BusNotifier &mNotifier;
    const Behaviour &mBehaviour;
    QTimer mTimer;
    QString mAddress;
};

} // namespace simulator
