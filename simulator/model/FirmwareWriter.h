#pragma once

#include "simulator/model/Behaviour.h"

#include <QTimer>

namespace simulator {

class BusNotifier;

/// Simulates a firmware update of the camera on the USB cable. Posts its progress and its end.
class FirmwareWriter final : public QObject {
    Q_OBJECT
public:
    FirmwareWriter(const Behaviour &behaviour, BusNotifier &notifier);

    /// Starts an update. Returns 0 if progress and end will be posted, otherwise an error code.
    int start();
    /// Stops a running update because the camera was unplugged. Then posts the end with an error code, unless
    /// a script controls the camera (Behaviour::connect is false).
    void interrupt();

Q_SIGNALS:
    void succeeded();

private:
    void advance();
    void end(int code);
    [[nodiscard]] int finalCode() const;

    const Behaviour &mBehaviour;
    BusNotifier &mNotifier;
    QTimer mTimer;
    int mStep = 0;
    int mUpdates = 0;
};

} // namespace simulator
