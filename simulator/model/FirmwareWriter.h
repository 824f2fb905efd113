#pragma once

#include "simulator/model/Behaviour.h"

#include <QTimer>

namespace simulator {

class BusNotifier;

/// Updates the firmware of the plugged-in camera: posts the progress and the end.
class FirmwareWriter final : public QObject {
    Q_OBJECT
public:
    FirmwareWriter(const Behaviour &behaviour, BusNotifier &notifier);

    /// Returns 0 if the reports will follow, otherwise an error code.
    int start();
    /// The camera was unplugged: a running update ends, with an error post if Behaviour::connect is set.
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
