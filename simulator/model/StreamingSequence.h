#pragma once

#include "simulator/model/Behaviour.h"

#include <QString>
#include <QTimer>

namespace simulator {

class CameraRegistry;
class BusNotifier;

/// Moves one camera through pairing and starting to streaming.
class StreamingSequence final : public QObject {
    Q_OBJECT
public:
    StreamingSequence(CameraRegistry &registry, BusNotifier &notifier, const Behaviour &behaviour);

    /// Ends the running sequence and starts one for this camera. Ignores unreachable cameras.
    void begin(const QString &address);
    /// Every camera that pairs, starts or streams falls back to "Not Streaming".
    void end();
    /// Gives the camera this status and posts the matching notification.
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
